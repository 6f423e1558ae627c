#include <GL/gl.h>
#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "core/text.h"
#include "data/script.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "platform/gl_context.h"

namespace mw {
namespace {

constexpr std::size_t kLineBuffer = 255;  // a longer line is read in pieces of one byte less
constexpr char kSeparators[] = "=,";

void DeleteTextures(std::span<SetTexture> entries) {
  for (SetTexture& entry : entries) glDeleteTextures(1, &entry.texture);
}

void ClearTextureSet() {
  if (MakeViewContextCurrent()) {
    DeleteTextures(textureSet.textures);
    DeleteTextures(textureSet.environment);
    DeleteTextures({&textureSet.detail, 1});
  }
  TextureSet empty;
  empty.shared = textureSet.shared;
  textureSet = std::move(empty);
}

std::string PathInFolder(std::string_view folder, std::string_view file) {
  return std::string(folder) + "/" + std::string(file);
}

// Takes the next token as the file of an entry. A name that does not fit is refused: a cut one
// could name another file.
bool ReadFileName(Tokenizer& tokens, NameText& file) {
  const auto token = tokens.Next(kSeparators);
  return token && file.Assign(*token);
}

void LoadPicture(std::string_view folder, SetTexture& entry) {
  std::optional<Image> image = LoadBmp(PathInFolder(folder, entry.file));
  if (!image) return;
  if (MakeViewContextCurrent()) {
    glDeleteTextures(1, &entry.texture);
    entry.texture = MakeMipMappedTexture(*image);
  }
  entry.width = image->width;
  entry.height = image->height;
  entry.rgb = std::move(image->rgb);
  entry.loaded = true;
}

// "index, name, file"
void ReadIndexedEntry(std::string_view folder, Tokenizer& tokens, std::span<SetTexture> entries) {
  const std::int32_t index = ParseInt(tokens.Next(kSeparators));
  const auto name = tokens.Next(kSeparators);
  NameText file;
  if (!name || !ReadFileName(tokens, file)) return;
  if (index < 0 || static_cast<std::size_t>(index) >= entries.size()) return;
  SetTexture& entry = entries[static_cast<std::size_t>(index)];
  entry.name = *name;
  entry.file = file;
  LoadPicture(folder, entry);
}

void ReadDetail(std::string_view folder, Tokenizer& tokens) {
  NameText file;
  if (!ReadFileName(tokens, file)) return;
  textureSet.detail.file = file;
  LoadPicture(folder, textureSet.detail);
}

void ReadPalette(std::string_view folder, Tokenizer& tokens, Palette& palette) {
  NameText file;
  if (!ReadFileName(tokens, file)) return;
  palette.file = file;
  const auto bytes = ReadWholeFile(PathInFolder(folder, file));
  const std::size_t headerSize = palette.header.size();
  if (!bytes || bytes->size() < headerSize + palette.data.size()) return;
  std::copy_n(bytes->begin(), headerSize, palette.header.begin());
  std::copy_n(bytes->data() + headerSize, palette.data.size(), palette.data.begin());
  palette.loaded = true;
}

void ReadLine(std::string_view folder, std::string_view line) {
  Tokenizer tokens(line);
  const auto key = tokens.Next(kSeparators);
  if (key == "Texture") {
    ReadIndexedEntry(folder, tokens, textureSet.textures);
  } else if (key == "Env") {
    ReadIndexedEntry(folder, tokens, textureSet.environment);
  } else if (key == "Detail") {
    ReadDetail(folder, tokens);
  } else if (key == "TerrainPalette") {
    ReadPalette(folder, tokens, textureSet.terrainPalette);
  } else if (key == "ObjectPalette") {
    ReadPalette(folder, tokens, textureSet.objectPalette);
  }
}

bool WritePalette(std::string_view folder, const char* name, const Palette& palette) {
  if (!palette.loaded) return false;
  std::vector<std::uint8_t> bytes(palette.header.begin(), palette.header.end());
  bytes.insert(bytes.end(), palette.data.begin(), palette.data.end());
  return WriteWholeFile(std::string(folder) + "\\" + name, bytes);
}

}  // namespace

std::string TextureSetIndex(std::string_view folder) { return PathInFolder(folder, "index.dat"); }

bool LoadTextureSet(std::string_view folder) {
  ClearTextureSet();
  const auto index = ReadWholeFile(TextureSetIndex(folder));
  if (!index) return false;
  std::string_view text(reinterpret_cast<const char*>(index->data()), index->size());
  while (!text.empty()) ReadLine(folder, TakeLine(text, kLineBuffer));
  return true;
}

bool WriteTerrainPalette(std::string_view folder) {
  return WritePalette(folder, "terrainPalette.pal", textureSet.terrainPalette);
}

bool WriteObjectPalette(std::string_view folder) {
  return WritePalette(folder, "Palette.pal", textureSet.objectPalette);
}

}  // namespace mw
