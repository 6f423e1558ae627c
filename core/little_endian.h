// Little-endian numbers in the bytes of a file, for those who read and write the game's formats.
// The caller has checked that the bytes are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace mw {

constexpr std::uint16_t LoadU16(std::span<const std::uint8_t> bytes, std::size_t offset = 0) {
  return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

constexpr std::uint32_t LoadU32(std::span<const std::uint8_t> bytes, std::size_t offset = 0) {
  return LoadU16(bytes, offset) | std::uint32_t{LoadU16(bytes, offset + 2)} << 16;
}

constexpr std::uint64_t LoadU64(std::span<const std::uint8_t> bytes, std::size_t offset = 0) {
  return LoadU32(bytes, offset) | std::uint64_t{LoadU32(bytes, offset + 4)} << 32;
}

constexpr void StoreU16(std::span<std::uint8_t> bytes, std::size_t offset, std::uint16_t value) {
  bytes[offset] = static_cast<std::uint8_t>(value);
  bytes[offset + 1] = static_cast<std::uint8_t>(value >> 8);
}

constexpr void StoreU32(std::span<std::uint8_t> bytes, std::size_t offset, std::uint32_t value) {
  StoreU16(bytes, offset, static_cast<std::uint16_t>(value));
  StoreU16(bytes, offset + 2, static_cast<std::uint16_t>(value >> 16));
}

}  // namespace mw
