#include "Viewer/Import/TextureStore.h"

namespace sgview {

Index TextureStore::fromFile(std::string const& name)
{
    std::optional<std::filesystem::path> const path = access_->resolve(name);
    if (!path) {
        warnings_->add("texture '" + name + "': " + access_->absenceOf(name));
        return none;
    }
    return load(path->string(), path->filename().string(), [&] {
        std::optional<Bytes> const bytes = access_->read(name);
        if (!bytes)
            throw PictureError("cannot be read");
        return decodePicture(*bytes, path->filename().string());
    });
}

Index TextureStore::embedded(std::string const& key, std::function<Pixels()> const& pixels)
{
    return load(key, key, pixels);
}

Index TextureStore::load(std::string const& key, std::string const& name,
                         std::function<Pixels()> const& pixels)
{
    auto const [entry, isNew] = known_.try_emplace(key, none);
    if (!isNew)
        return entry->second;
    try {
        images_.push_back(makeTexture(name, pixels(), firstRow_, largestSide_));
        entry->second = static_cast<Index>(images_.size() - 1);
    } catch (PictureError const& error) {
        warnings_->add("texture '" + name + "': " + error.what());
    }
    return entry->second;
}

} // namespace sgview
