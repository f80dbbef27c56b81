#pragma once

#include "Viewer/Import/FileAccess.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Import/PictureReader.h"

#include <functional>
#include <map>
#include <string>

namespace sgview {

/// Loads each picture of a model once. One that is missing or broken is a named warning and no picture.
class TextureStore {
public:
    TextureStore(FileAccess& access, Warnings& warnings, FirstRow firstRow, std::int32_t largestSide)
        : access_(&access), warnings_(&warnings), firstRow_(firstRow), largestSide_(largestSide)
    {
    }

    /// The picture in a file that the model names.
    /// \return its place in the model's images, or none
    [[nodiscard]] Index fromFile(std::string const& name);

    /// Why there is no picture in a file of this name.
    [[nodiscard]] std::string absenceOf(std::string const& name) { return access_->absenceOf(name); }

    /// A picture that the model file holds.
    /// \param key     tells it from the other embedded ones; for people, too: "embedded 0"
    /// \param pixels  called once, the first time; a PictureError from it is a warning
    [[nodiscard]] Index embedded(std::string const& key, std::function<Pixels()> const& pixels);

    [[nodiscard]] ModelImage const& image(Index index) const
    {
        return images_[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] std::vector<ModelImage> take() { return std::move(images_); }

private:
    [[nodiscard]] Index load(std::string const& key, std::string const& name,
                             std::function<Pixels()> const& pixels);

    FileAccess* access_;
    Warnings* warnings_;
    FirstRow firstRow_;
    std::int32_t largestSide_;
    std::vector<ModelImage> images_;
    std::map<std::string, Index> known_;
};

} // namespace sgview
