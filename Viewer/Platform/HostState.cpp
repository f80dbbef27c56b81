#include "Viewer/Platform/HostState.h"

#include <epoxy/gl.h>

#include <initializer_list>

namespace sgview {

namespace {

/// What would cut away or alter pixels everywhere, clearing included; no pass ever touches it. Colour
/// material would overwrite materials with each colour, and two drivers would dither one colour differently.
void disableWhatAlters()
{
    for (GLenum ability : {GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_COLOR_LOGIC_OP, GL_FOG, GL_COLOR_MATERIAL,
                           GL_POLYGON_STIPPLE, GL_DITHER})
        glDisable(ability);
}

/// Surfaces are seen from both sides, the front being the counter-clockwise one.
void showBothSides()
{
    glDisable(GL_CULL_FACE);
    glFrontFace(GL_CCW);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

/// Clearing obeys these masks, and comes before the first pass that sets one.
void allowWriting()
{
    glDepthMask(GL_TRUE);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDrawBuffer(GL_BACK);
    glReadBuffer(GL_BACK);
}

/// Pictures go up, and frames come down, as rows padded to multiples of 4 bytes with nothing between them.
void layOutRows()
{
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    for (GLenum part :
         {GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS, GL_UNPACK_SWAP_BYTES,
          GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS, GL_PACK_SWAP_BYTES})
        glPixelStorei(part, 0);
}

} // namespace

void setHostState()
{
    allowWriting();
    disableWhatAlters();
    showBothSides();
    layOutRows();
}

} // namespace sgview
