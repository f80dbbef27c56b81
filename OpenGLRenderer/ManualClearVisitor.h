#pragma once

#include "SceneGraph/SGNodeVisitor.h"

/// Clears the colour buffer by drawing: makes a quad of the root's colour, larger than the screen, the first
/// thing in the scene. Another way than GeneralSetupVisitor's; no strategy uses it.
class ManualClearVisitor : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGRootNode* node) override;
};

/// Takes out again what ManualClearVisitor put in. Nothing may be put before it meanwhile.
class ManualUnClearVisitor : public SGNodeVisitor {
public:
    using SGNodeVisitor::enter;
    void enter(SGRootNode* node) override;
};
