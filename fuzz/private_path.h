// Files of their own for the fuzz targets that need some on disk, outside the folder that they run
// in.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <span>
#include <string>

#include "fuzz/require.h"

// The path of `name` in a new folder that no other process uses.
inline std::string PrivatePath(const char* name) {
  std::random_device random;
  std::filesystem::path folder = std::filesystem::temp_directory_path();
  folder /= "fuzzer-" + std::to_string(random());
  Require(std::filesystem::create_directory(folder));
  return (folder / name).string();
}

// Writes it in place: nothing needs the old file should this one fail.
inline void WriteFile(const std::string& path, std::span<const std::uint8_t> bytes) {
  std::ofstream file(std::filesystem::path(path), std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  Require(file.flush().good());
}
