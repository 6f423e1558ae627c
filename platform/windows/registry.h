// Texts in the registry.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mw {

// The text, or the number as one, of a value under `key` (such as "Software\\Quorrin"): the user's
// first, then the machine's as 64-bit programs see it and as 32-bit programs do, which older
// installers are. Nothing when there is none.
std::optional<std::string> ReadRegistryText(std::string_view key, std::string_view name);
// Writes it for the user. False when that could not be done.
[[nodiscard]] bool WriteRegistryText(std::string_view key, std::string_view name,
                                     std::string_view value);

}  // namespace mw
