// Bytes in memory: what files, members and pictures are made of before anybody knows their meaning.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace mw {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

}  // namespace mw
