#include "OpenGLRenderer/AssetText.h"

#include "Utilities/AssetManager.h"
#include "Utilities/Log.h"

#include <array>

namespace {

std::string readAll(std::istream& stream)
{
    std::string text;
    std::array<char, 1024> chunk;
    do {
        stream.read(chunk.data(), chunk.size());
        text.append(chunk.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream);
    return text;
}

} // namespace

std::string loadAssetText(std::string const& path)
{
    try {
        return readAll(*AssetManager::getInstance().getFileStream(path, true));
    } catch (AssetError const& error) {
        static LogChannel const channel("error");
        channel.write(error.what());
        return {};
    }
}
