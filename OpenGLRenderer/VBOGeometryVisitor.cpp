#include "OpenGLRenderer/VBOGeometryVisitor.h"

#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/Renderer.h"
#include "OpenGLRenderer/TextureUnits.h"
#include "OpenGLRenderer/VBOData.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <algorithm>

namespace {

constexpr void const* bufferStart = nullptr;

bool hasBuffer(SGObject const& object)
{
    return bufferOf(object, ExtraDataKeys::vbo) != 0;
}

bool isBuffered(SGSurfaceGeometryReferenceNode const& node)
{
    return hasBuffer(*node.getGeometry()) && hasBuffer(*node.getNormals()) && hasBuffer(*node.getFacets()) &&
           std::ranges::all_of(node.textureLayers,
                               [](SGTextureLayer const& layer) { return hasBuffer(*layer.coordinates); });
}

// Drivers read past the end of an empty buffer rather than refuse to draw from it.
bool hasEmptyArray(SGSurfaceGeometryReferenceNode const& node)
{
    return node.getGeometry()->get()->vertices.empty() || node.getNormals()->get()->normals.empty() ||
           std::ranges::any_of(node.textureLayers, [](SGTextureLayer const& layer) {
               return layer.coordinates->get()->coordinates.empty();
           });
}

void bindArray(SGObject const& object)
{
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, bufferOf(object, ExtraDataKeys::vbo));
}

// GeometryVisitor leaves the unit alone where there is only one.
void selectClientUnit(int unit)
{
    if (GLRenderer::renderer->getMaxTextureUnits() > 0)
        glClientActiveTextureARB(textureUnitName(unit));
}

void draw(SGSurfaceGeometryReferenceNode const& node)
{
    bindArray(*node.getGeometry());
    glVertexPointer(3, GL_FLOAT, 0, bufferStart);
    bindArray(*node.getNormals());
    glNormalPointer(GL_FLOAT, 0, bufferStart);
    int const layers = drawnLayerCount(node);
    for (int layer = 0; layer < layers; ++layer) {
        selectClientUnit(layer);
        bindArray(*node.textureLayers[static_cast<std::size_t>(layer)].coordinates);
        glTexCoordPointer(2, GL_FLOAT, 0, bufferStart);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, bufferOf(*node.getFacets(), ExtraDataKeys::vbo));
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);

    auto const indices = static_cast<GLsizei>(node.getFacets()->get()->facets.size());
    glDrawElements(GL_TRIANGLES, indices, GL_UNSIGNED_INT, bufferStart);

    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    for (int layer = layers - 1; layer >= 0; --layer) {
        selectClientUnit(layer);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
    glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0);
}

} // namespace

void VBOGeometryVisitor::enter(SGSurfaceGeometryReferenceNode* node)
{
    bool const buffered = isBuffered(*node);
    if (buffered && !hasEmptyArray(*node)) {
        draw(*node);
        return;
    }
    // VBOCreator leaves one bound; client indices would be taken for offsets into it.
    glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0);
    if (!buffered)
        GeometryVisitor::enter(node);
}
