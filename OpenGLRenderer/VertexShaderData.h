#pragma once

#include "SceneGraph/SGExtraData.h"

#include <epoxy/gl.h>

/// Owns the vertex shader of a scene, on whose root it hangs, and the program linked from it.
///
/// Deletes them at its end, so it must go while the context is current, or while SGRendererManager::shutdown
/// is set: then no call is made.
class VertexShaderData : public SGExtraData {
public:
    VertexShaderData() = default;
    VertexShaderData(VertexShaderData const&) = delete;
    VertexShaderData& operator=(VertexShaderData const&) = delete;
    ~VertexShaderData() override;

    GLhandleARB shader = 0;
    GLhandleARB program = 0;
};
