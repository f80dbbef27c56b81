#pragma once

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"

#include <vector>

/// Everything in a scene, by kind, in the order of the tree, and where each surface stands.
class SceneWalk : public SGNodeVisitor {
public:
    [[nodiscard]] static smart_ptr<SceneWalk> through(SGNode& top)
    {
        auto walk = make_smart<SceneWalk>();
        SGTraverser::walk(top, *walk);
        return walk;
    }

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGCameraNode* node) override { cameras.push_back(node); }
    void enter(SGLightsNode* node) override { lights.push_back(node); }
    void enter(SGTransformNode* node) override
    {
        transforms.push_back(node);
        stack_.push_back(stack_.empty() ? node->transform : stack_.back() * node->transform);
        deepest = std::max(deepest, stack_.size());
    }
    void leave(SGTransformNode*) override { stack_.pop_back(); }
    void enter(SGSurfaceGeometryReferenceNode* node) override
    {
        surfaces.push_back(node);
        places.push_back(stack_.back().getMatrix());
    }

    std::vector<SGCameraNode*> cameras;
    std::vector<SGLightsNode*> lights;
    std::vector<SGTransformNode*> transforms;
    std::vector<SGSurfaceGeometryReferenceNode*> surfaces;
    std::vector<Matrix> places; ///< of the surfaces, in the world
    std::size_t deepest = 0;    ///< transforms above one another

private:
    std::vector<Transform> stack_;
};
