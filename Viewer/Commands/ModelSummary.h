#pragma once

#include "Viewer/Import/Model.h"
#include "Viewer/Report/Json.h"
#include "Viewer/Scene/ModelInstance.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace sgview {

/// What `sgview info` says about a model.
struct ModelSummary {
    struct Texture {
        std::string name;
        int width = 0; ///< pixels, as drawn
        int height = 0;
    };
    struct Split {
        std::string surface;
        Index parts = 0;
    };
    struct Animation {
        std::string name;
        double seconds = 0.0;
    };

    std::string file;
    std::string format;
    std::size_t nodes = 0;
    std::size_t surfaces = 0;
    std::size_t triangles = 0;
    std::size_t vertices = 0; ///< of surfaces
    std::size_t curves = 0;
    std::size_t bones = 0;                 ///< that vertices hang on
    std::int32_t mostInfluencesInFile = 0; ///< of a vertex
    std::int32_t mostInfluences = 0;       ///< of a vertex, as drawn
    std::int64_t droppedInfluences = 0;    ///< of all vertices
    std::vector<Split> splits; ///< surfaces of the file that are drawn as several, for their bones
    std::vector<std::string> materials;
    std::vector<Texture> textures;
    std::vector<Animation> animations;
    std::vector<std::string> warnings;

    Index posedBy = none;              ///< index of the animation; `none` for the rest pose
    double seconds = 0.0;              ///< moment of the pose
    std::vector<SurfaceBounds> bounds; ///< what is drawn, as posed, in world space
};

/// All but the pose and the bounds.
[[nodiscard]] ModelSummary summarise(std::string file, Model const& model);

/// For people. Numbers have all digits that count.
void writeText(std::ostream& stream, ModelSummary const& summary);

[[nodiscard]] Json asJson(ModelSummary const& summary);

/// Why there is no summary: the file and an error of kind and message.
[[nodiscard]] Json failureAsJson(std::string const& file, std::string_view kind, std::string_view message);

} // namespace sgview
