#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace sgview {

/// Why a model file could not be imported.
enum class ImportFailure : std::uint8_t {
    notFound,      ///< there is no such file
    notReadable,   ///< a folder, a device, a pipe, or no permission
    emptyFile,     ///< no content at all
    picture,       ///< an image file
    textFile,      ///< prose or source text
    sideFile,      ///< belongs to a model, is none itself
    formatNotRead, ///< no importer reads it, or not this variant of it
    pointCloud,    ///< points and nothing else
    nothingToDraw, ///< a sound file without surfaces and curves
    broken,        ///< the content contradicts its own format
    refusedPath,   ///< needs a file outside the folders it may read
    tooBig,        ///< more data than the limits allow
    crashed,       ///< the importer was ended by a signal
    outOfMemory,   ///< the importer asked for more memory than it may have
    timedOut,      ///< the importer took longer than it may
    cancelled,     ///< whoever asked for the import wants it no more
};

/// The failure's name as people and manifests write it: "not found", "point cloud".
[[nodiscard]] std::string_view nameOf(ImportFailure failure);

/// A model file that cannot be imported. what() is one line: file, place and reason.
class ImportError : public std::runtime_error {
public:
    /// Line breaks and other control characters of `message` become blanks.
    ImportError(ImportFailure failure, std::string_view message);

    /// For messages of the usual shape, "file: reason".
    ImportError(ImportFailure failure, std::string_view file, std::string_view reason);

    [[nodiscard]] ImportFailure failure() const { return failure_; }

private:
    ImportFailure failure_;
};

/// `text` as UTF-8 that stands on one line of a terminal and steers nothing there: without control
/// characters, what turns the direction of writing, and blanks at its ends. A byte that is no part of a valid
/// code becomes U+FFFD. Of what is too long for a line the middle is left out.
[[nodiscard]] std::string oneLine(std::string_view text);

} // namespace sgview
