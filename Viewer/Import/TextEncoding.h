#pragma once

#include "Viewer/Import/FileAccess.h"

namespace sgview {

/// A text in UTF-16 or UTF-32, told by its byte order mark, in UTF-8; any other content as it is. What is no
/// valid code becomes U+FFFD.
[[nodiscard]] Bytes asUtf8(Bytes content);

} // namespace sgview
