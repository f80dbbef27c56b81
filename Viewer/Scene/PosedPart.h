#pragma once

#include "Maths/Matrix.h"
#include "Maths/Transform.h"
#include "Maths/UVector3.h"
#include "SceneGraph/SGGeometryReferenceNode.h"
#include "SceneGraph/SGSharedData.h"
#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Scene/Bounds.h"

#include <string>
#include <vector>

namespace sgview {

/// What an instance draws for one surface or curve of the model on one of its nodes.
struct ModelPart {
    std::string name;
    Index owner = none;    ///< the node that it hangs on in the file
    Index material = none; ///< into Model::materials
    Index skin = none;     ///< into Model::skins; none where no bones move it
    smart_ptr<SGGeometryReferenceNode> drawn;
};

/// A vertex of a posed surface, and where the surface faces there.
struct PosedNormal {
    Vector3 place;
    UVector3 direction;
};

/// A part with its place in an instance's scene graph, and what the instance's pose does to it.
struct PosedPart : ModelPart {
    Index node = none;                ///< none for a skinned surface, which its bones alone place
    Index split = none;               ///< of which split of the model it is a part
    smart_ptr<SGNode> home;           ///< in the hierarchy; null for one that was never opaque
    smart_ptr<SGTransformNode> place; ///< of a blended one, outside the hierarchy; else null
    smart_ptr<SharedGeometry> rest;
    smart_ptr<SharedSurfaceGeometry> restNormals; ///< null for a curve
    Matrix3 stretching;                           ///< that `drawn` now holds
    Transform outer;                              ///< what the hierarchy does to `drawn`
    Matrix map;                                   ///< from the model's rest geometry to the model's space

    /// Draws the rest geometry stretched: itself, or a copy where that changes it.
    void stretch(Matrix3 const& inner);

    // What it looks like as posed; `top` maps on from the model's space.

    void addVertices(Matrix const& top, std::vector<Vector3>& all) const;

    /// One in so many vertices of a surface, with its normal.
    void addNormals(Transform const& top, std::size_t step, std::vector<PosedNormal>& all) const;

    [[nodiscard]] Bounds bounds(Matrix const& top) const;
};

} // namespace sgview
