// A file of its own for a fuzz target that needs one on disk, outside the folder that it runs in.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

// The path of `name` in a new folder that no other process uses.
inline std::string PrivatePath(const char* name) {
  std::string folder = (std::filesystem::temp_directory_path() / "fuzzer-XXXXXX").string();
  if (!mkdtemp(folder.data())) std::abort();
  return folder + "/" + name;
}
