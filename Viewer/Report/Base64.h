#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace sgview {

/// Bytes in base 64 (RFC 4648, section 4), padded, in one line.
[[nodiscard]] std::string asBase64(std::span<std::uint8_t const> bytes);

} // namespace sgview
