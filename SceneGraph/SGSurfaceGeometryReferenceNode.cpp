#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include "SceneGraph/SGNodeVisitor.h"

#include <stdexcept>
#include <utility>

SGSurfaceGeometryReferenceNode::SGSurfaceGeometryReferenceNode(smart_ptr<SGNode> parent)
    : SGGeometryReferenceNode(std::move(parent))
{
    setKind(SGNodeKind::surface);
}

void SGSurfaceGeometryReferenceNode::acceptEnter(SGNodeVisitor* visitor)
{
    visitor->enter(this);
}

void SGSurfaceGeometryReferenceNode::acceptLeave(SGNodeVisitor* visitor)
{
    visitor->leave(this);
}

void SGSurfaceGeometryReferenceNode::setNormals(smart_ptr<SharedSurfaceGeometry> normals)
{
    if (normals && normals == facets_)
        throw std::invalid_argument("a surface's normals and facets need a wrapper each");
    normals_ = std::move(normals);
}

void SGSurfaceGeometryReferenceNode::setFacets(smart_ptr<SharedSurfaceGeometry> facets)
{
    if (facets && facets == normals_)
        throw std::invalid_argument("a surface's normals and facets need a wrapper each");
    facets_ = std::move(facets);
}
