#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

namespace sgview {

/// Whether a template for names holds no placeholder but {model}, {date}, {time} and {number}.
[[nodiscard]] bool isScreenshotTemplate(std::string_view text);

/// A file of the folder that does not exist yet.
/// \param folder   what a relative name is relative to
/// \param pattern  {model} becomes the model's name without extension, {date} 2026-07-31, {time} 14-03-59,
///                 {number} the first number from 1 that makes the name new; the extension is added where it
///                 is not there. A name that is taken gets a number at its end where the pattern has no place
///                 for one.
/// \param moment   in local time
[[nodiscard]] std::filesystem::path screenshotFile(std::filesystem::path const& folder,
                                                   std::string const& pattern, std::string const& model,
                                                   std::chrono::local_seconds moment,
                                                   std::string_view extension = ".png");

[[nodiscard]] std::chrono::local_seconds localNow();

/// Where the user keeps pictures: XDG_PICTURES_DIR of the environment or of user-dirs.dirs in the
/// configuration folder, or else "Pictures" in the home folder. Need not exist.
[[nodiscard]] std::filesystem::path picturesFolder();

/// The pictures folder that a file in the format of user-dirs.dirs names; empty where it names none.
/// \param home  what "$HOME" stands for
[[nodiscard]] std::filesystem::path picturesFolderIn(std::string_view userDirs, std::string const& home);

} // namespace sgview
