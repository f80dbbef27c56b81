#pragma once

#include "Viewer/Import/Model.h"
#include "Viewer/Import/Warnings.h"

#include <map>
#include <optional>

namespace sgview {

using CoordinateSet = std::vector<std::array<double, 2>>;
using Colour = std::array<float, 4>;

/// Where a texture layer's coordinates come from: one of the file's sets, and an affine map of (u, v):
/// u' = map[0] u + map[1] v + map[2], v' = map[3] u + map[4] v + map[5].
struct CoordinateSource {
    Index set = 0;
    std::array<double, 6> map{1, 0, 0, 0, 1, 0};
};

/// A material as the file has it, before it meets a surface.
struct MaterialPlan {
    ModelMaterial material;                ///< with all layers; their `coordinates` are not set
    std::vector<CoordinateSource> sources; ///< one for each layer
};

/// The materials of a model. What a material of a file looks like depends on the surface that wears it:
/// layers without coordinates fall away, the renderer takes only so many layers, a colour that all vertices
/// share goes into the material, its alpha only where the material blends.
class MaterialTable {
public:
    explicit MaterialTable(Warnings& warnings) : warnings_(&warnings) {}

    /// \return the plan's number
    std::size_t add(MaterialPlan plan);

    /// Sets a surface's material and coordinates.
    /// \param sets     the file's coordinate sets for this surface, each empty or as long as its positions
    /// \param colours  the file's vertex colours, or none
    void dress(ModelSurface& surface, std::size_t plan, std::vector<CoordinateSet> const& sets,
               std::vector<Colour> const& colours);

    /// The material of a curve: it has no layers.
    [[nodiscard]] Index ofCurve(std::size_t plan, std::vector<Colour> const& colours);

    [[nodiscard]] std::vector<ModelMaterial> take() { return std::move(materials_); }

private:
    [[nodiscard]] std::optional<Colour> commonColour(std::vector<Colour> const& colours, bool blending,
                                                     std::string const& owner);
    [[nodiscard]] Index variant(std::size_t plan, std::vector<std::size_t> const& layers,
                                std::optional<Colour> const& colour);

    struct Key {
        std::size_t plan;
        std::vector<std::size_t> layers;
        std::optional<Colour> colour;
        auto operator<=>(Key const&) const = default;
    };

    std::vector<MaterialPlan> plans_;
    std::vector<ModelMaterial> materials_;
    std::map<Key, Index> variants_;
    Warnings* warnings_;
};

} // namespace sgview
