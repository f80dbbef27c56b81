#pragma once

#include "SceneGraph/SGNode.h"
#include "SceneGraph/SGTextureLayer.h"
#include "Utilities/Material.h"

#include <cstdint>
#include <vector>

/// Anything that is drawn, and how it looks.
class SGGeometryNode : public SGNode {
public:
    explicit SGGeometryNode(smart_ptr<SGNode> parent);

    void acceptEnter(SGNodeVisitor* visitor) override;
    void acceptLeave(SGNodeVisitor* visitor) override;

    Material material;
    bool blending = false;         ///< mixed with what is behind it, by alpha
    double lineWidth = 1.0;        ///< pixels, greater than 0
    std::uint16_t lineStipple = 0; ///< of a curve: pattern, lowest bit first; 0 is a plain line
    std::vector<SGTextureLayer> textureLayers;
};
