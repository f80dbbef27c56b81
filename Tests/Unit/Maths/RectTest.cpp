#include "Maths/Rect.h"

#include <gtest/gtest.h>

TEST(Rect, IsEmptyByDefault)
{
    EXPECT_EQ(quarl::Rect<int>(), (quarl::Rect<int>{0, 0, 0, 0}));
}

TEST(Rect, HoldsCornerAndSizeInThatOrder)
{
    quarl::Rect<int> const rect{1, 2, 30, 40};
    EXPECT_EQ(rect.x, 1);
    EXPECT_EQ(rect.y, 2);
    EXPECT_EQ(rect.width, 30);
    EXPECT_EQ(rect.height, 40);
    EXPECT_NE(rect, (quarl::Rect<int>{1, 2, 30, 41}));
}
