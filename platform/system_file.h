// What the system does with files, for platform/file.cpp and platform/disk.cpp. posix/ and windows/
// each have their own. Paths are native ones. A function that can fail returns 0 or the reason: a
// number of <cerrno> or one of the system's own, which ReasonText knows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include "platform/file.h"

namespace mw::os {

using Handle = std::intptr_t;
inline constexpr Handle kNoFile = -1;

std::string ReasonText(int code);

// Opens a plain file, not a folder, pipe or device.
int Open(const std::filesystem::path& path, FileAccess access, Handle& file);
// Makes and opens a file beside `target` that nobody else has, with the permissions of the target
// or those of a new file.
int OpenAside(const std::filesystem::path& target, std::filesystem::path& aside, Handle& file);
void Close(Handle file);

bool Claim(Handle file);
void GiveUpClaim(Handle file);

int Size(Handle file, std::uint64_t& size);
std::optional<FileIdentity> Identity(Handle file);
std::optional<FileIdentity> IdentityOf(const std::filesystem::path& path);

// Reads until `out` is full or the file ends; `got` bytes.
int Read(Handle file, std::uint64_t offset, std::span<std::uint8_t> out, std::size_t& got);
// Writes all of `bytes` or fails.
int Write(Handle file, std::uint64_t offset, std::span<const std::uint8_t> bytes);
// Copies up to `size` bytes from the start of one file to the start of another without this
// program's memory, and says how many it could.
std::uint64_t CopyStart(Handle source, Handle target, std::uint64_t size);
bool SetStraight(Handle file, bool straight);
// Drops what the system remembers of these bytes, where it can be asked to.
void ForgetCached(Handle file, std::uint64_t offset, std::uint64_t size);
int Truncate(Handle file, std::uint64_t size);
int Sync(Handle file);
int CopyPermissions(Handle from, Handle to);

int Rename(const std::filesystem::path& from, const std::filesystem::path& to);
int Remove(const std::filesystem::path& path);
int SyncFolder(const std::filesystem::path& folder);

}  // namespace mw::os
