// A StaticObjects.con of any content: its objects stay within their table, and what was loaded
// completely is saved, loaded again and saved as the same bytes.
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "level_sandbox.h"
#include "objects/object_store.h"
#include "objects/static_objects.h"
#include "platform/scripted/script.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void Load() {
  mw::scripted::ResetScript();
  mw::ClearAllObjects();
  mw::LoadStaticObjects();
  Require(mw::objectStore.objects.size() <= mw::kMaxStaticObjects);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static LevelSandbox level;
  level.Begin();
  level.Put("StaticObjects.con", std::span(data, size));
  Load();
  if (!mw::objectStore.loadedIncompletely) {
    mw::SaveStaticObjects();
    const std::string saved = level.Everything();
    const std::size_t count = mw::objectStore.objects.size();
    Load();
    Require(mw::objectStore.objects.size() == count);
    mw::SaveStaticObjects();
    Require(level.Everything() == saved && mw::GameFileError().empty());
  }
  level.End();
  return 0;
}
