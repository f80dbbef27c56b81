#include "OpenGLRenderer/VBOGeometryVisitor.h"

#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "OpenGLRenderer/VBOCreator.h"
#include "OpenGLRenderer/VBOData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

class VBOGeometry : public RendererTest {
protected:
    static void addLayer(SGGeometryNode& node)
    {
        SGTextureLayer layer;
        layer.coordinates = sharedCoordinates({{0.0, 0.5, 9.0}, {1.0, 0.5, 9.0}, {0.0, 1.0, 9.0}});
        node.textureLayers.push_back(layer);
    }

    template <typename Node>
    void prepare(Node& node)
    {
        ConverterToFloats converter(false);
        show(converter, node);
        VBOCreator creator(false);
        show(creator, node);
        SGRootNode root;
        show(creator, root);
    }

    /// The calls of the pass that does without buffers.
    template <typename Node>
    Calls plainCalls(Node& node)
    {
        GeometryVisitor plain;
        return entering(plain, node);
    }

    void expectDrawnWithoutBuffers()
    {
        Calls const calls = entering(pass, *surface);
        EXPECT_EQ(calls, Calls{"glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0)"} + plainCalls(*surface));
        expectNothingBound();
    }

    void expectNothingBound()
    {
        EXPECT_EQ(gl.boundBuffers[GL_ARRAY_BUFFER_ARB], 0U);
        EXPECT_EQ(gl.boundBuffers[GL_ELEMENT_ARRAY_BUFFER_ARB], 0U);
    }

    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle();
    VBOGeometryVisitor pass;
};

std::string bindingArray(int buffer)
{
    return "glBindBufferARB(GL_ARRAY_BUFFER_ARB, " + std::to_string(buffer) + ')';
}

Calls coordinatesOf(int unit, int buffer)
{
    return {"glClientActiveTextureARB(GL_TEXTURE" + std::to_string(unit) + "_ARB)", bindingArray(buffer),
            "glTexCoordPointer(2, GL_FLOAT, 0, offset 0)", "glEnableClientState(GL_TEXTURE_COORD_ARRAY)"};
}

Calls coordinatesOff(int unit)
{
    return {"glClientActiveTextureARB(GL_TEXTURE" + std::to_string(unit) + "_ARB)",
            "glDisableClientState(GL_TEXTURE_COORD_ARRAY)"};
}

std::string const elementsUnbound = "glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0)";
Calls const pointers{bindingArray(1), "glVertexPointer(3, GL_FLOAT, 0, offset 0)", bindingArray(2),
                     "glNormalPointer(GL_FLOAT, 0, offset 0)"};
Calls const triangles{"glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 3)",
                      "glEnableClientState(GL_VERTEX_ARRAY)",
                      "glEnableClientState(GL_NORMAL_ARRAY)",
                      "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, offset 0)",
                      "glDisableClientState(GL_VERTEX_ARRAY)",
                      "glDisableClientState(GL_NORMAL_ARRAY)"};
Calls const unbinding{bindingArray(0), elementsUnbound};

} // namespace

TEST_F(VBOGeometry, DrawsASurfaceFromItsBuffers)
{
    surface->setFacets(sharedFacets({2, 0, 1}));
    prepare(*surface);
    EXPECT_EQ(entering(pass, *surface), pointers + triangles + unbinding);
    EXPECT_EQ(leaving(pass, *surface), Calls());
    EXPECT_THAT(gl.draws().at(0).positions,
                testing::ElementsAre(std::array{0.0F, 1.0F, 0.0F}, std::array{0.0F, 0.0F, 0.0F},
                                     std::array{1.0F, 0.0F, 0.0F}));
    EXPECT_EQ(gl.draws().at(0).normals.at(0), (std::array{0.0F, 0.0F, 1.0F}));
    expectNothingBound();
}

TEST_F(VBOGeometry, DrawsTheSameAsWithoutBuffers)
{
    addLayer(*surface);
    prepare(*surface);
    static_cast<void>(entering(pass, *surface));
    gl.boundBuffers.clear();
    static_cast<void>(plainCalls(*surface));
    EXPECT_EQ(gl.draws().at(0), gl.draws().at(1));
}

TEST_F(VBOGeometry, BindsCoordinatesOnAsManyUnitsAsThereAre)
{
    for (int i = 0; i < 3; ++i)
        addLayer(*surface);
    prepare(*surface);
    EXPECT_EQ(entering(pass, *surface), pointers + coordinatesOf(0, 4) + coordinatesOf(1, 5) + triangles +
                                            coordinatesOff(1) + coordinatesOff(0) + unbinding);
    EXPECT_EQ(gl.draws().at(0).textureCoordinates.at(GL_TEXTURE1_ARB).at(1), (std::array{1.0F, 0.5F}));
    EXPECT_EQ(gl.clientUnit, GLenum(GL_TEXTURE0_ARB));
    EXPECT_TRUE(gl.enabledTextureCoordinates.empty());
    EXPECT_TRUE(gl.enabledArrays.empty());
    expectNothingBound();
}

TEST_F(VBOGeometry, SelectsTheClientUnitEvenWhereThereIsOne)
{
    useUnits(1);
    addLayer(*surface);
    addLayer(*surface);
    prepare(*surface);
    EXPECT_EQ(entering(pass, *surface),
              pointers + coordinatesOf(0, 4) + triangles + coordinatesOff(0) + unbinding);
}

TEST_F(VBOGeometry, UsesNoLayerWhereThereAreNoUnits)
{
    useUnits(0);
    addLayer(*surface);
    prepare(*surface);
    EXPECT_EQ(entering(pass, *surface), pointers + triangles + unbinding);
}

TEST_F(VBOGeometry, CountsTheIndicesInMemoryNotInTheBuffer)
{
    auto const data = make_smart<SurfaceGeometryData>();
    data->facets = {0, 1, 2, 2, 1, 0};
    surface->setFacets(make_smart<SharedSurfaceGeometry>(data));
    prepare(*surface);
    data->facets.resize(3);
    EXPECT_THAT(entering(pass, *surface),
                testing::Contains("glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, offset 0)"));
}

TEST_F(VBOGeometry, FallsBackWhereAnyBufferIsMissing)
{
    addLayer(*surface);
    addLayer(*surface);
    prepare(*surface);
    std::vector<SGObject*> const owners{
        surface->getGeometry().get(), surface->getNormals().get(), surface->getFacets().get(),
        surface->textureLayers[0].coordinates.get(), surface->textureLayers[1].coordinates.get()};
    for (SGObject* const owner : owners) {
        auto const buffer = owner->privateGetExtraData("GLVBO");
        ASSERT_TRUE(buffer);
        owner->setExtraData("GLVBO", nullptr);
        expectDrawnWithoutBuffers();
        owner->setExtraData("GLVBO", make_smart<VBOData>());
        expectDrawnWithoutBuffers();
        owner->setExtraData("GLVBO", buffer);
    }
    EXPECT_EQ(entering(pass, *surface).front(), bindingArray(1));
}

TEST_F(VBOGeometry, FallsBackForALayerBeyondTheUnits)
{
    useUnits(1);
    addLayer(*surface);
    addLayer(*surface);
    prepare(*surface);
    surface->textureLayers[1].coordinates->setExtraData("GLVBO", nullptr);
    expectDrawnWithoutBuffers();
}

TEST_F(VBOGeometry, DrawsATaggedSurfaceThatComesFirstFromItsOwnIndices)
{
    auto const tagged = triangle();
    tagged->setFacets(sharedFacets({2, 1, 0}));
    tagged->setExtraData(ExtraDataKeys::noVBO, make_smart<NoVBOTag>());
    prepare(*tagged);
    prepare(*surface);
    ASSERT_NE(gl.boundBuffers[GL_ELEMENT_ARRAY_BUFFER_ARB], 0U) << "what the creator leaves";
    EXPECT_THAT(entering(pass, *tagged),
                testing::Contains("glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, {2, 1, 0})"));
    expectNothingBound();
    EXPECT_EQ(gl.draws().back().positions.at(0), (std::array{0.0F, 1.0F, 0.0F}));
}

TEST_F(VBOGeometry, DrawsNothingFromAnEmptyBuffer)
{
    auto const expectUndrawn = [&] {
        prepare(*surface);
        EXPECT_EQ(entering(pass, *surface), Calls{elementsUnbound});
        expectNothingBound();
    };
    surface->setGeometry(sharedGeometry({}));
    expectUndrawn();
    surface = triangle();
    surface->setNormals(sharedNormals({}));
    expectUndrawn();
    surface = triangle();
    addLayer(*surface);
    addLayer(*surface);
    surface->textureLayers[1].coordinates = sharedCoordinates({});
    expectUndrawn();
    EXPECT_THAT(gl.draws(), testing::IsEmpty());
}

TEST_F(VBOGeometry, DrawsWhereALayerBeyondTheUnitsIsEmpty)
{
    for (int layer = 0; layer < 3; ++layer)
        addLayer(*surface);
    surface->textureLayers[2].coordinates = sharedCoordinates({});
    prepare(*surface);
    static_cast<void>(entering(pass, *surface));
    EXPECT_EQ(gl.draws().size(), 1U);
}

TEST_F(VBOGeometry, DrawsNoIndicesWhereThereAreNone)
{
    surface->setFacets(sharedFacets({}));
    prepare(*surface);
    EXPECT_THAT(entering(pass, *surface),
                testing::Contains("glDrawElements(GL_TRIANGLES, 0, GL_UNSIGNED_INT, offset 0)"));
}

TEST_F(VBOGeometry, DrawsQuadsAndCurvesWithoutBuffers)
{
    SGQuadNode quad(nullptr);
    quad.corners = {{0.0, 0.5, 0.1}, {1.0, 0.5, 0.1}, {1.0, 1.5, 0.1}, {0.0, 1.5, 0.1}};
    EXPECT_EQ(entering(pass, quad), plainCalls(quad));
    EXPECT_EQ(gl.count("glBegin"), 0);

    SGCurveGeometryReferenceNode curve(nullptr);
    curve.setGeometry(sharedGeometry({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}}));
    prepare(curve);
    Calls const calls = entering(pass, curve);
    EXPECT_EQ(calls, plainCalls(curve));
    EXPECT_EQ(calls.front(), "glVertexPointer(3, GL_FLOAT, 0, array)");
    EXPECT_EQ(gl.draws().back().positions.at(1), (std::array{1.0F, 0.0F, 0.0F}));
}
