#include "Viewer/Overlay/CurveDrawing.h"

#include "Maths/UVector3.h"

#include <algorithm>
#include <limits>

namespace sgview {

smart_ptr<SharedGeometry> shareCurve(std::vector<Vector3> points, bool closed)
{
    auto record = make_smart<GeometryData>();
    record->vertices = std::move(points);
    record->closed = closed;
    return make_smart<SharedGeometry>(std::move(record));
}

smart_ptr<SGCurveGeometryReferenceNode> drawCurve(smart_ptr<SGNode> const& parent,
                                                  smart_ptr<SharedGeometry> const& curve, Pen const& pen)
{
    auto node = make_smart<SGCurveGeometryReferenceNode>(parent);
    node->setGeometry(curve);
    node->material.setAmbientAndDiffuse(pen.color);
    node->lineWidth = pen.width;
    node->lineStipple = pen.stipple;
    return node;
}

Transform alongLine(Vector3 const& from, Vector3 const& to)
{
    Vector3 const way = to - from;
    UVector3 const z = way == Vector3() ? UVector3() : UVector3(way);
    Vector3 x;
    Vector3 y;
    getBasis(z, x, y);
    Matrix3 const rotation({x.x, y.x, z.x, x.y, y.y, z.y, x.z, y.z, z.z});
    return {rotation, from, std::max(length(way), std::numeric_limits<double>::min())};
}

CurveCopies::CurveCopies(smart_ptr<SGNode> parent, smart_ptr<SharedGeometry> curve, Pen const& pen)
    : parent_(std::move(parent)), curve_(std::move(curve)), pen_(pen)
{
}

void CurveCopies::place(std::vector<Transform> const& places)
{
    while (copies_.size() > places.size()) {
        copies_.back()->deparent();
        copies_.pop_back();
    }
    while (copies_.size() < places.size()) {
        copies_.push_back(make_smart<SGTransformNode>(parent_));
        drawCurve(copies_.back(), curve_, pen_);
    }
    for (std::size_t i = 0; i < places.size(); ++i)
        copies_[i]->transform = places[i];
}

} // namespace sgview
