#pragma once

#include <map>
#include <string>
#include <string_view>

/// The text of a preferences file: a line `key = value` for each entry, ordered by key, and comments, which
/// are lines that start with '#'.
///
/// Keys and values can hold any bytes. A backslash is written `\\`, a line end `\n`, and any other control
/// character, a blank at either end, and in keys '=' and '#', by two hexadecimal digits: `\x3d`. Blanks
/// around key and value do not count.
namespace PrefsText {

using Entries = std::map<std::string, std::string>;

[[nodiscard]] std::string format(Entries const& entries);

/// The entries of whatever bytes: a line that is no entry is passed over, the last of several with one key
/// counts, and so does a line only if it has its line end, so that half a value never passes for a whole one.
[[nodiscard]] Entries parse(std::string_view text);

} // namespace PrefsText
