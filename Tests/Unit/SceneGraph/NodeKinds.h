#pragma once

#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGGeometryNode.h"
#include "SceneGraph/SGGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGOrderedGroupNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGZTransformNode.h"

#include <functional>
#include <string>
#include <vector>

/// Writes down which operation was called for which kind, and does nothing else: nothing is forwarded.
class KindRecorder : public SGNodeVisitor {
public:
    explicit KindRecorder(std::vector<std::string>& calls_, std::string name_ = "")
        : calls(calls_), name(std::move(name_))
    {
    }

#define SG_RECORD_KIND(Kind)                                                                                 \
    void enter(Kind*) override                                                                               \
    {                                                                                                        \
        calls.push_back(name + "enter " #Kind);                                                              \
    }                                                                                                        \
    void leave(Kind*) override                                                                               \
    {                                                                                                        \
        calls.push_back(name + "leave " #Kind);                                                              \
    }
    SG_RECORD_KIND(SGNode)
    SG_RECORD_KIND(SGRootNode)
    SG_RECORD_KIND(SGOrderedGroupNode)
    SG_RECORD_KIND(SGCameraNode)
    SG_RECORD_KIND(SGLightsNode)
    SG_RECORD_KIND(SGTransformNode)
    SG_RECORD_KIND(SGZTransformNode)
    SG_RECORD_KIND(SGGeometryNode)
    SG_RECORD_KIND(SGQuadNode)
    SG_RECORD_KIND(SGGeometryReferenceNode)
    SG_RECORD_KIND(SGSurfaceGeometryReferenceNode)
    SG_RECORD_KIND(SGCurveGeometryReferenceNode)
#undef SG_RECORD_KIND

private:
    std::vector<std::string>& calls;
    std::string name;
};

/// A new last child of `parent`, which alone owns it.
template <typename Node>
Node* addChild(smart_ptr<SGNode> const& parent)
{
    return make_smart<Node>(parent).get();
}

/// A kind of node, and how to make one on its own.
struct NodeKind {
    std::string name;
    std::function<smart_ptr<SGNode>()> make;
};

template <typename Node>
NodeKind nodeKind(std::string name)
{
    return {std::move(name), [] { return smart_ptr<SGNode>(new Node(nullptr)); }};
}

/// All kinds that a tree can be made of.
inline std::vector<NodeKind> nodeKinds()
{
    return {
        {"SGRootNode", [] { return smart_ptr<SGNode>(new SGRootNode); }},
        nodeKind<SGOrderedGroupNode>("SGOrderedGroupNode"),
        nodeKind<SGCameraNode>("SGCameraNode"),
        nodeKind<SGLightsNode>("SGLightsNode"),
        nodeKind<SGTransformNode>("SGTransformNode"),
        nodeKind<SGZTransformNode>("SGZTransformNode"),
        nodeKind<SGGeometryNode>("SGGeometryNode"),
        nodeKind<SGQuadNode>("SGQuadNode"),
        nodeKind<SGGeometryReferenceNode>("SGGeometryReferenceNode"),
        nodeKind<SGSurfaceGeometryReferenceNode>("SGSurfaceGeometryReferenceNode"),
        nodeKind<SGCurveGeometryReferenceNode>("SGCurveGeometryReferenceNode"),
    };
}
