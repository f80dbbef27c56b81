#pragma once

#include "Maths/Transform.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"

#include <cstdint>
#include <vector>

namespace sgview {

/// How a line looks.
struct Pen {
    Color color;
    double width = 1.0;        ///< pixels
    std::uint16_t stipple = 0; ///< pattern, lowest bit first; 0 is a plain line
};

[[nodiscard]] smart_ptr<SharedGeometry> shareCurve(std::vector<Vector3> points, bool closed = false);

smart_ptr<SGCurveGeometryReferenceNode> drawCurve(smart_ptr<SGNode> const& parent,
                                                  smart_ptr<SharedGeometry> const& curve, Pen const& pen);

/// The map from the unit vector in z to the way from one point to another; of positive scale, however near
/// they are.
[[nodiscard]] Transform alongLine(Vector3 const& from, Vector3 const& to);

/// Copies of one curve, each placed by a transform. The renderer prepares the curve once, whatever the number
/// of copies and however often they move.
class CurveCopies {
public:
    CurveCopies(smart_ptr<SGNode> parent, smart_ptr<SharedGeometry> curve, Pen const& pen);

    /// As many copies as there are places.
    void place(std::vector<Transform> const& places);

private:
    smart_ptr<SGNode> parent_;
    smart_ptr<SharedGeometry> curve_;
    Pen pen_;
    std::vector<smart_ptr<SGTransformNode>> copies_;
};

/// A node that stands in a scene for as long as this lives, with what is below it.
template <typename Node>
class Guest {
public:
    explicit Guest(smart_ptr<SGNode> const& parent) : node_(make_smart<Node>(parent)) {}
    Guest(Guest const&) = delete;
    Guest& operator=(Guest const&) = delete;
    ~Guest() { node_->deparent(); }

    [[nodiscard]] smart_ptr<Node> const& node() const { return node_; }

private:
    smart_ptr<Node> node_;
};

} // namespace sgview
