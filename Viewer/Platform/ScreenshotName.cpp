#include "Viewer/Platform/ScreenshotName.h"

#include "Utilities/Strings.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>

namespace sgview {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view numberPlace = "{number}";
constexpr std::array<std::string_view, 4> places{"{model}", "{date}", "{time}", numberPlace};

void replaceAll(std::string& text, std::string_view place, std::string const& value)
{
    for (std::size_t at = text.find(place); at != std::string::npos; at = text.find(place, at + value.size()))
        text.replace(at, place.size(), value);
}

template <typename... Numbers>
std::string formatted(char const* format, Numbers... numbers)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, numbers...);
    return text.data();
}

std::string dateOf(std::chrono::local_seconds moment)
{
    std::chrono::year_month_day const date{std::chrono::floor<std::chrono::days>(moment)};
    return formatted("%04d-%02u-%02u", int{date.year()}, unsigned{date.month()}, unsigned{date.day()});
}

std::string timeOf(std::chrono::local_seconds moment)
{
    std::chrono::hh_mm_ss const time{moment - std::chrono::floor<std::chrono::days>(moment)};
    return formatted("%02d-%02d-%02d", static_cast<int>(time.hours().count()),
                     static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
}

/// A model's name is somebody else's: it leads into no other folder.
std::string asNamePart(std::string name)
{
    std::ranges::replace(name, '/', '_');
    return name.empty() || name.front() == '.' ? "_" + name : name;
}

std::string valueOf(char const* variable)
{
    char const* const value = std::getenv(variable);
    return value ? value : "";
}

} // namespace

bool isScreenshotTemplate(std::string_view text)
{
    for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1))
        if (std::ranges::none_of(places,
                                 [&](std::string_view place) { return text.substr(at).starts_with(place); }))
            return false;
    return !text.empty();
}

fs::path screenshotFile(fs::path const& folder, std::string const& pattern, std::string const& model,
                        std::chrono::local_seconds moment, std::string_view extension)
{
    std::string name = pattern;
    replaceAll(name, "{date}", dateOf(moment));
    replaceAll(name, "{time}", timeOf(moment));
    if (!name.ends_with(extension))
        name += extension;
    bool const isNumbered = name.find(numberPlace) != std::string::npos;
    for (int number = 1;; ++number) {
        std::string numbered = name;
        if (isNumbered)
            replaceAll(numbered, numberPlace, std::to_string(number));
        else if (number > 1)
            numbered.insert(numbered.size() - extension.size(), "-" + std::to_string(number));
        replaceAll(numbered, "{model}", asNamePart(model));
        fs::path file = folder / numbered;
        std::error_code ignored;
        if (!fs::exists(fs::symlink_status(file, ignored)))
            return file;
    }
}

std::chrono::local_seconds localNow()
{
    std::time_t const now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return std::chrono::local_seconds(std::chrono::seconds(now + local.tm_gmtoff));
}

fs::path picturesFolder()
{
    std::string const home = valueOf("HOME");
    fs::path const fromEnvironment = valueOf("XDG_PICTURES_DIR");
    if (fromEnvironment.is_absolute())
        return fromEnvironment;
    fs::path configuration = valueOf("XDG_CONFIG_HOME");
    if (!configuration.is_absolute())
        configuration = fs::path(home) / ".config";
    std::ifstream file(configuration / "user-dirs.dirs");
    std::string const text{std::istreambuf_iterator<char>(file), {}};
    fs::path const named = picturesFolderIn(text, home);
    return named.empty() ? fs::path(home) / "Pictures" : named;
}

fs::path picturesFolderIn(std::string_view userDirs, std::string const& home)
{
    constexpr std::string_view key = "XDG_PICTURES_DIR=\"";
    constexpr std::string_view homePlace = "$HOME";
    fs::path found;
    for (std::string const& line : string_split(userDirs, '\n')) {
        std::size_t const end = line.rfind('"');
        if (!line.starts_with(key) || end < key.size())
            continue;
        std::string value = line.substr(key.size(), end - key.size());
        if (value == homePlace || value.starts_with(std::string(homePlace) + "/"))
            value.replace(0, homePlace.size(), home);
        if (fs::path(value).is_absolute())
            found = value;
    }
    return found;
}

} // namespace sgview
