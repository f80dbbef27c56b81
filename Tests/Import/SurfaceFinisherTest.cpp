#include "Viewer/Import/SurfaceFinisher.h"

#include <gtest/gtest.h>

#include <limits>

namespace sgview {

TEST(SurfaceFinisher, LeavesOutFacetsThatCannotBeDrawn)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    ModelSurface surface;
    surface.name = "patch";
    surface.positions = {{9, 9, 9}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {nan, 0, 0}, {0, 1e300, 0}};
    surface.facets = {1, 2, 3, 1, 2, 6, 1, 2, -1, 1, 2, 4, 1, 2, 5, 1, 1, 2, 3, 2};
    Warnings warnings;
    finishSurface(surface, Crease::sharp, warnings);

    EXPECT_EQ(surface.facets.size(), 3U);
    EXPECT_EQ(surface.positions, (std::vector<Vector3>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    EXPECT_EQ(surface.normals, (std::vector<Vector3>(3, {0, 0, 1})));
    EXPECT_EQ(warnings.take(), std::vector<std::string>{
                                   "surface 'patch': 5 facets left out, a vertex is missing or not finite"});
}

TEST(SurfaceFinisher, CountsAsPeopleDo)
{
    ModelSurface surface;
    surface.name = "patch";
    surface.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    surface.normals = {{0, 0, 0}, {0, 0, 1}, {0, 0, 1}};
    surface.facets = {0, 1, 2, 0, 1, 5};
    Warnings warnings;
    finishSurface(surface, Crease::sharp, warnings);
    EXPECT_EQ(warnings.take(), (std::vector<std::string>{
                                   "surface 'patch': 1 facet left out, a vertex is missing or not finite",
                                   "surface 'patch': 1 normal without direction replaced"}));
}

TEST(SurfaceFinisher, MakesCoordinatesFinite)
{
    ModelSurface surface;
    surface.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    surface.facets = {0, 1, 2};
    surface.coordinates = {{{std::numeric_limits<double>::infinity(), 0.5}, {1, 2}, {3, 4}}};
    Warnings warnings;
    finishSurface(surface, Crease::everywhere, warnings);
    EXPECT_EQ(surface.coordinates[0][0], (std::array<double, 2>{0.0, 0.5}));
}

} // namespace sgview
