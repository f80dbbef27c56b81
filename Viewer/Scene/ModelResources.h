#pragma once

#include "SceneGraph/SGSharedData.h"
#include "Utilities/Material.h"
#include "Viewer/Import/Model.h"

#include <memory>
#include <vector>

namespace sgview {

/// A surface of a model as the scene graph shares it between instances.
struct SurfaceResources {
    smart_ptr<SharedGeometry> geometry;
    smart_ptr<SharedSurfaceGeometry> normals;
    smart_ptr<SharedSurfaceGeometry> facets;
    std::vector<smart_ptr<SharedTextureCoords>> coordinates; ///< one a texture layer
    smart_ptr<SharedBoneWeights> boneWeights;                ///< null for a surface without a skin
};

/// What all instances of one model share: geometry, pictures, and the plain data to place and move them by.
class ModelResources {
public:
    /// \param model  checked; its geometry and pictures are moved into shared data, the rest is kept
    explicit ModelResources(Model model);

    /// Nodes, materials, skins and animations as imported; surfaces and images without their arrays.
    [[nodiscard]] Model const& model() const { return model_; }

    [[nodiscard]] SurfaceResources const& surface(Index index) const;
    [[nodiscard]] smart_ptr<SharedGeometry> const& curve(Index index) const;
    [[nodiscard]] smart_ptr<SharedImage> const& image(Index index) const;

private:
    Model model_;
    std::vector<SurfaceResources> surfaces_;
    std::vector<smart_ptr<SharedGeometry>> curves_;
    std::vector<smart_ptr<SharedImage>> images_;
};

/// A model's material in the renderer's terms.
[[nodiscard]] Material makeMaterial(ModelMaterial const& source);

} // namespace sgview
