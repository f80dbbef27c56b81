#include "Tests/Import/TestFolder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace sgview {

TestFolder::TestFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "import-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    path_ = std::filesystem::canonical(name);
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TestFolder::write(std::string const& name, std::string_view content) const
{
    std::filesystem::path const file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    return file;
}

std::filesystem::path TestFolder::write(std::string const& name, std::span<std::uint8_t const> content) const
{
    return write(name, std::string_view(reinterpret_cast<char const*>(content.data()), content.size()));
}

} // namespace sgview
