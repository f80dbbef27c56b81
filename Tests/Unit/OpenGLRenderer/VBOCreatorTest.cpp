#include "OpenGLRenderer/VBOCreator.h"

#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "OpenGLRenderer/VBOData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGRootNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

std::string const positionsText = "{0, 0, 0, 1, 0, 0, 0, 1, 0}";
std::string const normalsText = "{0, 0, 1, 0, 0, 1, 0, 0, 1}";

/// How a buffer is made.
Calls making(int name, std::string const& target, std::string const& size, std::string const& content)
{
    std::string const text = std::to_string(name);
    return {"glGenBuffersARB(1, {" + text + "})", "glBindBufferARB(" + target + ", " + text + ")",
            "glBufferDataARB(" + target + ", " + size + ", " + content + ", GL_DYNAMIC_DRAW_ARB)"};
}

Calls makingArray(int name, std::string const& size, std::string const& content)
{
    return making(name, "GL_ARRAY_BUFFER_ARB", size, content);
}

Calls makingElements(int name, std::string const& size, std::string const& content)
{
    return making(name, "GL_ELEMENT_ARRAY_BUFFER_ARB", size, content);
}

Calls const makingTriangle = makingArray(1, "36", positionsText) + makingArray(2, "36", normalsText) +
                             makingElements(3, "12", "{0, 1, 2}");

class CreatingVBOs : public RendererTest {
protected:
    template <typename Node>
    Calls create(Node& node, bool useProgramSkinning = false)
    {
        ConverterToFloats converter(useProgramSkinning);
        show(converter, node);
        VBOCreator pass(useProgramSkinning);
        Calls calls = entering(pass, node);
        EXPECT_EQ(leaving(pass, node), Calls());
        return calls;
    }

    static void skin(SGSurfaceGeometryReferenceNode& node)
    {
        node.setBoneWeights(sharedWeights({{{0, 1.0}}, {{1, 0.75}, {2, 0.25}}, {}}));
        node.setBoneTransforms(sharedPose(std::vector<BoneTransform>(3)));
    }

    static void addLayer(SGGeometryNode& node, smart_ptr<SharedTextureCoords> coordinates)
    {
        SGTextureLayer layer;
        layer.coordinates = std::move(coordinates);
        node.textureLayers.push_back(layer);
    }

    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle();
};

} // namespace

TEST_F(CreatingVBOs, CopiesPositionsNormalsAndFacets)
{
    EXPECT_EQ(create(*surface), makingTriangle);
    EXPECT_EQ(bufferOf(*surface->getGeometry(), SGExtraDataKey("GLVBO")), 1U);
    EXPECT_EQ(bufferOf(*surface->getNormals(), SGExtraDataKey("GLVBO")), 2U);
    EXPECT_EQ(bufferOf(*surface->getFacets(), SGExtraDataKey("GLVBO")), 3U);
    EXPECT_FALSE(surface->hasExtraData());
}

TEST_F(CreatingVBOs, CopiesTheCoordinatesOfEveryLayerInOrder)
{
    useUnits(1);
    addLayer(*surface, sharedCoordinates({{0.0, 0.5, 9.0}, {1.0, 0.5, 9.0}, {0.0, 1.0, 9.0}}));
    addLayer(*surface, sharedCoordinates({{2.0, 0.5, 9.0}, {3.0, 0.5, 9.0}, {2.0, 1.0, 9.0}}));
    EXPECT_EQ(create(*surface), makingTriangle + makingArray(4, "24", "{0, 0.5, 1, 0.5, 0, 1}") +
                                    makingArray(5, "24", "{2, 0.5, 3, 0.5, 2, 1}"));
    EXPECT_EQ(bufferOf(*surface->textureLayers[1].coordinates, SGExtraDataKey("GLVBO")), 5U);
}

TEST_F(CreatingVBOs, CopiesBonesFirstWhereTheCardSkins)
{
    skin(*surface);
    EXPECT_EQ(create(*surface, true), makingArray(1, "48", "{1, 0, 0, 0, 0.75, 0.25, 0, 0, 0, 0, 0, 0}") +
                                          makingArray(2, "48", "{0, 0, 0, 0, 1, 2, 0, 0, 0, 0, 0, 0}") +
                                          makingArray(3, "36", positionsText) +
                                          makingArray(4, "36", normalsText) +
                                          makingElements(5, "12", "{0, 1, 2}"));
    EXPECT_EQ(bufferOf(*surface->getBoneWeights(), SGExtraDataKey("GLVBOBoneWeights")), 1U);
    EXPECT_EQ(bufferOf(*surface->getBoneWeights(), SGExtraDataKey("GLVBOBoneIndices")), 2U);
    EXPECT_EQ(bufferOf(*surface->getBoneWeights(), SGExtraDataKey("GLVBO")), 0U);
}

TEST_F(CreatingVBOs, OverwritesRecordsOfAnotherType)
{
    skin(*surface);
    for (SGObject* const shared : std::initializer_list<SGObject*>{
             surface->getGeometry().get(), surface->getNormals().get(), surface->getFacets().get()})
        shared->setExtraData("GLVBO", make_smart<NoVBOTag>());
    surface->getBoneWeights()->setExtraData("GLVBOBoneWeights", make_smart<NoVBOTag>());
    static_cast<void>(create(*surface, true));
    EXPECT_EQ(gl.buffers().generated, 5);
}

TEST_F(CreatingVBOs, CopiesNoBonesWhereTheProcessorSkins)
{
    skin(*surface);
    EXPECT_EQ(create(*surface, false), makingTriangle);
    EXPECT_FALSE(surface->getBoneWeights()->hasExtraData());
}

TEST_F(CreatingVBOs, LooksOnlyForTheWeightsToSeeWhetherBonesAreCopied)
{
    skin(*surface);
    surface->getBoneWeights()->setExtraData(ExtraDataKeys::vboBoneWeights, make_smart<VBOData>());
    EXPECT_EQ(create(*surface, true), makingTriangle);

    surface = triangle();
    skin(*surface);
    surface->getBoneWeights()->setExtraData(ExtraDataKeys::vboBoneIndices, make_smart<VBOData>());
    static_cast<void>(create(*surface, true));
    EXPECT_NE(bufferOf(*surface->getBoneWeights(), SGExtraDataKey("GLVBOBoneIndices")), 0U);
}

TEST_F(CreatingVBOs, CopiesACurve)
{
    SGCurveGeometryReferenceNode curve(nullptr);
    curve.setGeometry(sharedGeometry({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}}));
    EXPECT_EQ(create(curve), makingArray(1, "24", "{0, 0, 0, 1, 0, 0}"));
    EXPECT_EQ(bufferOf(*curve.getGeometry(), SGExtraDataKey("GLVBO")), 1U);
}

TEST_F(CreatingVBOs, CopiesEveryObjectOnce)
{
    static_cast<void>(create(*surface));
    EXPECT_EQ(create(*surface), Calls());
    auto const other = triangle();
    other->setGeometry(surface->getGeometry());
    other->setFacets(surface->getFacets());
    EXPECT_EQ(create(*other), makingArray(4, "36", normalsText));
}

TEST_F(CreatingVBOs, TreatsARecordAsABufferEvenBeforeItHasAName)
{
    surface->getGeometry()->setExtraData(ExtraDataKeys::vbo, make_smart<VBOData>());
    surface->getFacets()->setExtraData(ExtraDataKeys::vbo, make_smart<VBOData>());
    EXPECT_EQ(create(*surface), makingArray(1, "36", normalsText));
}

TEST_F(CreatingVBOs, KeepsTaggedNodesOffBuffersThoughTheyShareTheirData)
{
    auto const tagged = triangle();
    tagged->setGeometry(surface->getGeometry());
    tagged->setNormals(surface->getNormals());
    tagged->setFacets(surface->getFacets());
    tagged->setExtraData(ExtraDataKeys::noVBO, make_smart<NoVBOTag>());
    EXPECT_EQ(create(*tagged), Calls());
    EXPECT_EQ(create(*surface), makingTriangle);

    SGCurveGeometryReferenceNode curve(nullptr);
    curve.setGeometry(sharedGeometry({{0.0, 0.0, 0.0}}));
    curve.setExtraData(ExtraDataKeys::noVBO, make_smart<NoVBOTag>());
    EXPECT_EQ(create(curve), Calls());
}

TEST_F(CreatingVBOs, TakesNoOtherRecordForTheTag)
{
    surface->setExtraData(ExtraDataKeys::noVBO, make_smart<VBOData>());
    EXPECT_EQ(create(*surface), makingTriangle);
}

TEST_F(CreatingVBOs, PassesNoAddressOfAnEmptyArray)
{
    surface->setGeometry(sharedGeometry({}));
    surface->setNormals(sharedNormals({}));
    surface->setFacets(sharedFacets({}));
    EXPECT_EQ(create(*surface),
              makingArray(1, "0", "null") + makingArray(2, "0", "null") + makingElements(3, "0", "null"));
}

TEST_F(CreatingVBOs, UnbindsTheArrayBufferWhenItLeavesTheRoot)
{
    static_cast<void>(create(*surface));
    EXPECT_EQ(gl.boundBuffers[GL_ELEMENT_ARRAY_BUFFER_ARB], 3U);
    SGRootNode root;
    VBOCreator pass(false);
    EXPECT_EQ(entering(pass, root), Calls());
    EXPECT_EQ(leaving(pass, root), Calls{"glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0)"});
    EXPECT_EQ(gl.boundBuffers[GL_ELEMENT_ARRAY_BUFFER_ARB], 3U);
}

TEST_F(CreatingVBOs, FreesABufferWithTheObjectItHangsOn)
{
    addLayer(*surface, sharedCoordinates({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}}));
    skin(*surface);
    static_cast<void>(create(*surface, true));
    EXPECT_EQ(gl.buffers().live.size(), 6U);
    surface->setGeometry(sharedGeometry({}));
    EXPECT_EQ(gl.takeCalls(), Calls{"glDeleteBuffersARB(1, {3})"});
    surface = nullptr;
    EXPECT_EQ(gl.buffers().deleted, 6);
    EXPECT_TRUE(gl.buffers().live.empty());
}

TEST_F(CreatingVBOs, DeletesNothingDuringShutdown)
{
    static_cast<void>(create(*surface));
    SGRendererManager::shutdown = true;
    surface = nullptr;
    SGRendererManager::shutdown = false;
    EXPECT_EQ(gl.takeCalls(), Calls());
}

TEST_F(CreatingVBOs, DeletesNoBufferThatWasNeverMade)
{
    static_cast<void>(make_smart<VBOData>());
    EXPECT_EQ(gl.takeCalls(), Calls());
}

TEST_F(CreatingVBOs, FindsNoBufferInAnotherRecord)
{
    EXPECT_EQ(bufferOf(*surface, SGExtraDataKey("GLVBO")), 0U);
    surface->setExtraData("GLVBO", make_smart<NoVBOTag>());
    EXPECT_EQ(bufferOf(*surface, SGExtraDataKey("GLVBO")), 0U);
}
