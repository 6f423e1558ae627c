// Archives of the sample game, written whole from members in memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "assets/picture.h"
#include "data/archive.h"

namespace mw::sample {

struct Member {
  std::string name;
  std::vector<std::uint8_t> bytes;
};

// The text as the game's files hold it: lines end with carriage return and line feed.
std::string WithCarriageReturns(std::string_view text);
Member TextMember(std::string_view name, std::string_view text);
// A texture file.
Member PictureMember(std::string_view name, const Picture& picture, bool mipmaps);

// Replaces the archive at `path`. False, with the reason on standard error, when it could not be
// written.
bool WriteArchive(const std::string& path, StorageMode mode, const std::vector<Member>& members);

}  // namespace mw::sample
