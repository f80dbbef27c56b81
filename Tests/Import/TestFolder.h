#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace sgview {

/// A folder of its own for a test, removed with all that is in it.
class TestFolder {
public:
    TestFolder();
    TestFolder(TestFolder const&) = delete;
    TestFolder& operator=(TestFolder const&) = delete;
    ~TestFolder();

    [[nodiscard]] std::filesystem::path const& path() const { return path_; }

    /// Writes a file, and the folders on the way to it.
    /// \return its path
    std::filesystem::path write(std::string const& name, std::string_view content) const;
    std::filesystem::path write(std::string const& name, std::span<std::uint8_t const> content) const;

private:
    std::filesystem::path path_;
};

} // namespace sgview
