#include "OpenGLRenderer/GeometryVisitor.h"

#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

class Geometry : public RendererTest {
protected:
    Geometry()
    {
        quad.corners = {{0.0, 0.5, 0.1}, {1.0, 0.5, 0.1}, {1.0, 1.5, 0.1}, {0.0, 1.5, 0.1}};
        surface->setFacets(sharedFacets({0, 1, 2, 2, 1, 0}));
    }

    static void addLayer(SGGeometryNode& node, double offset)
    {
        SGTextureLayer layer;
        layer.texture = sharedImage();
        layer.coordinates = sharedCoordinates(
            {{offset, 0.0, 9.0}, {offset + 1.0, 0.0, 9.0}, {offset + 1.0, 1.0, 9.0}, {offset, 1.0, 9.0}});
        node.textureLayers.push_back(layer);
    }

    void name(SGObject const& object, std::string const& label)
    {
        gl.namePointer(getExtraData<FloatData<float>>(object, ExtraDataKeys::floats)->values.data(), label);
    }

    /// Converts the surface, and names its arrays.
    void prepareSurface()
    {
        ConverterToFloats converter(false);
        surface->acceptEnter(&converter);
        name(*surface->getGeometry(), "positions");
        name(*surface->getNormals(), "normals");
        for (std::size_t i = 0; i < surface->textureLayers.size(); ++i)
            name(*surface->textureLayers[i].coordinates, "layer " + std::to_string(i));
    }

    SGQuadNode quad{nullptr};
    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle();
    GeometryVisitor pass;
};

Calls const pointers{"glVertexPointer(3, GL_FLOAT, 0, positions)", "glNormalPointer(GL_FLOAT, 0, normals)"};
Calls const triangles{"glEnableClientState(GL_VERTEX_ARRAY)", "glEnableClientState(GL_NORMAL_ARRAY)",
                      "glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, {0, 1, 2, 2, 1, 0})",
                      "glDisableClientState(GL_VERTEX_ARRAY)", "glDisableClientState(GL_NORMAL_ARRAY)"};
std::string const coordinatesOn = "glEnableClientState(GL_TEXTURE_COORD_ARRAY)";
std::string const coordinatesOff = "glDisableClientState(GL_TEXTURE_COORD_ARRAY)";

} // namespace

TEST_F(Geometry, DrawsAQuadInImmediateMode)
{
    EXPECT_EQ(entering(pass, quad),
              (Calls{"glBegin(GL_QUADS)", "glVertex3d(0, 0.5, 0.1)", "glVertex3d(1, 0.5, 0.1)",
                     "glVertex3d(1, 1.5, 0.1)", "glVertex3d(0, 1.5, 0.1)", "glEnd()"}));
    EXPECT_EQ(leaving(pass, quad), Calls());
}

TEST_F(Geometry, GivesAQuadsCornersCoordinatesOfEveryUnit)
{
    addLayer(quad, 0.0);
    addLayer(quad, 10.0);
    addLayer(quad, 20.0);
    EXPECT_EQ(
        entering(pass, quad),
        (Calls{"glBegin(GL_QUADS)", "glMultiTexCoord2dARB(GL_TEXTURE0_ARB, 0, 0)",
               "glMultiTexCoord2dARB(GL_TEXTURE1_ARB, 10, 0)", "glVertex3d(0, 0.5, 0.1)",
               "glMultiTexCoord2dARB(GL_TEXTURE0_ARB, 1, 0)", "glMultiTexCoord2dARB(GL_TEXTURE1_ARB, 11, 0)",
               "glVertex3d(1, 0.5, 0.1)", "glMultiTexCoord2dARB(GL_TEXTURE0_ARB, 1, 1)",
               "glMultiTexCoord2dARB(GL_TEXTURE1_ARB, 11, 1)", "glVertex3d(1, 1.5, 0.1)",
               "glMultiTexCoord2dARB(GL_TEXTURE0_ARB, 0, 1)", "glMultiTexCoord2dARB(GL_TEXTURE1_ARB, 10, 1)",
               "glVertex3d(0, 1.5, 0.1)", "glEnd()"}));
}

TEST_F(Geometry, NamesTheUnitEvenForOneLayerOfAQuad)
{
    addLayer(quad, 0.0);
    static_cast<void>(entering(pass, quad));
    quad.acceptEnter(&pass);
    EXPECT_EQ(gl.count("glMultiTexCoord2dARB"), 4);
    EXPECT_EQ(gl.count("glTexCoord2d"), 0);
}

TEST_F(Geometry, UsesPlainCoordinatesOfAQuadOnOneUnit)
{
    useUnits(1);
    addLayer(quad, 0.0);
    addLayer(quad, 10.0);
    EXPECT_EQ(entering(pass, quad),
              (Calls{"glBegin(GL_QUADS)", "glTexCoord2d(0, 0)", "glVertex3d(0, 0.5, 0.1)",
                     "glTexCoord2d(1, 0)", "glVertex3d(1, 0.5, 0.1)", "glTexCoord2d(1, 1)",
                     "glVertex3d(1, 1.5, 0.1)", "glTexCoord2d(0, 1)", "glVertex3d(0, 1.5, 0.1)", "glEnd()"}));
}

TEST_F(Geometry, LogsAndSkipsAQuadThatHasNotFourCorners)
{
    LogCapture const log;
    quad.corners.resize(3);
    EXPECT_EQ(entering(pass, quad), Calls());
    quad.corners.resize(5);
    EXPECT_EQ(entering(pass, quad), Calls());
    quad.corners.clear();
    EXPECT_EQ(entering(pass, quad), Calls());
    EXPECT_EQ(log.text(), "error: Quad encountered with 3 corners\n"
                          "error: Quad encountered with 5 corners\n"
                          "error: Quad encountered with 0 corners\n");
}

TEST_F(Geometry, DrawsAnOpenCurveAsAStripAndAClosedOneAsALoop)
{
    for (bool const closed : {false, true}) {
        SGCurveGeometryReferenceNode curve(nullptr);
        curve.setGeometry(sharedGeometry({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 1.0, 0.0}}, closed));
        ConverterToFloats converter(false);
        curve.acceptEnter(&converter);
        name(*curve.getGeometry(), "points");
        EXPECT_EQ(
            entering(pass, curve),
            (Calls{"glVertexPointer(3, GL_FLOAT, 0, points)", "glEnableClientState(GL_VERTEX_ARRAY)",
                   std::string("glDrawArrays(") + (closed ? "GL_LINE_LOOP" : "GL_LINE_STRIP") + ", 0, 3)",
                   "glDisableClientState(GL_VERTEX_ARRAY)"}));
        EXPECT_THAT(gl.draws().back().positions,
                    testing::ElementsAre(std::array{0.0F, 0.0F, 0.0F}, std::array{1.0F, 0.0F, 0.0F},
                                         std::array{1.0F, 1.0F, 0.0F}));
    }
}

TEST_F(Geometry, DrawsASurfacesTrianglesFromItsArrays)
{
    prepareSurface();
    EXPECT_EQ(entering(pass, *surface), pointers + triangles);
    EXPECT_EQ(leaving(pass, *surface), Calls());
    ASSERT_EQ(gl.draws().size(), 1U);
    EXPECT_EQ(gl.draws()[0].positions.size(), 6U);
    EXPECT_EQ(gl.draws()[0].positions[1], (std::array{1.0F, 0.0F, 0.0F}));
    EXPECT_EQ(gl.draws()[0].normals[0], (std::array{0.0F, 0.0F, 1.0F}));
}

TEST_F(Geometry, PassesTheFacetsThemselves)
{
    prepareSurface();
    static_cast<void>(entering(pass, *surface));
    surface->setFacets(sharedFacets({2, 0, 1}));
    EXPECT_THAT(entering(pass, *surface),
                testing::Contains("glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, {2, 0, 1})"));
}

TEST_F(Geometry, UsesAsManyOfASurfacesLayersAsThereAreUnits)
{
    for (double const offset : {0.0, 10.0, 20.0})
        addLayer(*surface, offset);
    prepareSurface();
    EXPECT_EQ(entering(pass, *surface), (pointers +
                                         Calls{"glClientActiveTextureARB(GL_TEXTURE0_ARB)",
                                               "glTexCoordPointer(2, GL_FLOAT, 0, layer 0)", coordinatesOn,
                                               "glClientActiveTextureARB(GL_TEXTURE1_ARB)",
                                               "glTexCoordPointer(2, GL_FLOAT, 0, layer 1)", coordinatesOn} +
                                         triangles +
                                         Calls{"glClientActiveTextureARB(GL_TEXTURE1_ARB)", coordinatesOff,
                                               "glClientActiveTextureARB(GL_TEXTURE0_ARB)", coordinatesOff}));
    EXPECT_EQ(gl.draws().at(0).textureCoordinates.at(GL_TEXTURE1_ARB).at(1), (std::array{11.0F, 0.0F}));
    EXPECT_TRUE(gl.enabledTextureCoordinates.empty());
}

TEST_F(Geometry, SelectsNoClientUnitWhereThereIsOne)
{
    useUnits(1);
    addLayer(*surface, 0.0);
    prepareSurface();
    EXPECT_EQ(entering(pass, *surface),
              (pointers + Calls{"glTexCoordPointer(2, GL_FLOAT, 0, layer 0)", coordinatesOn} + triangles +
               Calls{coordinatesOff}));
}

TEST_F(Geometry, SelectsTheClientUnitForOneLayerOfSeveralUnits)
{
    addLayer(*surface, 0.0);
    prepareSurface();
    EXPECT_EQ(entering(pass, *surface),
              (pointers +
               Calls{"glClientActiveTextureARB(GL_TEXTURE0_ARB)",
                     "glTexCoordPointer(2, GL_FLOAT, 0, layer 0)", coordinatesOn} +
               triangles + Calls{"glClientActiveTextureARB(GL_TEXTURE0_ARB)", coordinatesOff}));
}
