#include "OpenGLRenderer/Skinning.h"

#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "OpenGLRenderer/ViewMatrixData.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

#include <limits>

using namespace RendererTesting;

namespace {

Matrix3 rotationUnder(Matrix const& view)
{
    auto const surface = triangle();
    surface->setExtraData(ExtraDataKeys::viewMatrix, make_smart<ViewMatrixData>(view));
    return viewRotation(*surface);
}

Matrix withLinearPart(Matrix3 const& linear)
{
    return {linear, {7.0, 8.0, 9.0}};
}

} // namespace

TEST(Skinning, NeedsWeightsAndAPoseThatIsNotEmpty)
{
    auto const surface = triangle();
    EXPECT_FALSE(isSkinned(*surface));
    surface->setBoneTransforms(sharedPose({BoneTransform()}));
    EXPECT_FALSE(isSkinned(*surface));
    surface->setBoneWeights(sharedWeights({{}, {}, {}}));
    EXPECT_TRUE(isSkinned(*surface));
    EXPECT_EQ(poseOf(*surface).size(), 1U);
    surface->setBoneTransforms(sharedPose({}));
    EXPECT_FALSE(isSkinned(*surface));
    surface->setBoneTransforms(nullptr);
    EXPECT_FALSE(isSkinned(*surface));
}

TEST(ViewRotation, IsTheLinearPartOfTheViewMatrix)
{
    Matrix3 const turned = Matrix3::rotationMatrix({1.0, 2.0, 3.0}, 0.7);
    EXPECT_EQ(rotationUnder(withLinearPart(turned)), turned);
    EXPECT_EQ(rotationUnder(withLinearPart(turned * 2.5)), turned * 2.5);
}

TEST(ViewRotation, IsNegatedWhereTheViewMirrors)
{
    Matrix3 const mirror({1, 2, 3, 0, 1, 4, 0, 0, -1});
    EXPECT_EQ(rotationUnder(withLinearPart(mirror)), Matrix3({-1, -2, -3, 0, -1, -4, 0, 0, 1}));
    Matrix3 const turned = Matrix3::rotationMatrix({1.0, 2.0, 3.0}, 0.7);
    EXPECT_EQ(rotationUnder(withLinearPart(turned * -0.01)), turned * 0.01);
}

TEST(ViewRotation, IsLeftAsItIsWhereItsDeterminantIsZeroOrNoNumber)
{
    Matrix3 const flat({-1, 0, 0, 0, -1, 0, 0, 0, 0});
    EXPECT_EQ(rotationUnder(withLinearPart(flat)), flat);
    Matrix3 const broken({-1, 0, 0, 0, 1, 0, 0, 0, std::numeric_limits<double>::quiet_NaN()});
    EXPECT_EQ(rotationUnder(withLinearPart(broken))[0], -1.0);
}

TEST(ViewRotation, IsTheIdentityWithoutAViewMatrix)
{
    auto const surface = triangle();
    EXPECT_EQ(viewRotation(*surface), Matrix3());
    surface->setExtraData(ExtraDataKeys::viewMatrix, make_smart<NoVBOTag>());
    EXPECT_EQ(viewRotation(*surface), Matrix3());
}
