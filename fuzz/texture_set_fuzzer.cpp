// An index.dat with any content beside one good picture and one damaged one, and one palette.
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "data/textures.h"
#include "fuzz/private_path.h"
#include "platform/scripted/script.h"

namespace {

void WriteText(const std::string& path, std::string_view text) {
  WriteFile(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string folder = [] {
    const std::string made = std::filesystem::path(PrivatePath("")).parent_path().string();
    constexpr std::string_view kOnePixel(
        "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\0\0\0\0\0\0\0\0"
        "\0\0\0\0\0\0\0\0\0\0\0\0\1\2\3\0",
        58);
    WriteText(made + "/a", kOnePixel);
    WriteText(made + "/b", "BM");
    WriteText(made + "/c", std::string(24 + 1024, 'c'));
    return made;
  }();
  WriteFile(folder + "/index.dat", {data, size});
  mw::LoadTextureSet(folder);
  mw::scripted::ResetScript();  // forgets the message boxes about damaged pictures
  return 0;
}
