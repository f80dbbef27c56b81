#include "Tests/Frame/TextureCount.h"

#include <epoxy/gl.h>

std::size_t countTextures()
{
    constexpr GLuint mostNames = 4096;
    std::size_t count = 0;
    for (GLuint name = 1; name < mostNames; ++name)
        count += glIsTexture(name) ? 1 : 0;
    return count;
}
