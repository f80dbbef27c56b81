#include "Utilities/Color.h"

#include <gtest/gtest.h>

static_assert(Color{} == Color{0.0F, 0.0F, 0.0F, 1.0F}, "opaque black by default");

TEST(Color, HandsOutItsComponentsInARow)
{
    Color const color{0.1F, 0.2F, 0.3F, 0.4F};
    EXPECT_EQ(color.data()[0], color.r);
    EXPECT_EQ(color.data()[1], color.g);
    EXPECT_EQ(color.data()[2], color.b);
    EXPECT_EQ(color.data()[3], color.a);
}

TEST(Color, EqualityLooksAtEveryComponent)
{
    Color const color{0.1F, 0.2F, 0.3F, 0.4F};
    EXPECT_NE(color, (Color{0.0F, 0.2F, 0.3F, 0.4F}));
    EXPECT_NE(color, (Color{0.1F, 0.0F, 0.3F, 0.4F}));
    EXPECT_NE(color, (Color{0.1F, 0.2F, 0.0F, 0.4F}));
    EXPECT_NE(color, (Color{0.1F, 0.2F, 0.3F, 0.0F}));
}
