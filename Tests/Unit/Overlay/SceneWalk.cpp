#include "Tests/Unit/Overlay/SceneWalk.h"

#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"

namespace sgview {

namespace {

class Walk : public SGNodeVisitor {
public:
    SceneContent content;

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGNode* node) override { content.nodes.push_back(node); }
    void enter(SGTransformNode* node) override
    {
        content.nodes.push_back(node);
        maps_.push_back(maps_.back() * node->transform.getMatrix());
    }
    void leave(SGTransformNode*) override { maps_.pop_back(); }
    void enter(SGSurfaceGeometryReferenceNode* node) override
    {
        content.nodes.push_back(node);
        content.surfaces.push_back({node, maps_.back()});
    }
    void enter(SGCurveGeometryReferenceNode* node) override
    {
        content.nodes.push_back(node);
        content.curves.push_back({node, maps_.back()});
    }

private:
    std::vector<Matrix> maps_{Matrix()};
};

} // namespace

std::vector<Vector3> SceneContent::pointsOf(std::size_t curve) const
{
    std::vector<Vector3> points;
    for (Vector3 const& point : curves[curve].node->getGeometry()->get()->vertices)
        points.push_back(transformPoint(curves[curve].map, point));
    return points;
}

std::string SceneContent::surfaceNames() const
{
    std::string names;
    for (auto const& surface : surfaces)
        names += (names.empty() ? "" : " ") + surface.node->getSurfaceData()->name;
    return names;
}

SceneContent contentOf(smart_ptr<SGRootNode> const& root)
{
    Walk walk;
    SGTraverser::walk(*root, walk);
    return std::move(walk.content);
}

} // namespace sgview
