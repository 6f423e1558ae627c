// An index.dat with any content beside one good picture and one damaged one.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "data/textures.h"
#include "fuzz/private_path.h"
#include "platform/scripted/script.h"

namespace {

void Write(const std::filesystem::path& file, std::string_view content) {
  std::ofstream(file, std::ios::binary)
      .write(content.data(), static_cast<std::streamsize>(content.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::filesystem::path folder = [] {
    const std::filesystem::path made =
        std::filesystem::path(PrivatePath("index.dat")).parent_path();
    constexpr std::string_view kOnePixel(
        "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\0\0\0\0\0\0\0\0"
        "\0\0\0\0\0\0\0\0\0\0\0\0\1\2\3\0",
        58);
    Write(made / "a", kOnePixel);
    Write(made / "b", "BM");
    return made;
  }();
  Write(folder / "index.dat", {reinterpret_cast<const char*>(data), size});
  mw::LoadTextureSet(folder.string());
  mw::scripted::ResetScript();  // forgets the message boxes about damaged pictures
  return 0;
}
