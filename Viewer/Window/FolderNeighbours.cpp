#include "Viewer/Window/FolderNeighbours.h"

#include "Viewer/Import/FileKind.h"
#include "Viewer/Import/FileNames.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>

namespace sgview {

namespace {

namespace fs = std::filesystem;

bool isDigit(char c)
{
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

/// Takes the run of digits that a text starts with, without leading zeros.
std::string_view takeNumber(std::string_view& text)
{
    std::size_t const end = std::min(text.find_first_not_of("0123456789"), text.size());
    std::string_view number = text.substr(0, end);
    text.remove_prefix(end);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

void sort(std::vector<fs::path>& files)
{
    std::ranges::sort(files, [](fs::path const& a, fs::path const& b) {
        return comesBefore(a.filename().string(), b.filename().string());
    });
}

std::vector<fs::path> modelsIn(fs::path const& folder)
{
    std::vector<fs::path> models;
    std::error_code error;
    for (fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error), end;
         !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (hasModelName(entry->path()) && entry->is_regular_file(ignored))
            models.push_back(folder / entry->path().filename());
    }
    sort(models);
    return models;
}

std::vector<fs::path> modelsBeside(fs::path const& file)
{
    std::vector<fs::path> models = modelsIn(file.parent_path());
    // The file itself may have been deleted, or have a name that tells nothing.
    if (std::ranges::find(models, file) == models.end()) {
        models.push_back(file);
        sort(models);
    }
    return models;
}

/// The files among what was named, and the models of its folders.
std::vector<fs::path> filesOf(std::vector<fs::path> const& named)
{
    std::vector<fs::path> files;
    for (fs::path const& one : named) {
        std::error_code ignored;
        if (!fs::is_directory(one, ignored)) {
            files.push_back(one);
            continue;
        }
        std::vector<fs::path> models = modelsIn(one);
        // The others of a folder that is named alone are looked for whenever they are asked for.
        if (named.size() == 1 && !models.empty())
            models.resize(1);
        files.insert(files.end(), models.begin(), models.end());
    }
    return files;
}

} // namespace

FolderNeighbours::FolderNeighbours(std::vector<fs::path> const& named)
    : named_(filesOf(named)), current_(named_.empty() ? fs::path() : named_.front())
{
}

FolderNeighbours::Place FolderNeighbours::place() const
{
    std::vector<fs::path> const files = all();
    auto const found = std::ranges::find(files, current_);
    return {static_cast<std::size_t>(found - files.begin()), files.size()};
}

fs::path const& FolderNeighbours::move(int steps)
{
    std::vector<fs::path> const files = all();
    if (files.empty())
        return current_;
    auto const count = static_cast<std::ptrdiff_t>(files.size());
    std::ptrdiff_t const at = std::ranges::find(files, current_) - files.begin() + steps;
    current_ = files[static_cast<std::size_t>((at % count + count) % count)];
    return current_;
}

std::vector<fs::path> FolderNeighbours::all() const
{
    return named_.size() == 1 ? modelsBeside(current_) : named_;
}

bool comesBefore(std::string_view a, std::string_view b)
{
    std::string const lowerA = lowerCase(a);
    std::string const lowerB = lowerCase(b);
    std::string_view restA = lowerA;
    std::string_view restB = lowerB;
    while (!restA.empty() && !restB.empty()) {
        if (isDigit(restA.front()) && isDigit(restB.front())) {
            std::string_view const numberA = takeNumber(restA);
            std::string_view const numberB = takeNumber(restB);
            if (numberA != numberB)
                return std::pair(numberA.size(), numberA) < std::pair(numberB.size(), numberB);
            continue;
        }
        if (restA.front() != restB.front())
            return restA.front() < restB.front();
        restA.remove_prefix(1);
        restB.remove_prefix(1);
    }
    if (restA.empty() != restB.empty())
        return restA.empty();
    return a < b;
}

} // namespace sgview
