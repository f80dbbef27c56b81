#pragma once

#include "SceneGraph/SGNodeVisitor.h"

/// Puts OpenGL's fixed-function state into the one configuration that every later pass assumes, and clears
/// the frame as the root asks. Only the root is looked at.
class GeneralSetupVisitor : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGRootNode* node) override;
    /// Logs an error that entering raised.
    void leave(SGRootNode* node) override;
};
