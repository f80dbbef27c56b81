#pragma once

#include "OpenGLRenderer/ExtraData.h"
#include "SceneGraph/SGExtraData.h"

#include <epoxy/gl.h>

/// Owns the buffer made from a shared data object, on which it hangs.
///
/// Deletes the buffer at its end, so it must go while the context is current, or while
/// SGRendererManager::shutdown is set: then no call is made.
class VBOData : public SGExtraData {
public:
    VBOData() = default;
    VBOData(VBOData const&) = delete;
    VBOData& operator=(VBOData const&) = delete;
    ~VBOData() override;

    GLuint name = 0; ///< 0 until the buffer is generated
};

/// The name of the buffer that hangs on the object under `key`; 0 where there is none.
[[nodiscard]] inline GLuint bufferOf(SGObject const& object, SGExtraDataKey key)
{
    auto const* const data = findExtraData<VBOData>(object, key);
    return data ? data->name : 0;
}
