#pragma once

#include "Utilities/Color.h"
#include "Utilities/Serializable.h"

#include <string>

/// How a surface reflects light, in the terms of OpenGL's fixed-function lighting.
///
/// The three `tex...` fields describe a texture for tools that write materials down; what is drawn with comes
/// from a node's texture layers.
class Material : public Serializable {
public:
    Color ambient{0.2F, 0.2F, 0.2F, 1.0F};
    Color diffuse{0.8F, 0.8F, 0.8F, 1.0F}; ///< alpha is the lit surface's opacity
    Color specular;
    Color emissive;
    float shininess = 0.0F; ///< specular exponent, 0 to 128
    bool ambdiff = false;   ///< ambient and diffuse are one colour: `ambient`
    std::string texname;
    float texscale = 1.0F;
    float texangle = 0.0F;

    /// Gives ambient and diffuse one colour.
    void setAmbientAndDiffuse(Color const& color);

    [[nodiscard]] smart_ptr<Field> makeField(std::string const& name) const override;

    bool operator==(Material const& other) const;
};
