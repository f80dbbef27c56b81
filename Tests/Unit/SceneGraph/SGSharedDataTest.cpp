#include "SceneGraph/SGSharedData.h"

#include <gtest/gtest.h>

#include <type_traits>

static_assert(std::is_base_of_v<SGSharedObject, SharedGeometry>);
static_assert(!std::is_copy_constructible_v<SharedGeometry>, "a wrapper's identity is what counts");
static_assert(!std::is_convertible_v<smart_ptr<GeometryData const>, SharedGeometry>);

TEST(SGSharedData, HoldsItsValue)
{
    auto const data = make_smart<GeometryData>();
    SharedGeometry const shared{smart_ptr<GeometryData const>(data)};
    EXPECT_EQ(shared.get(), data);
    EXPECT_EQ(data->referenceCount(), 2);
}

TEST(SGSharedData, IsAnIdentityOfItsOwn)
{
    auto const data = make_smart<SurfaceGeometryData>();
    auto const positions = make_smart<SharedGeometry>(data);
    auto const normals = make_smart<SharedSurfaceGeometry>(data);
    normals->setExtraData("key", make_smart<SGExtraData>());
    EXPECT_FALSE(positions->hasExtraData());
}

TEST(SGSharedData, StartsEmpty)
{
    EXPECT_FALSE(SharedImage().get());
    EXPECT_TRUE(SharedBoneTransforms().get().transforms.empty());
}

TEST(SGSharedData, LetsAPoseBeChanged)
{
    SharedBoneTransforms pose{BoneTransformVector({BoneTransform(), BoneTransform()})};
    pose.edit().transforms[1].translation = {1.0, 2.0, 3.0};
    EXPECT_EQ(pose.get().transforms.size(), 2U);
    EXPECT_EQ(pose.get().transforms[1].translation, Vector3(1.0, 2.0, 3.0));
}

TEST(SGSharedData, CanBeWatched)
{
    auto shared = make_smart<SharedGeometry>();
    weak_ptr<SharedGeometry> const watch(shared);
    EXPECT_EQ(watch.lock(), shared);
    shared.reset();
    EXPECT_TRUE(watch.expired());
}
