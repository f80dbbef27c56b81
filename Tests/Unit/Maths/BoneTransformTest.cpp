#include "Maths/BoneTransform.h"

#include "Tests/Unit/Maths/MathsTesting.h"

static_assert(BoneTransform().transform(Vector3(1, 2, 3)) == Vector3(1, 2, 3));

TEST(BoneTransform, TransformRotatesThenTranslates)
{
    BoneTransform const bone{Matrix3::rotationMatrix({0, 0, 1}, MathsTesting::pi / 2), {10, 20, 30}};
    EXPECT_CLOSE(bone.transform({1, 0, 0}), Vector3(10, 21, 30), 1e-15 * 32);
}

TEST(BoneTransform, RotateLeavesTheTranslationOut)
{
    BoneTransform const bone{Matrix3::rotationMatrix({0, 0, 1}, MathsTesting::pi / 2), {10, 20, 30}};
    EXPECT_CLOSE(bone.rotate({1, 0, 0}), Vector3(0, 1, 0), 1e-15);
}

TEST(BoneTransform, EqualityLooksAtRotationAndTranslation)
{
    BoneTransform const bone{Matrix3::rotationMatrix({0, 0, 1}, 1.0), {1, 2, 3}};
    EXPECT_EQ(bone, bone);
    EXPECT_NE(bone, (BoneTransform{Matrix3(), {1, 2, 3}}));
    EXPECT_NE(bone, (BoneTransform{bone.rotation, {1, 2, 4}}));
}
