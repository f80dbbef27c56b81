#include "OpenGLRenderer/SkinningPlan.h"

#include "OpenGLRenderer/SkinningKernels.h"
#include "Tests/Unit/OpenGLRenderer/PlainSkinning.h"

#include <gmock/gmock.h>

using namespace PlainSkinning;

namespace {

/// A rest pose with its weights, and what surrounds an array that is written to.
class Skinning : public testing::TestWithParam<SkinningKernel const*> {
protected:
    void add(Vector3 const& position, UVector3 const& normal, std::vector<BoneInfluence> const& list)
    {
        positions.push_back(position);
        normals.push_back(normal);
        weights.addVertex(list);
    }

    void expectPlain(std::vector<BoneTransform> const& pose, double tolerance = 1e-12) const
    {
        SkinningPlan const plan(positions, normals, weights);
        ASSERT_EQ(plan.vertexCount(), positions.size());
        auto const moved = output<double>(plan, pose);
        auto const movedFloats = output<float>(plan, pose);
        for (std::size_t i = 0; i < positions.size(); ++i) {
            Vertex const expected = skinned({positions[i], normals[i]}, weights.influences(i), pose);
            EXPECT_LE(length(vectorAt(moved, i) - expected.position), tolerance) << i;
            EXPECT_LE(length(vectorAt(moved, positions.size() + i) - expected.normal), tolerance) << i;
        }
        for (std::size_t i = 0; i < moved.size(); ++i)
            EXPECT_EQ(movedFloats[i], static_cast<float>(moved[i])) << i;
    }

    /// Positions, then normals; nothing beside them is written.
    template <typename T>
    std::vector<T> output(SkinningPlan const& plan, std::vector<BoneTransform> const& pose) const
    {
        std::size_t const size = 3 * plan.vertexCount();
        constexpr std::size_t margin = 64;
        constexpr T untouched = -12345;
        std::vector<T> room(2 * size + 3 * margin, untouched);
        T* const first = &room[margin];
        T* const second = first + size + margin;
        plan.skin(*GetParam(), pose, first, second);
        for (std::size_t i = 0; i < margin; ++i) {
            EXPECT_EQ(room[i], untouched);
            EXPECT_EQ(first[size + i], untouched);
            EXPECT_EQ(second[size + i], untouched);
        }
        std::vector<T> result(first, first + size);
        result.insert(result.end(), second, second + size);
        return result;
    }

    static Vector3 vectorAt(std::vector<double> const& numbers, std::size_t i)
    {
        return {numbers[3 * i], numbers[3 * i + 1], numbers[3 * i + 2]};
    }

    std::vector<Vector3> positions;
    std::vector<UVector3> normals;
    BoneWeightsData weights;
};

INSTANTIATE_TEST_SUITE_P(Every, Skinning, testing::ValuesIn(supportedSkinningKernels()),
                         [](auto const& kernel) {
                             std::string name;
                             for (char const* letter = kernel.param->name; *letter; ++letter)
                                 if (*letter != '-')
                                     name += *letter;
                             return name;
                         });

} // namespace

TEST_P(Skinning, AgreesWithThePlainFormulaForAnyNumberOfVertices)
{
    for (int count = 0; count <= 40; ++count) {
        SCOPED_TRACE(count);
        Random random(static_cast<unsigned int>(count));
        positions.clear();
        normals.clear();
        weights = BoneWeightsData();
        for (int i = 0; i < count; ++i) {
            double const weight = random.number(0.0, 1.0);
            add(random.vector(), UVector3(random.vector()), {{0, weight}, {1, 1.0 - weight}});
        }
        expectPlain(random.pose(2));
    }
}

TEST_P(Skinning, AgreesWithThePlainFormulaForAnyBones)
{
    Random random(7);
    for (int i = 0; i < 500; ++i)
        add(random.vector(), UVector3(random.vector()), random.influences(6, 5));
    expectPlain(random.pose(5));
}

TEST_P(Skinning, AgreesWithThePlainFormulaForManyVerticesOfTheSameBones)
{
    constexpr int most = 6;
    Random random(10);
    for (int i = 0; i < 70 * most; ++i) {
        std::vector<BoneInfluence> list;
        int const bones = 1 + i % most;
        double sum = 0.0;
        for (int bone = 0; bone < bones; ++bone) {
            list.push_back({(bones + bone) % most, random.number(0.0, 1.0)});
            sum += list.back().weight;
        }
        for (BoneInfluence& influence : list)
            influence.weight /= sum;
        add(random.vector(), UVector3(random.vector()), list);
    }
    expectPlain(random.pose(most));
}

TEST_P(Skinning, LetsABoneWithoutWeightSpoilNothing)
{
    Random random(11);
    for (int i = 0; i < 100; ++i)
        add(random.vector(), UVector3(random.vector()), {{0, 0.0}, {1, 1.0}});
    for (double const size : {1e-9, 1e3, 1e4, 1e9, 1e90})
        expectPlain({{random.bone().rotation * size, random.vector() * size}, random.bone()});
}

TEST_P(Skinning, UsesWeightsAsTheyAre)
{
    Random random(8);
    for (int i = 0; i < 100; ++i)
        add(random.vector(), UVector3(random.vector()), {{1, 0.5}, {0, 2.0}, {1, -0.25}});
    expectPlain(random.pose(2));
}

TEST_P(Skinning, LeavesVerticesWithoutBonesExactlyAtRest)
{
    Random random(9);
    for (int i = 0; i < 30; ++i)
        add(random.vector(), UVector3(random.vector()),
            i % 3 == 0 ? std::vector<BoneInfluence>() : std::vector<BoneInfluence>{{0, 1.0}});
    auto const moved = output<double>(SkinningPlan(positions, normals, weights), random.pose(1));
    for (std::size_t i = 0; i < positions.size(); i += 3) {
        EXPECT_EQ(vectorAt(moved, i), positions[i]);
        EXPECT_EQ(vectorAt(moved, positions.size() + i), normals[i]);
    }
}

TEST_P(Skinning, NormalisesWhateverTheLengthAsUVector3Does)
{
    Matrix3 const turn = Matrix3::rotationMatrix({1.0, 2.0, 3.0}, 0.5);
    std::vector<BoneTransform> pose;
    for (double const scale : {1e-100, 1e-75, 1.0, 1e75, 1e100, 0.0, -1.0})
        pose.push_back({turn * scale, {}});
    for (int i = 0; i < 50; ++i)
        add({}, UVector3(0.3, -0.4, 0.5), {{i % 7, 1.0}});
    add({}, UVector3(Vector3()), {{2, 1.0}}); // no direction
    expectPlain(pose);
}

TEST_P(Skinning, MakesNoNormalOfBonesThatAreNotFinite)
{
    double const infinite = std::numeric_limits<double>::infinity();
    for (int i = 0; i < 9; ++i)
        add({1.0, 1.0, 1.0}, UVector3(), {{i % 2, 1.0}});
    std::vector<BoneTransform> const pose{{Matrix3() * infinite, {}}, {}};
    auto const moved = output<double>(SkinningPlan(positions, normals, weights), pose);
    for (std::size_t i = 0; i < 9; ++i)
        EXPECT_EQ(vectorAt(moved, 9 + i), i % 2 == 0 ? Vector3() : Vector3(0.0, 0.0, 1.0));
}

TEST_P(Skinning, HasABoneThatThePoseLacksPullToTheOrigin)
{
    for (std::int32_t const bone : {0, 1, 2, -1, std::numeric_limits<std::int32_t>::min()})
        add({1.0, 2.0, 3.0}, UVector3(), {{bone, 1.0}});
    auto const moved = output<double>(SkinningPlan(positions, normals, weights), {BoneTransform()});
    EXPECT_EQ(vectorAt(moved, 0), Vector3(1.0, 2.0, 3.0));
    for (std::size_t i = 1; i < 5; ++i)
        EXPECT_EQ(vectorAt(moved, i), Vector3());
}

TEST_P(Skinning, HasABoneThatThePoseLacksPullManyVerticesToTheOrigin)
{
    for (int i = 0; i < 100; ++i)
        add({1.0, 2.0, 3.0}, UVector3(), {{i % 2, 0.5}, {7, 0.5}});
    auto const moved = output<double>(SkinningPlan(positions, normals, weights), {BoneTransform()});
    for (std::size_t i = 0; i < 100; ++i)
        EXPECT_EQ(vectorAt(moved, i), i % 2 == 0 ? Vector3(0.5, 1.0, 1.5) : Vector3());
}

TEST_P(Skinning, TakesListsAndNormalsThatAreMissingForEmptyAndForTheZAxis)
{
    add({1.0, 0.0, 0.0}, UVector3(1.0, 0.0, 0.0), {{0, 1.0}});
    positions.emplace_back(2.0, 0.0, 0.0);
    std::vector<BoneTransform> const pose{{Matrix3(), {0.0, 5.0, 0.0}}};
    auto const moved = output<double>(SkinningPlan(positions, normals, weights), pose);
    EXPECT_EQ(vectorAt(moved, 0), Vector3(1.0, 5.0, 0.0));
    EXPECT_EQ(vectorAt(moved, 1), Vector3(2.0, 0.0, 0.0));
    EXPECT_EQ(vectorAt(moved, 3), Vector3(0.0, 0.0, 1.0));
}

TEST(SkinningKernels, AreThePortableOneAndWhatTheProcessorRuns)
{
    auto const kernels = supportedSkinningKernels();
    ASSERT_THAT(kernels, testing::Not(testing::IsEmpty()));
    EXPECT_EQ(kernels.front(), &portableSkinningKernel);
    EXPECT_EQ(kernels.back(), &bestSkinningKernel());
#if defined(__x86_64__)
    EXPECT_EQ(std::ranges::count(kernels, &avx2SkinningKernel),
              __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") ? 1 : 0);
    EXPECT_EQ(std::ranges::count(kernels, &avx512SkinningKernel),
              __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") ? 1 : 0);
#endif
}
