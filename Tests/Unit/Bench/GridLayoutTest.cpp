#include "Viewer/Bench/GridLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>
#include <utility>

namespace {

using sgview::GridLayout;

TEST(GridLayout, PlacesLieOneApartAboutTheOrigin)
{
    GridLayout const layout(9);
    EXPECT_EQ(layout.place(0), Vector3(-1.0, -1.0, 0.0));
    EXPECT_EQ(layout.place(1), Vector3(0.0, -1.0, 0.0));
    EXPECT_EQ(layout.place(3), Vector3(-1.0, 0.0, 0.0));
    EXPECT_EQ(layout.place(8), Vector3(1.0, 1.0, 0.0));
    EXPECT_EQ(GridLayout(1).place(0), Vector3());
    EXPECT_EQ(GridLayout(4).place(3), Vector3(0.5, 0.5, 0.0));
}

TEST(GridLayout, EveryoneHasAPlaceInView)
{
    double const slope = std::tan(std::numbers::pi / 8.0);
    for (int const count : {1, 2, 3, 5, 10, 64, 2000, 10'000}) {
        GridLayout const layout(count);
        std::set<std::pair<double, double>> places;
        double farthest = 0.0;
        for (int i = 0; i < count; ++i) {
            Vector3 const place = layout.place(i);
            places.emplace(place.x, place.y);
            farthest = std::max({farthest, std::abs(place.x), std::abs(place.y)});
        }
        EXPECT_EQ(places.size(), static_cast<std::size_t>(count));
        double const half = 0.5; // that a thing stands out to every side
        EXPECT_LE(farthest + half, (layout.viewingDistance() - half) * slope) << count;
        EXPECT_GE(farthest + half, 0.3 * layout.viewingDistance() * slope) << "fills the picture";
    }
}

} // namespace
