#pragma once

#include "SceneGraph/SGGeometryNode.h"
#include "SceneGraph/SGSharedData.h"

#include <utility>

/// Draws shared geometry: one instance of it.
class SGGeometryReferenceNode : public SGGeometryNode {
public:
    explicit SGGeometryReferenceNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    [[nodiscard]] smart_ptr<SharedGeometry> const& getGeometry() const { return geometry_; }
    void setGeometry(smart_ptr<SharedGeometry> geometry) { geometry_ = std::move(geometry); }

private:
    smart_ptr<SharedGeometry> geometry_;
};
