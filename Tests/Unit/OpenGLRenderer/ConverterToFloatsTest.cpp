#include "OpenGLRenderer/ConverterToFloats.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;
using testing::ElementsAre;

namespace {

std::vector<float> floats(SGObject const& object, std::string const& key = "GLfloats")
{
    auto const record = getExtraData<FloatData<float>>(object, key);
    EXPECT_TRUE(record) << key;
    return record ? record->values : std::vector<float>();
}

/// A surface with every kind of data.
smart_ptr<SGSurfaceGeometryReferenceNode> skinnedSurface()
{
    auto const node = triangle();
    node->setBoneWeights(sharedWeights(
        {{{7, 1.0}}, {}, {{1, 0.5}, {2, 0.25}, {3, 0.125}, {4, 0.0625}, {5, 0.03}, {6, 0.02}}}));
    for (double const offset : {0.0, 5.0}) {
        SGTextureLayer layer;
        layer.texture = sharedImage();
        layer.coordinates = sharedCoordinates({{offset, 0.5, 9.0}, {offset + 1.0, 0.25, 9.0}});
        node->textureLayers.push_back(layer);
    }
    return node;
}

} // namespace

TEST(ConverterToFloats, ConvertsACurvesPositions)
{
    SGCurveGeometryReferenceNode curve(nullptr);
    curve.setGeometry(sharedGeometry({{0.1, 2.0, -3.0}, {4.0, 5.0, 1e-3}}));
    ConverterToFloats pass(false);
    show(pass, curve);
    EXPECT_THAT(floats(*curve.getGeometry()), ElementsAre(0.1F, 2.0F, -3.0F, 4.0F, 5.0F, 1e-3F));
}

TEST(ConverterToFloats, ConvertsASurfacesPositionsNormalsAndEveryLayersCoordinates)
{
    auto const node = skinnedSurface();
    node->setNormals(sharedNormals({UVector3(1.0, 0.0, 0.0), UVector3(0.0, -2.0, 0.0)}));
    ConverterToFloats pass(false);
    show(pass, *node);
    EXPECT_THAT(floats(*node->getGeometry()), ElementsAre(0, 0, 0, 1, 0, 0, 0, 1, 0));
    EXPECT_THAT(floats(*node->getNormals()), ElementsAre(1, 0, 0, 0, -1, 0));
    EXPECT_THAT(floats(*node->textureLayers[0].coordinates), ElementsAre(0.0F, 0.5F, 1.0F, 0.25F));
    EXPECT_THAT(floats(*node->textureLayers[1].coordinates), ElementsAre(5.0F, 0.5F, 6.0F, 0.25F));
    EXPECT_FALSE(node->getFacets()->hasExtraData());
}

TEST(ConverterToFloats, LeavesBoneWeightsAloneWhereTheProcessorSkins)
{
    auto const node = skinnedSurface();
    ConverterToFloats pass(false);
    show(pass, *node);
    EXPECT_FALSE(node->getBoneWeights()->hasExtraData());
}

TEST(ConverterToFloats, GivesEachVertexFourWeightsAndIndicesWhereTheCardSkins)
{
    auto const node = skinnedSurface();
    ConverterToFloats pass(true);
    show(pass, *node);
    EXPECT_THAT(floats(*node->getBoneWeights(), "GLfloatsWeights"),
                ElementsAre(1, 0, 0, 0, 0, 0, 0, 0, 0.5F, 0.25F, 0.125F, 0.0625F));
    EXPECT_THAT(floats(*node->getBoneWeights(), "GLfloatsIndices"),
                ElementsAre(7, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4));
    EXPECT_FALSE(node->getBoneWeights()->privateGetExtraData("GLfloats"));
}

TEST(ConverterToFloats, ConvertsASurfaceWithoutBonesWhereTheCardSkins)
{
    auto const node = triangle();
    ConverterToFloats pass(true);
    show(pass, *node);
    EXPECT_THAT(floats(*node->getGeometry()), testing::SizeIs(9));
}

TEST(ConverterToFloats, LooksOnlyAtTheWeightsToSeeWhetherBonesAreConverted)
{
    auto const node = skinnedSurface();
    auto const present = make_smart<FloatData<float>>();
    node->getBoneWeights()->setExtraData("GLfloatsWeights", present);
    ConverterToFloats pass(true);
    show(pass, *node);
    EXPECT_EQ(node->getBoneWeights()->privateGetExtraData("GLfloatsWeights"), present);
    EXPECT_FALSE(node->getBoneWeights()->privateGetExtraData("GLfloatsIndices"));
}

TEST(ConverterToFloats, ConvertsSharedDataOnce)
{
    auto const first = triangle();
    auto const second = triangle();
    second->setGeometry(first->getGeometry());
    ConverterToFloats pass(false);
    show(pass, *first);
    auto const record = first->getGeometry()->privateGetExtraData("GLfloats");
    show(pass, *second);
    show(pass, *first);
    EXPECT_EQ(first->getGeometry()->privateGetExtraData("GLfloats"), record);
}

TEST(ConverterToFloats, DoesNotSeeLaterChanges)
{
    auto const data = make_smart<GeometryData>();
    data->vertices = {{1.0, 2.0, 3.0}};
    SGCurveGeometryReferenceNode curve(nullptr);
    curve.setGeometry(make_smart<SharedGeometry>(data));
    ConverterToFloats pass(false);
    show(pass, curve);
    data->vertices[0].x = 9.0;
    show(pass, curve);
    EXPECT_THAT(floats(*curve.getGeometry()), ElementsAre(1, 2, 3));
}

TEST(ConverterToFloats, OverwritesARecordOfAnotherType)
{
    auto const node = triangle();
    node->setBoneWeights(sharedWeights({{{0, 1.0}}, {}, {}}));
    node->getGeometry()->setExtraData("GLfloats", make_smart<NoVBOTag>());
    node->getBoneWeights()->setExtraData("GLfloatsWeights", make_smart<NoVBOTag>());
    ConverterToFloats pass(true);
    show(pass, *node);
    EXPECT_THAT(floats(*node->getGeometry()), testing::SizeIs(9));
    EXPECT_TRUE(getExtraData<FloatData<float>>(*node->getBoneWeights(), "GLfloatsWeights"));
}

TEST(ConverterToFloats, ConvertsEmptyGeometryToAnEmptyArray)
{
    SGCurveGeometryReferenceNode curve(nullptr);
    curve.setGeometry(sharedGeometry({}));
    ConverterToFloats pass(false);
    show(pass, curve);
    auto const record = curve.getGeometry()->privateGetExtraData("GLfloats");
    EXPECT_THAT(floats(*curve.getGeometry()), testing::IsEmpty());
    show(pass, curve);
    EXPECT_EQ(curve.getGeometry()->privateGetExtraData("GLfloats"), record);
}

TEST(ConverterToFloats, LeavesQuadsAlone)
{
    SGQuadNode quad(nullptr);
    SGTextureLayer layer;
    layer.coordinates = sharedCoordinates({{0.0, 0.0, 0.0}});
    quad.textureLayers.push_back(layer);
    ConverterToFloats pass(true);
    show(pass, quad);
    EXPECT_FALSE(layer.coordinates->hasExtraData());
}
