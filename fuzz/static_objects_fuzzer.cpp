// A StaticObjects.con of any content: its objects stay within their table, and what was loaded
// completely is saved, loaded again and saved as the same bytes.
#include <algorithm>
#include <cstddef>
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

std::ptrdiff_t LiveObjects() {
  return std::ranges::count_if(mw::objectStore.objects, &mw::StaticObject::inUse);
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
    const std::ptrdiff_t count = LiveObjects();
    Load();
    Require(LiveObjects() == count);
    mw::SaveStaticObjects();
    Require(level.Everything() == saved && mw::GameFileError().empty());
  }
  level.End();
  return 0;
}
