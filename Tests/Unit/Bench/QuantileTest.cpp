#include "Viewer/Bench/Quantile.h"

#include <gtest/gtest.h>

namespace {

using sgview::quantile;

TEST(Quantile, IsTheNearestRank)
{
    std::vector<double> const values{7.0, 1.0, 9.0, 3.0, 5.0, 10.0, 2.0, 8.0, 4.0, 6.0};
    EXPECT_EQ(quantile(values, 0.0), 1.0);
    EXPECT_EQ(quantile(values, 0.05), 1.0);
    EXPECT_EQ(quantile(values, 0.1), 1.0);
    EXPECT_EQ(quantile(values, 0.11), 2.0);
    EXPECT_EQ(quantile(values, 0.5), 5.0);
    EXPECT_EQ(quantile(values, 0.95), 10.0);
    EXPECT_EQ(quantile(values, 1.0), 10.0);
}

TEST(Quantile, OfOneValueIsThatValue)
{
    for (double const share : {0.0, 0.05, 0.5, 1.0})
        EXPECT_EQ(quantile({42.0}, share), 42.0);
}

} // namespace
