#pragma once

#include "OpenGLRenderer/Capabilities.h"
#include "SceneGraph/SGNodeVisitor.h"

#include <vector>

/// Turns what the card may be trusted with into the list of passes that draws a frame.
class Strategist {
public:
    /// New passes, in the order in which they are shown the root. No OpenGL call is made.
    [[nodiscard]] static std::vector<smart_ptr<SGNodeVisitor>> computeStrategy(Capabilities const& caps);
};
