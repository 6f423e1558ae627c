// Files of their own for the fuzz targets that need some on disk, outside the folder that they run
// in.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <span>
#include <string>
#include <unistd.h>

#include "fuzz/require.h"

// The path of `name` in a new folder that no other process uses.
inline std::string PrivatePath(const char* name) {
  std::string folder = (std::filesystem::temp_directory_path() / "fuzzer-XXXXXX").string();
  Require(mkdtemp(folder.data()) != nullptr);
  return folder + "/" + name;
}

// Writes it in place: nothing needs the old file should this one fail.
inline void WriteFile(const std::string& path, std::span<const std::uint8_t> bytes) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  Require(file >= 0);
  Require(write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
  close(file);
}
