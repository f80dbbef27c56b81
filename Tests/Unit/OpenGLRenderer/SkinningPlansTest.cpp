#include "OpenGLRenderer/SkinningPlans.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

class CachingPlans : public testing::Test {
protected:
    CachingPlans()
    {
        surface->setBoneWeights(sharedWeights({{{0, 1.0}}, {{0, 1.0}}, {{0, 1.0}}}));
        surface->setBoneTransforms(sharedPose({BoneTransform{Matrix3(), {1.0, 0.0, 0.0}}}));
    }

    /// Where the surface's plan moves its first vertex to.
    Vector3 firstVertex() const
    {
        SkinningPlan const& plan = SkinningPlans::of(*surface);
        std::vector<double> positions(3 * plan.vertexCount());
        std::vector<double> normals(3 * plan.vertexCount());
        plan.skin(portableSkinningKernel, surface->getBoneTransforms()->get().transforms, positions.data(),
                  normals.data());
        return {positions[0], positions[1], positions[2]};
    }

    SkinningPlan const* plan() const { return &SkinningPlans::of(*surface); }

    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle();
};

} // namespace

TEST_F(CachingPlans, MakesOneForAllSurfacesOfTheSameData)
{
    auto const other = triangle();
    other->setGeometry(surface->getGeometry());
    other->setNormals(surface->getNormals());
    other->setBoneWeights(surface->getBoneWeights());
    SkinningPlan const* const first = plan();
    EXPECT_EQ(plan(), first);
    EXPECT_EQ(&SkinningPlans::of(*other), first);
    EXPECT_FALSE(surface->getGeometry()->hasExtraData());
}

TEST_F(CachingPlans, ServesAnyPoseWithOne)
{
    SkinningPlan const* const first = plan();
    EXPECT_EQ(firstVertex(), Vector3(1.0, 0.0, 0.0));
    surface->setBoneTransforms(sharedPose({BoneTransform{Matrix3(), {0.0, 2.0, 0.0}}}));
    EXPECT_EQ(firstVertex(), Vector3(0.0, 2.0, 0.0));
    surface->getBoneTransforms()->edit().transforms[0].translation = {0.0, 0.0, 3.0};
    EXPECT_EQ(firstVertex(), Vector3(0.0, 0.0, 3.0));
    EXPECT_EQ(plan(), first);
}

TEST_F(CachingPlans, MakesAnotherForOtherGeometryNormalsOrWeights)
{
    EXPECT_EQ(firstVertex(), Vector3(1.0, 0.0, 0.0));
    surface->setGeometry(sharedGeometry({{5.0, 0.0, 0.0}, {}, {}}));
    EXPECT_EQ(firstVertex(), Vector3(6.0, 0.0, 0.0));
    SkinningPlan const* const before = plan();
    auto const oldNormals = surface->getNormals();
    surface->setNormals(sharedNormals(std::vector<UVector3>(3)));
    EXPECT_NE(plan(), before);
    surface->setBoneWeights(sharedWeights({{{0, 2.0}}, {}, {}}));
    EXPECT_EQ(firstVertex(), Vector3(12.0, 0.0, 0.0));
}

TEST_F(CachingPlans, MakesAnotherForOtherDataInTheSameWrappers)
{
    EXPECT_EQ(firstVertex(), Vector3(1.0, 0.0, 0.0));
    surface->getGeometry()->edit() = sharedGeometry({{5.0, 0.0, 0.0}, {}, {}, {}})->get();
    EXPECT_EQ(firstVertex(), Vector3(6.0, 0.0, 0.0));
    EXPECT_EQ(plan()->vertexCount(), 4U);
    surface->getBoneWeights()->edit() = sharedWeights({{{0, 2.0}}, {}, {}})->get();
    EXPECT_EQ(firstVertex(), Vector3(12.0, 0.0, 0.0));
}

TEST_F(CachingPlans, IsNotTakenInByNewDataInTheOldsPlace)
{
    for (double x = 1.0; x < 50.0; ++x) {
        surface->setGeometry(nullptr); // the next may get the same address
        surface->setGeometry(sharedGeometry({{x, 0.0, 0.0}, {}, {}}));
        EXPECT_EQ(firstVertex(), Vector3(1.0 + x, 0.0, 0.0));
    }
    for (double x = 1.0; x < 50.0; ++x) {
        surface->getGeometry()->edit() = nullptr;
        surface->getGeometry()->edit() = sharedGeometry({{x, 0.0, 0.0}, {}, {}})->get();
        EXPECT_EQ(firstVertex(), Vector3(1.0 + x, 0.0, 0.0));
    }
    for (double weight = 1.0; weight < 50.0; ++weight) {
        surface->getBoneWeights()->edit() = nullptr;
        surface->getBoneWeights()->edit() = sharedWeights({{{0, weight}}, {}, {}})->get();
        EXPECT_EQ(firstVertex(), Vector3(50.0 * weight, 0.0, 0.0));
    }
}

TEST_F(CachingPlans, HoldsTheOldDataOfAWrapperNoLongerThanUntilTheNext)
{
    auto const old = surface->getGeometry()->get();
    static_cast<void>(plan());
    EXPECT_EQ(old->referenceCount(), 3);
    surface->getGeometry()->edit() = sharedGeometry({{5.0, 0.0, 0.0}, {}, {}})->get();
    static_cast<void>(plan());
    EXPECT_EQ(old->referenceCount(), 1);
}

TEST_F(CachingPlans, KeepsSeveralAtATime)
{
    auto const first = surface->getGeometry();
    auto const second = sharedGeometry({{5.0, 0.0, 0.0}, {}, {}});
    SkinningPlan const* const ofFirst = plan();
    surface->setGeometry(second);
    SkinningPlan const* const ofSecond = plan();
    surface->setGeometry(first);
    EXPECT_EQ(plan(), ofFirst);
    surface->setGeometry(second);
    EXPECT_EQ(plan(), ofSecond);
}

TEST_F(CachingPlans, StaysRightForMoreThanItKeeps)
{
    std::vector<smart_ptr<SharedGeometry>> geometries;
    for (int i = 0; i < 20; ++i)
        geometries.push_back(sharedGeometry({{1.0 * i, 0.0, 0.0}, {}, {}}));
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 20; ++i) {
            surface->setGeometry(geometries[static_cast<std::size_t>(i)]);
            EXPECT_EQ(firstVertex(), Vector3(1.0 + i, 0.0, 0.0));
        }
}

TEST_F(CachingPlans, GoesWithTheRestOfTheModulesRecords)
{
    static_cast<void>(plan());
    EXPECT_TRUE(getExtraData<SkinningPlans>(*surface->getBoneWeights(), ExtraDataKeys::skinningPlans));
    SGObject::removeExtraDataEverywhere(ExtraDataKeys::prefix);
    EXPECT_FALSE(surface->getBoneWeights()->hasExtraData());
    EXPECT_EQ(firstVertex(), Vector3(1.0, 0.0, 0.0));
}

TEST_F(CachingPlans, HoldsNeitherGeometryNorNormals)
{
    weak_ptr<SharedGeometry> const geometry(surface->getGeometry());
    weak_ptr<SharedSurfaceGeometry> const normals(surface->getNormals());
    static_cast<void>(plan());
    surface->setGeometry(nullptr);
    surface->setNormals(nullptr);
    EXPECT_TRUE(geometry.expired());
    EXPECT_TRUE(normals.expired());
}
