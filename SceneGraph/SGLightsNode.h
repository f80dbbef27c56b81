#pragma once

#include "SceneGraph/SGLightData.h"
#include "SceneGraph/SGNode.h"

#include <vector>

/// The lights that shine on what is below it, fixed in eye space; with none, what is below is drawn unlit.
///
/// OpenGL offers at least eight lights. Leaving a lights node below another one leaves the outer one's lights
/// disabled.
class SGLightsNode : public SGNode {
public:
    explicit SGLightsNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    std::vector<SGLightData> lights;
};
