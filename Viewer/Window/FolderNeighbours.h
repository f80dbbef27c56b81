#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace sgview {

/// The files that "next" and "previous" lead to: those that were named, or, where it was one alone, the model
/// files of its folder in the order people count ("part2" before "part10").
class FolderNeighbours {
public:
    FolderNeighbours() = default;

    /// \param named  the first is the current one; a folder stands for the models in it
    explicit FolderNeighbours(std::vector<std::filesystem::path> const& named);

    /// Where nothing was named, or folders alone that have no model in them.
    [[nodiscard]] bool empty() const { return named_.empty(); }
    [[nodiscard]] std::filesystem::path const& current() const { return current_; }

    /// Where the current file stands among how many; looks at the folder anew.
    struct Place {
        std::size_t index = 0;
        std::size_t count = 0;
    };
    [[nodiscard]] Place place() const;

    /// Goes `steps` further, or back below 0, around the ends. The folder is looked at anew each time: files
    /// come and go.
    /// \return the file that is the current one then
    std::filesystem::path const& move(int steps);

private:
    [[nodiscard]] std::vector<std::filesystem::path> all() const;

    std::vector<std::filesystem::path> named_;
    std::filesystem::path current_;
};

/// Whether a name stands before another as people count: runs of digits by their value, letters whatever
/// their case.
[[nodiscard]] bool comesBefore(std::string_view a, std::string_view b);

} // namespace sgview
