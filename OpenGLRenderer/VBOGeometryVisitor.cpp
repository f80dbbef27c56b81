#include "OpenGLRenderer/VBOGeometryVisitor.h"

#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/Renderer.h"
#include "OpenGLRenderer/TextureUnits.h"
#include "OpenGLRenderer/VBOData.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <algorithm>
#include <ranges>

namespace {

constexpr void const* bufferStart = nullptr;

/// What a surface is drawn from, but for its texture coordinates; 0 where there is none.
struct Buffers {
    GLuint positions;
    GLuint normals;
    GLuint facets;
};

GLuint bufferOf(SGObject const& object)
{
    return bufferOf(object, ExtraDataKeys::vbo);
}

Buffers buffersOf(SGSurfaceGeometryReferenceNode const& node)
{
    return {bufferOf(*node.getGeometry()), bufferOf(*node.getNormals()), bufferOf(*node.getFacets())};
}

bool isBuffered(SGSurfaceGeometryReferenceNode const& node, Buffers const& buffers)
{
    return buffers.positions != 0 && buffers.normals != 0 && buffers.facets != 0 &&
           std::ranges::all_of(node.textureLayers,
                               [](SGTextureLayer const& layer) { return bufferOf(*layer.coordinates) != 0; });
}

// Drivers read past the end of an empty buffer rather than refuse to draw from it.
bool hasEmptyArray(SGSurfaceGeometryReferenceNode const& node)
{
    return node.getGeometry()->get()->vertices.empty() || node.getNormals()->get()->normals.empty() ||
           std::ranges::any_of(
               node.textureLayers | std::views::take(drawnLayerCount(node)),
               [](SGTextureLayer const& layer) { return layer.coordinates->get()->coordinates.empty(); });
}

void bindArray(GLuint buffer)
{
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, buffer);
}

// GeometryVisitor leaves the unit alone where there is only one.
void selectClientUnit(int unit)
{
    if (GLRenderer::renderer->getMaxTextureUnits() > 0)
        glClientActiveTextureARB(textureUnitName(unit));
}

void draw(SGSurfaceGeometryReferenceNode const& node, Buffers const& buffers)
{
    bindArray(buffers.positions);
    glVertexPointer(3, GL_FLOAT, 0, bufferStart);
    bindArray(buffers.normals);
    glNormalPointer(GL_FLOAT, 0, bufferStart);
    int const layers = drawnLayerCount(node);
    for (int layer = 0; layer < layers; ++layer) {
        selectClientUnit(layer);
        bindArray(bufferOf(*node.textureLayers[static_cast<std::size_t>(layer)].coordinates));
        glTexCoordPointer(2, GL_FLOAT, 0, bufferStart);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, buffers.facets);
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
    Buffers const buffers = buffersOf(*node);
    bool const buffered = isBuffered(*node, buffers);
    if (buffered && !hasEmptyArray(*node)) {
        draw(*node, buffers);
        return;
    }
    // VBOCreator leaves one bound; client indices would be taken for offsets into it.
    glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0);
    if (!buffered)
        GeometryVisitor::enter(node);
}
