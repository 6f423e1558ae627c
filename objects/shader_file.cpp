#include "objects/shader_file.h"

#include <cstddef>
#include <optional>

#include "core/text.h"
#include "data/script.h"

namespace mw {
namespace {

constexpr std::size_t kShaderLineBuffer = 256;
constexpr std::string_view kStart = "subshader \"";

// What stands between the first two double quotes of the line.
std::optional<std::string_view> QuotedText(std::string_view line) {
  const std::size_t open = line.find('"');
  if (open == line.npos) return std::nullopt;
  const std::size_t close = line.find('"', open + 1);
  if (close == line.npos) return std::nullopt;
  return line.substr(open + 1, close - open - 1);
}

// "name true;" sets the flag. False when the blank or the semicolon is missing.
bool ReadFlag(std::string_view line, bool& flag) {
  const std::size_t blank = line.find(' '), end = line.find(';');
  if (blank == line.npos || end == line.npos) return false;
  if (end > blank && EqualNoCase(line.substr(blank + 1, end - blank - 1), "true")) flag = true;
  return true;
}

bool ReadTexture(std::string_view line, ShaderMaterial& material) {
  const auto texture = QuotedText(line);
  if (texture) material.textures.emplace_back(*texture);
  return texture.has_value();
}

// Flags whose names are found in any case.
bool ReadOtherFlags(const std::string& lowered, ShaderMaterial& material) {
  const auto holds = [&](std::string_view word) { return lowered.find(word) != lowered.npos; };
  if (holds("texturefade") && !ReadFlag(lowered, material.textureFade)) return false;
  return !holds("twosided") || ReadFlag(lowered, material.twoSided);
}

// A line that begins neither nor ends a block.
bool ReadSetting(std::string_view line, ShaderMaterial& material) {
  if (line.find("texture ") != line.npos) return ReadTexture(line, material);
  if (line.find("transparent") != line.npos) return ReadFlag(line, material.transparent);
  return ReadOtherFlags(LowerCase(line), material);
}

}  // namespace

bool ParseShaderFile(std::string_view text,
                     const std::function<void(const ShaderMaterial&)>& onMaterial) {
  ShaderMaterial material;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text, kShaderLineBuffer);
    if (line.starts_with(kStart)) {
      material = ShaderMaterial{};
      const std::string_view name = line.substr(kStart.size());
      material.name = name.substr(0, name.find('"'));
    } else if (line.starts_with('}')) {
      onMaterial(material);
      material = ShaderMaterial{};
    } else if (!ReadSetting(line, material)) {
      return false;
    }
  }
  return true;
}

}  // namespace mw
