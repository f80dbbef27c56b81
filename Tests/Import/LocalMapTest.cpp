#include "Viewer/Import/LocalMap.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace sgview {

TEST(LocalMap, TakesMatricesApartAndPutsThemTogether)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> number(-2.0, 2.0);
    for (int i = 0; i < 1000; ++i) {
        ModelNode original;
        original.translation = {number(random), number(random), number(random)};
        original.rotation = normalised({number(random), number(random), number(random), number(random)});
        original.scale = {number(random), number(random), number(random)};
        Matrix const matrix = localMap(original);
        ModelNode node;
        ASSERT_TRUE(setLocalMap(node, matrix, 1e-9));
        ASSERT_FALSE(node.hasMatrix) << i;
        for (int k = 0; k < 16; ++k)
            ASSERT_NEAR(localMap(node).data()[k], matrix.data()[k], 1e-9) << i;
    }
}

TEST(LocalMap, RotatesAsRotationMatrixDoes)
{
    ModelNode node;
    ASSERT_TRUE(setLocalMap(node, Matrix::rotationMatrix({0, 0, 1}, 0.5), 1e-12));
    EXPECT_NEAR(node.rotation.z, std::sin(0.25), 1e-15);
    EXPECT_NEAR(node.rotation.w, std::cos(0.25), 1e-15);
}

TEST(LocalMap, KeepsShearAsMatrix)
{
    Matrix shear;
    shear(0, 1) = 0.5;
    ModelNode node;
    ASSERT_TRUE(setLocalMap(node, shear, 1e-5));
    EXPECT_TRUE(node.hasMatrix);
    EXPECT_EQ(localMap(node), shear);
}

TEST(LocalMap, RefusesWhatIsNotFinite)
{
    Matrix broken;
    broken(2, 2) = std::numeric_limits<double>::quiet_NaN();
    ModelNode node;
    EXPECT_FALSE(setLocalMap(node, broken, 1e-5));
    EXPECT_EQ(localMap(node), Matrix());
}

TEST(LocalMap, OfNoSizeStaysExact)
{
    Matrix flat;
    flat(1, 1) = 0.0;
    ModelNode node;
    ASSERT_TRUE(setLocalMap(node, flat, 1e-9));
    EXPECT_EQ(localMap(node), flat);
}

} // namespace sgview
