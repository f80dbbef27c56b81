#pragma once

#include "SceneGraph/SGNodeVisitor.h"

/// Makes a texture, with all its mipmaps, of every image in the scene that has none yet. Walks the tree
/// itself when it is shown the root.
///
/// An image is uploaded once in its life: a failure is logged and not tried again, and pixels that change
/// later are not seen.
class SharedTextureTraverser : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGRootNode* node) override;
};
