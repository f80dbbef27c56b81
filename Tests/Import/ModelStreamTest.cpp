#include "Viewer/Import/ModelStream.h"

#include "Tests/Import/SampleModel.h"
#include "Viewer/Import/ImportError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

namespace sgview {

namespace {

ByteSink into(std::vector<std::uint8_t>& bytes)
{
    return [&bytes](std::span<std::uint8_t const> piece) {
        bytes.insert(bytes.end(), piece.begin(), piece.end());
    };
}

std::vector<std::uint8_t> written(Model const& model)
{
    std::vector<std::uint8_t> bytes;
    writeModel(model, into(bytes));
    return bytes;
}

} // namespace

TEST(ModelStream, RoundTripsEveryMember)
{
    Model const model = makeSampleModel();
    std::vector<std::uint8_t> const bytes = written(model);
    Model const read = readModel(bytes);
    // Whatever the stream lost would be missing from the second writing, too: so look at the ends as well.
    EXPECT_EQ(written(read), bytes);
    EXPECT_EQ(read.format, "sample");
    EXPECT_EQ(read.images[0].rows, model.images[0].rows);
    EXPECT_EQ(read.materials[0].shininess, 12.0F);
    EXPECT_TRUE(read.materials[0].textures[0].clamp);
    EXPECT_EQ(read.surfaces[0].droppedInfluences, 7);
    EXPECT_EQ(read.surfaces[0].mostInfluencesInFile, 5);
    EXPECT_EQ(read.surfaces[0].influences[1].weight, 0.75);
    EXPECT_TRUE(read.curves[0].closed);
    EXPECT_EQ(read.skins[0].bones[0].inverseBind, model.skins[0].bones[0].inverseBind);
    EXPECT_TRUE(read.nodes[2].hasMatrix);
    EXPECT_EQ(read.nodes[2].matrix, model.nodes[2].matrix);
    EXPECT_EQ(read.nodes[1].scale, Vector3(1, 2, 3));
    EXPECT_EQ(read.animations[0].channels[0].rotation.interpolation, Interpolation::cubic);
    EXPECT_EQ(read.animations[0].channels[0].scale.values[1], Vector3(2, 2, 2));
    EXPECT_EQ(read.splits[0].name, "pair");
    EXPECT_EQ(read.splits[0].parts, 2);
    EXPECT_EQ(read.warnings, model.warnings);
}

TEST(ModelStream, WritesLargeListsWhole)
{
    Model model = makeSampleModel();
    model.surfaces[0].positions.assign(100000, {1, 2, 3});
    EXPECT_EQ(readModel(written(model)).surfaces[0].positions.size(), 100000U);
}

TEST(ModelStream, RefusesEveryTruncation)
{
    std::vector<std::uint8_t> const bytes = written(makeSampleModel());
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        // An allocation of exactly that size, so that a read beyond it is seen.
        auto const piece = std::make_unique<std::uint8_t[]>(size);
        std::copy_n(bytes.begin(), size, piece.get());
        EXPECT_THROW((void)readModel({piece.get(), size}), ImportError) << size;
    }
}

TEST(ModelStream, RefusesBytesLeftOver)
{
    std::vector<std::uint8_t> bytes = written(makeSampleModel());
    bytes.push_back(0);
    EXPECT_THROW((void)readModel(bytes), ImportError);
}

TEST(ModelStream, SurvivesAnyByte)
{
    std::vector<std::uint8_t> const bytes = written(makeSampleModel());
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::vector<std::uint8_t> hostile = bytes;
        for (int i = 0; i < 3; ++i)
            hostile[random() % hostile.size()] = static_cast<std::uint8_t>(random());
        try {
            EXPECT_LE(readModel(hostile).surfaces.size(), bytes.size());
        } catch (ImportError const& error) {
            EXPECT_EQ(error.failure(), ImportFailure::broken);
        }
    }
}

TEST(ModelStream, RoundTripsFilesBeforeWhatComesNext)
{
    std::vector<std::uint8_t> bytes;
    writeSources({{"a/b.png", FileStamp{-5, 7}}, {"missing", std::nullopt}}, into(bytes));
    std::size_t const size = bytes.size();
    bytes.push_back(42);
    std::span<std::uint8_t const> rest(bytes);
    SourceFiles const read = readSources(rest);
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].file, "a/b.png");
    EXPECT_EQ(read[0].stamp, (FileStamp{-5, 7}));
    EXPECT_EQ(read[1].file, "missing");
    EXPECT_FALSE(read[1].stamp);
    ASSERT_EQ(rest.size(), 1U);
    EXPECT_EQ(rest.front(), 42);

    for (std::size_t end = 0; end < size; ++end) {
        std::span<std::uint8_t const> cutOff(bytes.data(), end);
        EXPECT_THROW((void)readSources(cutOff), ImportError) << end;
    }
    std::vector<std::uint8_t> boast(100000, 0);
    boast[1] = 0xFF;
    rest = boast;
    EXPECT_THROW((void)readSources(rest), ImportError);
}

TEST(ModelStream, TakesNoMemoryForAnEmptyPromise)
{
    std::vector<std::uint8_t> bytes(8, 0xFF);
    EXPECT_THROW((void)readModel(bytes), ImportError);
}

} // namespace sgview
