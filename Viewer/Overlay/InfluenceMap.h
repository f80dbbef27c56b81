#pragma once

#include "SceneGraph/SGTextureLayer.h"
#include "Viewer/Scene/ModelInstance.h"

#include <optional>
#include <string>
#include <vector>

namespace sgview {

/// How strongly one bone holds each vertex of a model, as a texture layer.
class InfluenceMap {
public:
    /// A bone by its node, and the sum of its weights over all vertices.
    struct Bone {
        Index node = none;
        std::string name;
        double hold = 0.0;
    };

    /// \param instance  lives longer
    explicit InfluenceMap(ModelInstance const& instance);

    /// In the order of the model's nodes.
    [[nodiscard]] std::vector<Bone> const& bones() const { return bones_; }

    /// Index of the bone that is shown, at first the one that holds most; meaningless without bones.
    [[nodiscard]] std::size_t chosen() const { return chosen_; }
    void choose(std::size_t bone);

    /// What shows the bone's hold on a part; none for a part without a skin.
    [[nodiscard]] std::optional<SGTextureLayer> layer(std::size_t part);

private:
    [[nodiscard]] smart_ptr<SharedTextureCoords> makeCoordinates(BoneWeightsData const& weights,
                                                                 Index skin) const;

    ModelInstance const& instance_;
    std::vector<Bone> bones_;
    std::size_t chosen_ = 0;
    smart_ptr<SharedImage> ramp_; ///< null until it is needed
    std::vector<smart_ptr<SharedTextureCoords>>
        coordinates_; ///< one a part, of the chosen bone; null until needed
};

} // namespace sgview
