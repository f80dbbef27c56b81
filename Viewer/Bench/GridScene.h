#pragma once

#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Bench/BenchScene.h"
#include "Viewer/Bench/GridLayout.h"
#include "Viewer/Bench/SceneShapes.h"

#include <vector>

namespace sgview {

/// Many surfaces on a square grid that share one shape, each in a colour of its own below a transform of its
/// own.
class GridScene : public BenchScene {
public:
    /// \param count   surfaces
    /// \param moving  every transform is set anew for each frame
    GridScene(SceneShape const& shape, int count, bool moving);

    void prepare(int frame) override;

    /// Gives every surface two layers of 16 pictures in turn.
    void addTextures(smart_ptr<SharedTextureCoords> const& coordinates);

private:
    [[nodiscard]] Transform transformOf(int index, int frame) const;

    GridLayout layout_;
    bool moving_;
    std::vector<smart_ptr<SGTransformNode>> transforms_;
    std::vector<smart_ptr<SGSurfaceGeometryReferenceNode>> surfaces_;
};

} // namespace sgview
