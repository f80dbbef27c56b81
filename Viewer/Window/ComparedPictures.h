#pragma once

#include "Viewer/Diagnosis/Diagnosis.h"
#include "Viewer/Window/PictureTexture.h"

#include <memory>
#include <string>
#include <vector>

namespace sgview {

/// The pictures that a run of the graphics diagnostic held against one another, with what came of it, as
/// widgets. Needs OpenGL's context current.
class ComparedPictures {
public:
    explicit ComparedPictures(Diagnosis const& diagnosis);

    /// Builds them with Dear ImGui.
    void build() const;

private:
    struct Entry {
        Diagnosis::Comparison comparison;
        std::shared_ptr<PictureTexture const> first; ///< null where the picture is not there
        std::shared_ptr<PictureTexture const> second;
        std::shared_ptr<PictureTexture const> difference;
    };

    std::vector<Entry> entries_;
};

} // namespace sgview
