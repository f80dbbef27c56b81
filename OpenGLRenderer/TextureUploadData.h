#pragma once

#include "SceneGraph/SGExtraData.h"

#include <epoxy/gl.h>

/// Owns a texture, made with it, that holds the picture of the shared image on which it hangs.
///
/// Deletes the texture at its end, so it must go while the context is current, or while
/// SGRendererManager::shutdown is set: then no call is made.
class TextureUploadData : public SGExtraData {
public:
    TextureUploadData();
    TextureUploadData(TextureUploadData const&) = delete;
    TextureUploadData& operator=(TextureUploadData const&) = delete;
    ~TextureUploadData() override;

    [[nodiscard]] GLuint name() const { return name_; }

private:
    GLuint name_ = 0;
};
