#include "sample/archive_writer.h"

#include <cstdio>

#include "terrain/dds_writer.h"

namespace mw::sample {
namespace {

std::vector<std::uint8_t> RgbBytes(const Picture& picture) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(picture.pixels.size() * 3);
  for (const Colour& colour : picture.pixels) {
    for (const float channel : {colour.r, colour.g, colour.b}) {
      bytes.push_back(static_cast<std::uint8_t>(Clamp01(channel) * 255.0f + 0.5f));
    }
  }
  return bytes;
}

bool WriteMembers(Archive& archive, StorageMode mode, const std::vector<Member>& members) {
  if (!archive.SetMode(mode) || !archive.BeginSave()) return false;
  for (const Member& member : members) {
    if (!archive.WriteMember(member.name, member.bytes)) return false;
  }
  return archive.CommitSave();
}

}  // namespace

std::string WithCarriageReturns(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

Member TextMember(std::string_view name, std::string_view text) {
  const std::string bytes = WithCarriageReturns(text);
  return {std::string(name), {bytes.begin(), bytes.end()}};
}

Member PictureMember(std::string_view name, const Picture& picture, bool mipmaps) {
  return {std::string(name), EncodeDds(picture.width, picture.height, RgbBytes(picture), mipmaps)};
}

bool WriteArchive(const std::string& path, StorageMode mode, const std::vector<Member>& members) {
  Archive archive;
  if (archive.Create(path) && WriteMembers(archive, mode, members) && archive.Close()) return true;
  std::fprintf(stderr, "%s could not be written: %s\n", path.c_str(), archive.Error().c_str());
  return false;
}

}  // namespace mw::sample
