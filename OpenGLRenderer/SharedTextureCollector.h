#pragma once

#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGSharedData.h"

#include <unordered_set>

/// Finds every shared image that a texture layer refers to, each once.
class SharedTextureCollector : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGGeometryNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

    std::unordered_set<smart_ptr<SharedImage>> textures; ///< result of the walk
};
