#pragma once

#include "SceneGraph/SGExtraData.h"

#include <epoxy/gl.h>

/// Owns the vertex programs of a scene, on whose root it hangs.
///
/// Deletes them at its end, so it must go while the context is current, or while SGRendererManager::shutdown
/// is set: then no call is made.
class VertexProgramData : public SGExtraData {
public:
    VertexProgramData() = default;
    VertexProgramData(VertexProgramData const&) = delete;
    VertexProgramData& operator=(VertexProgramData const&) = delete;
    ~VertexProgramData() override;

    GLuint defaultProgram = 0;   ///< for surfaces without bones
    GLuint animationProgram = 0; ///< for skinned surfaces
};
