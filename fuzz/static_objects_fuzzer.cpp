// A StaticObjects.con of any content: its objects stay within their table, and what was loaded
// completely is saved, loaded again and saved as the same bytes.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "data/load_report.h"
#include "fuzz/level_sandbox.h"
#include "fuzz/require.h"
#include "objects/object_store.h"
#include "objects/static_objects.h"
#include "platform/scripted/script.h"

namespace {

void Load() {
  mw::scripted::ResetScript();
  mw::ClearAllObjects();
  mw::BeginLoadReport();
  mw::LoadStaticObjects();
  mw::EndLoadReport();
  Require(mw::objectStore.objects.size() <= mw::kMaxStaticObjects);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LevelSandbox level;
  level.Put("StaticObjects.con", std::span(data, size));
  Load();
  Require(mw::SaveStaticObjects());
  if (!mw::MayWrite(mw::LevelPart::StaticObjects)) {
    Require(level.Read("StaticObjects.con") == std::vector(data, data + size));
    return 0;
  }
  // A save writes the many files of the entities too: loading it again is for some inputs only.
  if (size % 4 != 0) return 0;
  const std::string saved = level.Everything();
  const std::size_t count = mw::objectStore.objects.size();
  Load();
  Require(mw::objectStore.objects.size() == count);
  Require(mw::SaveStaticObjects() && level.Everything() == saved);
  return 0;
}
