#include "OpenGLRenderer/ManualTriangleFlipper.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

#include <limits>

using namespace RendererTesting;

namespace {

class Flipping : public testing::Test {
protected:
    static smart_ptr<SGTransformNode> scaled(smart_ptr<SGNode> const& parent, double scale)
    {
        auto const node = make_smart<SGTransformNode>(parent);
        node->transform = Transform(Matrix3(), Vector3(), scale);
        return node;
    }

    void walk(bool skipAnimated = false)
    {
        SGTraverser traverser(make_smart<ManualTriangleFlipper>(skipAnimated));
        show(traverser, *root);
    }
    void undo()
    {
        SGTraverser traverser(make_smart<ManualTriangleUnFlipper>());
        show(traverser, *root);
    }

    /// Whether a surface below transforms of these scales is flipped.
    bool flips(std::vector<double> const& scales)
    {
        smart_ptr<SGNode> parent = root;
        for (double const scale : scales)
            parent = scaled(parent, scale);
        auto const surface = triangle(parent);
        auto const facets = surface->getFacets();
        walk();
        bool const flipped = surface->getFacets() != facets;
        EXPECT_EQ(surface->getFacets()->get()->facets,
                  flipped ? (std::vector<std::int32_t>{1, 0, 2}) : (std::vector<std::int32_t>{0, 1, 2}));
        undo();
        EXPECT_EQ(surface->getFacets(), facets);
        EXPECT_FALSE(surface->hasExtraData());
        return flipped;
    }

    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
};

} // namespace

TEST_F(Flipping, FollowsTheParityOfMirroringScales)
{
    EXPECT_FALSE(flips({}));
    EXPECT_FALSE(flips({1.0}));
    EXPECT_TRUE(flips({-1.0}));
    EXPECT_FALSE(flips({-1.0, -1.0}));
    EXPECT_FALSE(flips({-1.0, 3.0, -0.5}));
    EXPECT_TRUE(flips({-1.0, -2.0, -3.0}));
    EXPECT_TRUE(flips({2.0, -1.0}));
}

TEST_F(Flipping, TakesZeroAndNaNForMirroring)
{
    EXPECT_TRUE(flips({0.0}));
    EXPECT_TRUE(flips({-0.0}));
    EXPECT_TRUE(flips({std::numeric_limits<double>::quiet_NaN()}));
    EXPECT_FALSE(flips({0.0, std::numeric_limits<double>::quiet_NaN()}));
    EXPECT_FALSE(flips({std::numeric_limits<double>::denorm_min()}));
}

TEST_F(Flipping, EndsWhereTheMirroringTransformEnds)
{
    auto const mirrored = triangle(scaled(root, -1.0));
    auto const after = triangle(root);
    auto const facets = after->getFacets();
    walk();
    EXPECT_EQ(after->getFacets(), facets);
    EXPECT_EQ(mirrored->getFacets()->get()->facets, (std::vector<std::int32_t>{1, 0, 2}));
}

TEST_F(Flipping, StartsEveryRootUnflipped)
{
    auto const transform = scaled(root, -1.0);
    auto const surface = triangle();
    auto const facets = surface->getFacets();
    ManualTriangleFlipper pass(false);
    root->acceptEnter(&pass);
    transform->acceptEnter(&pass); // and never left
    root->acceptEnter(&pass);
    surface->acceptEnter(&pass);
    EXPECT_EQ(surface->getFacets(), facets);
}

TEST_F(Flipping, SwapsTheFirstTwoOfEveryTriangleAndNothingElse)
{
    auto const surface = triangle(scaled(root, -1.0));
    surface->setFacets(sharedFacets({0, 1, 2, 3, 4, 5, 6, 7, 8}));
    auto const facets = surface->getFacets();
    auto const geometry = surface->getGeometry();
    auto const normals = surface->getNormals();
    walk();
    SurfaceGeometryData const& flipped = *surface->getFacets()->get();
    EXPECT_THAT(flipped.facets, testing::ElementsAre(1, 0, 2, 4, 3, 5, 7, 6, 8));
    EXPECT_THAT(flipped.vertices, testing::IsEmpty());
    EXPECT_THAT(flipped.normals, testing::IsEmpty());
    EXPECT_THAT(facets->get()->facets, testing::ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_EQ(surface->getGeometry(), geometry);
    EXPECT_EQ(surface->getNormals(), normals);
    auto const saved = getExtraData<UnflippedData>(*surface, "GLUnflippedTriangleData");
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->facets, facets);
}

TEST_F(Flipping, StaysInsideAListThatIsNotInThrees)
{
    auto const surface = triangle(scaled(root, -1.0));
    using List = std::vector<std::int32_t>;
    for (auto const& [facets, flipped] : {std::pair<List, List>{{}, {}},
                                          {{5}, {5}},
                                          {{5, 6}, {6, 5}},
                                          {{0, 1, 2, 3}, {1, 0, 2, 3}},
                                          {{0, 1, 2, 3, 4}, {1, 0, 2, 4, 3}}}) {
        surface->setFacets(sharedFacets(facets));
        walk();
        EXPECT_EQ(surface->getFacets()->get()->facets, flipped);
        undo();
    }
}

TEST_F(Flipping, SkipsAnimatedSurfacesWhereTheCardSkins)
{
    auto const mirror = scaled(root, -1.0);
    auto const surface = triangle(mirror);
    surface->setBoneTransforms(sharedPose({}));
    auto const plain = triangle(mirror);
    auto const facets = surface->getFacets();
    auto const plainFacets = plain->getFacets();
    walk(true);
    EXPECT_EQ(surface->getFacets(), facets);
    EXPECT_NE(plain->getFacets(), plainFacets);
    undo();
    walk(false);
    EXPECT_NE(surface->getFacets(), facets);
}

TEST_F(Flipping, SharesOneCopyAmongSurfacesWithTheSameFacets)
{
    auto const mirror = scaled(root, -1.0);
    auto const first = triangle(mirror);
    auto const second = triangle(mirror);
    auto const record = first->getFacets()->get();
    second->setFacets(make_smart<SharedSurfaceGeometry>(record)); // another wrapper of the same record
    auto const third = triangle(mirror);
    walk();
    EXPECT_EQ(first->getFacets(), second->getFacets());
    EXPECT_NE(first->getFacets(), third->getFacets()) << "equal content is not the same record";
}

TEST_F(Flipping, KeepsACopyAcrossFramesAndDropsItAfterSeventeenUnusedOnes)
{
    auto const mirror = scaled(root, -1.0);
    auto const surface = triangle(mirror);
    walk();
    weak_ptr<SharedSurfaceGeometry> const copy(surface->getFacets());
    undo();
    for (int frame = 0; frame < 40; ++frame) {
        walk();
        EXPECT_EQ(surface->getFacets(), copy.lock());
        undo();
    }
    mirror->transform = Transform();
    for (int frame = 0; frame < 16; ++frame)
        walk();
    EXPECT_FALSE(copy.expired());
    walk();
    EXPECT_TRUE(copy.expired());
}

TEST_F(Flipping, KeepsItsDatabaseOnTheRoot)
{
    root->setExtraData("GLTriangleFlipperDatabase", make_smart<NoVBOTag>());
    ManualTriangleFlipper pass(false);
    show(pass, *root);
    auto const database = getExtraData<TriangleFlipperDatabase>(*root, "GLTriangleFlipperDatabase");
    ASSERT_TRUE(database);
    EXPECT_EQ(database->referenceCount(), 2) << "the pass holds none between frames";
    walk();
    EXPECT_EQ(getExtraData<TriangleFlipperDatabase>(*root, "GLTriangleFlipperDatabase"), database);
}

TEST_F(Flipping, FlipsASurfaceReachedTwiceFromWhatItHoldsThen)
{
    auto const transform = scaled(root, -1.0);
    auto const surface = triangle();
    ManualTriangleFlipper pass(false);
    root->acceptEnter(&pass);
    transform->acceptEnter(&pass);
    surface->acceptEnter(&pass);
    surface->acceptEnter(&pass);
    EXPECT_THAT(surface->getFacets()->get()->facets, testing::ElementsAre(0, 1, 2));
}

TEST_F(Flipping, UndoesNothingOnASurfaceThatWasNotFlipped)
{
    auto const surface = triangle(root);
    auto const facets = surface->getFacets();
    undo();
    EXPECT_EQ(surface->getFacets(), facets);
}
