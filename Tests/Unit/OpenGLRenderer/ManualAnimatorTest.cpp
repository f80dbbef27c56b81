#include "OpenGLRenderer/ManualAnimator.h"

#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

#include <random>

using namespace RendererTesting;

namespace {

BoneTransform translated(Vector3 const& offset)
{
    return {Matrix3(), offset};
}

class Animating : public testing::Test {
protected:
    void animate(std::vector<std::vector<BoneInfluence>> const& weights, std::vector<BoneTransform> pose)
    {
        surface->setBoneWeights(sharedWeights(weights));
        surface->setBoneTransforms(sharedPose(std::move(pose)));
        ManualAnimator pass;
        show(pass, *surface);
    }
    void undo()
    {
        ManualUnAnimator pass;
        show(pass, *surface);
    }
    [[nodiscard]] Vector3 vertex(std::size_t i) const { return surface->getGeometry()->get()->vertices[i]; }
    [[nodiscard]] UVector3 normal(std::size_t i) const { return surface->getNormals()->get()->normals[i]; }

    /// Nothing was swapped and nothing was hung on the node.
    void expectUntouched() const
    {
        EXPECT_EQ(surface->getGeometry(), geometry);
        EXPECT_EQ(surface->getNormals(), normals);
        EXPECT_FALSE(surface->hasExtraData());
    }

    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle();
    smart_ptr<SharedGeometry> geometry = surface->getGeometry();
    smart_ptr<SharedSurfaceGeometry> normals = surface->getNormals();
    smart_ptr<SharedSurfaceGeometry> facets = surface->getFacets();
};

using OneBone = std::vector<std::vector<BoneInfluence>>;
OneBone const oneBone{{{0, 1.0}}, {{0, 1.0}}, {{0, 1.0}}};

/// The text's own formula, with plain arrays.
struct Reference {
    double p[3] = {};
    double a[3] = {};
    double b[3] = {};

    static void accumulate(double (&sum)[3], double weight, BoneTransform const& bone, Vector3 const& v,
                           bool move)
    {
        double const t[3] = {bone.translation.x, bone.translation.y, bone.translation.z};
        for (int row = 0; row < 3; ++row) {
            double value = bone.rotation[3 * row] * v.x + bone.rotation[3 * row + 1] * v.y +
                           bone.rotation[3 * row + 2] * v.z;
            if (move)
                value += t[row];
            sum[row] += weight * value;
        }
    }
};

} // namespace

TEST_F(Animating, LeavesSurfacesWithoutASkinAlone)
{
    ManualAnimator pass;
    show(pass, *surface);
    expectUntouched();
    surface->setBoneWeights(sharedWeights(oneBone));
    show(pass, *surface);
    expectUntouched();
    surface->setBoneWeights(nullptr);
    surface->setBoneTransforms(sharedPose({BoneTransform()}));
    show(pass, *surface);
    expectUntouched();
}

TEST_F(Animating, LeavesSurfacesWithAnEmptyPoseAlone)
{
    animate(oneBone, {});
    expectUntouched();
}

TEST_F(Animating, MovesAVertexByItsBone)
{
    BoneTransform const bone{Matrix3::rotationMatrix({0.0, 0.0, 1.0}, 0.5), {1.0, 2.0, 3.0}};
    animate(oneBone, {bone});
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(length(vertex(i) - bone.transform(geometry->get()->vertices[i])), 0.0, 1e-15);
}

TEST_F(Animating, DoesNotRenormaliseWeights)
{
    animate({{{0, 0.5}}, {{0, 2.0}}, {{0, 0.25}, {1, 0.25}}}, {translated({1.0, 2.0, 4.0}), BoneTransform()});
    EXPECT_EQ(vertex(0), Vector3(0.5, 1.0, 2.0));
    EXPECT_EQ(vertex(1), Vector3(4.0, 4.0, 8.0));
    EXPECT_EQ(vertex(2), Vector3(0.25, 1.0, 1.0));
    EXPECT_NEAR(length(normal(0)), 1.0, 1e-15);
}

TEST_F(Animating, LeavesAVertexWithoutInfluencesExactlyAtRest)
{
    UVector3 const odd(0.3, 0.4, 0.5);
    surface->setNormals(sharedNormals({odd, odd, odd}));
    animate({{{0, 1.0}}, {}, {{0, 1.0}}},
            {BoneTransform{Matrix3::rotationMatrix({1.0, 0.0, 0.0}, 1.0), {5.0, 5.0, 5.0}}});
    EXPECT_EQ(vertex(1), Vector3(1.0, 0.0, 0.0));
    EXPECT_EQ(normal(1), odd);
    EXPECT_NE(normal(0), odd);
}

TEST_F(Animating, KeepsNormalsUnderATranslation)
{
    UVector3 const odd(0.3, -0.4, 0.5);
    surface->setNormals(sharedNormals({odd, odd, odd}));
    animate(oneBone, {translated({1.0, 2.0, 3.0})});
    EXPECT_NEAR(length(normal(0) - odd), 0.0, 1e-15);
}

TEST_F(Animating, SkinsNormalsThroughTwoTangents)
{
    // Stretched along x, a slanted surface turns the other way than its normal would if it were mapped
    // itself.
    UVector3 const slanted(1.0, 0.0, 1.0);
    surface->setNormals(sharedNormals({slanted, slanted, slanted}));
    animate(oneBone, {BoneTransform{Matrix3({2, 0, 0, 0, 1, 0, 0, 0, 1}), {}}});
    UVector3 const expected(0.5, 0.0, 1.0);
    EXPECT_NEAR(length(normal(0) - expected), 0.0, 1e-15);
}

TEST_F(Animating, AgreesWithThePlainFormula)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    auto const vector = [&] { return Vector3(number(random), number(random), number(random)); };
    std::vector<BoneTransform> pose(6);
    for (BoneTransform& bone : pose)
        bone = {Matrix3::rotationMatrix(vector(), 3.0 * number(random)), vector()};
    std::vector<Vector3> restVertices;
    std::vector<UVector3> restNormals;
    std::vector<std::vector<BoneInfluence>> lists(100);
    for (auto& list : lists) {
        restVertices.push_back(vector());
        restNormals.emplace_back(vector());
        for (unsigned int k = 0; k < 1 + random() % 5; ++k)
            list.push_back({static_cast<std::int32_t>(random() % pose.size()), number(random)});
    }
    surface->setGeometry(sharedGeometry(restVertices));
    surface->setNormals(sharedNormals(restNormals));
    animate(lists, pose);
    for (std::size_t i = 0; i < lists.size(); ++i) {
        Reference sums;
        Vector3 a;
        Vector3 b;
        getBasis(restNormals[i], a, b);
        for (BoneInfluence const& influence : lists[i]) {
            BoneTransform const& bone = pose[static_cast<std::size_t>(influence.bone)];
            Reference::accumulate(sums.p, influence.weight, bone, restVertices[i], true);
            Reference::accumulate(sums.a, influence.weight, bone, a, false);
            Reference::accumulate(sums.b, influence.weight, bone, b, false);
        }
        EXPECT_NEAR(length(vertex(i) - Vector3(sums.p[0], sums.p[1], sums.p[2])), 0.0, 1e-12);
        UVector3 const expected(cross({sums.a[0], sums.a[1], sums.a[2]}, {sums.b[0], sums.b[1], sums.b[2]}));
        EXPECT_NEAR(length(normal(i) - expected), 0.0, 1e-12);
    }
}

TEST_F(Animating, SwapsInTwoNewWrappersOfOneRecord)
{
    animate(oneBone, {translated({0.0, 0.0, 1.0})});
    EXPECT_NE(surface->getGeometry(), geometry);
    EXPECT_NE(surface->getNormals(), normals);
    EXPECT_EQ(surface->getFacets(), facets);
    EXPECT_EQ(surface->getGeometry()->get(), surface->getNormals()->get());
    EXPECT_THAT(surface->getNormals()->get()->facets, testing::IsEmpty());
    EXPECT_EQ(surface->getGeometry()->get()->referenceCount(), 2);
    EXPECT_FALSE(surface->getGeometry()->hasExtraData());
    EXPECT_EQ(geometry->get()->vertices[0], Vector3()) << "the rest pose is as it was";
    EXPECT_TRUE(getExtraData<NoVBOTag>(*surface, "GLNoVBO"));
    auto const rest = getExtraData<UnanimatedData>(*surface, "GLUnanimatedData");
    ASSERT_TRUE(rest);
    EXPECT_EQ(rest->geometry, geometry);
    EXPECT_EQ(rest->normals, normals);
}

TEST_F(Animating, RestoresTheRestPoseAndKeepsTheTag)
{
    animate(oneBone, {translated({0.0, 0.0, 1.0})});
    weak_ptr<SharedGeometry> const deformed(surface->getGeometry());
    weak_ptr<SharedSurfaceGeometry> const deformedNormals(surface->getNormals());
    undo();
    EXPECT_EQ(surface->getGeometry(), geometry);
    EXPECT_EQ(surface->getNormals(), normals);
    EXPECT_EQ(surface->getFacets(), facets);
    EXPECT_FALSE(surface->privateGetExtraData("GLUnanimatedData"));
    EXPECT_TRUE(getExtraData<NoVBOTag>(*surface, "GLNoVBO"));
    EXPECT_TRUE(deformed.expired());
    EXPECT_TRUE(deformedNormals.expired());
}

TEST_F(Animating, UndoesNothingOnASurfaceThatWasNotAnimated)
{
    undo();
    expectUntouched();
}

TEST_F(Animating, StartsFromTheRestPoseEveryFrame)
{
    animate(oneBone, {translated({0.0, 0.0, 1.0})});
    undo();
    animate(oneBone, {translated({0.0, 0.0, 2.0})});
    EXPECT_EQ(vertex(0), Vector3(0.0, 0.0, 2.0));
}

TEST_F(Animating, UsesSixInfluencesWhereThereAreSix)
{
    std::vector<BoneInfluence> six;
    std::vector<BoneTransform> pose;
    for (std::int32_t bone = 0; bone < 6; ++bone) {
        six.push_back({bone, 1.0});
        pose.push_back(translated({1.0, 0.0, 0.0}));
    }
    animate({six, {}, {}}, pose);
    EXPECT_EQ(vertex(0), Vector3(6.0, 0.0, 0.0));
}
