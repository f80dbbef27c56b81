#pragma once

#include "Maths/Vector3.h"
#include "SceneGraph/SGGeometryNode.h"

#include <vector>

/// A quadrilateral in the material's ambient colour. It sends no normal, so it belongs outside lights nodes.
class SGQuadNode : public SGGeometryNode {
public:
    explicit SGQuadNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    std::vector<Vector3> corners; ///< four; texture layers hold a coordinate a corner
};
