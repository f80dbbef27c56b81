#include "OpenGLRenderer/GeometryVisitor.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "OpenGLRenderer/TextureUnits.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "Utilities/Log.h"
#include "Utilities/Strings.h"

#include <epoxy/gl.h>

namespace {

constexpr std::size_t quadCorners = 4;

float const* floatsOf(SGObject const& object)
{
    return findExtraData<FloatData<float>>(object, ExtraDataKeys::floats)->values.data();
}

void selectClientUnit(int unit)
{
    if (usesMultitexturing())
        glClientActiveTextureARB(textureUnitName(unit));
}

void setCornerTextures(SGQuadNode const& node, int layers, std::size_t corner)
{
    auto const coordinate = [&](int layer) -> Vector3 const& {
        return node.textureLayers[static_cast<std::size_t>(layer)].coordinates->get()->coordinates[corner];
    };
    if (usesMultitexturing()) {
        for (int layer = 0; layer < layers; ++layer)
            glMultiTexCoord2dARB(textureUnitName(layer), coordinate(layer).x, coordinate(layer).y);
    } else if (layers > 0) {
        glTexCoord2d(coordinate(0).x, coordinate(0).y);
    }
}

} // namespace

void GeometryVisitor::enter(SGQuadNode* node)
{
    if (node->corners.size() != quadCorners) {
        static LogChannel const channel("error");
        channel.write("Quad encountered with ", stringize(node->corners.size()), " corners");
        return;
    }
    int const layers = drawnLayerCount(*node);
    glBegin(GL_QUADS);
    for (std::size_t corner = 0; corner < quadCorners; ++corner) {
        setCornerTextures(*node, layers, corner);
        Vector3 const& position = node->corners[corner];
        glVertex3d(position.x, position.y, position.z);
    }
    glEnd();
}

void GeometryVisitor::enter(SGCurveGeometryReferenceNode* node)
{
    GeometryData const& geometry = *node->getGeometry()->get();
    glVertexPointer(3, GL_FLOAT, 0, floatsOf(*node->getGeometry()));
    glEnableClientState(GL_VERTEX_ARRAY);
    glDrawArrays(geometry.closed ? GL_LINE_LOOP : GL_LINE_STRIP, 0,
                 static_cast<GLsizei>(geometry.vertices.size()));
    glDisableClientState(GL_VERTEX_ARRAY);
}

void GeometryVisitor::enter(SGSurfaceGeometryReferenceNode* node)
{
    glVertexPointer(3, GL_FLOAT, 0, floatsOf(*node->getGeometry()));
    glNormalPointer(GL_FLOAT, 0, floatsOf(*node->getNormals()));
    int const layers = drawnLayerCount(*node);
    for (int layer = 0; layer < layers; ++layer) {
        SharedTextureCoords const& coordinates =
            *node->textureLayers[static_cast<std::size_t>(layer)].coordinates;
        selectClientUnit(layer);
        glTexCoordPointer(2, GL_FLOAT, 0, floatsOf(coordinates));
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);

    std::vector<std::int32_t> const& facets = node->getFacets()->get()->facets;
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(facets.size()), GL_UNSIGNED_INT, facets.data());

    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    for (int layer = layers - 1; layer >= 0; --layer) {
        selectClientUnit(layer);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
}
