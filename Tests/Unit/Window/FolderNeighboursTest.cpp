#include "Viewer/Window/FolderNeighbours.h"

#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fstream>

namespace sgview {
namespace {

namespace fs = std::filesystem;

class FolderNeighboursTest : public testing::Test {
protected:
    FolderNeighboursTest()
    {
        for (char const* name :
             {"part10.obj", "part2.obj", "Part1.OBJ", "notes.txt", "skin.png", "zebra.glb"})
            write(name);
        fs::create_directory(folder.path() / "folder.glb");
    }

    void write(std::string const& name) const { std::ofstream(folder.path() / name) << name; }
    [[nodiscard]] fs::path at(std::string const& name) const { return folder.path() / name; }

    TemporaryFolder folder;
};

TEST_F(FolderNeighboursTest, LeadThroughTheFoldersModelsAsPeopleCount)
{
    FolderNeighbours neighbours({at("part2.obj")});
    EXPECT_EQ(neighbours.current(), at("part2.obj"));
    EXPECT_EQ(neighbours.place().index, 1U);
    EXPECT_EQ(neighbours.place().count, 4U);
    EXPECT_EQ(neighbours.move(1), at("part10.obj"));
    EXPECT_EQ(neighbours.move(1), at("zebra.glb"));
    EXPECT_EQ(neighbours.move(1), at("Part1.OBJ")); // around the end
    EXPECT_EQ(neighbours.move(-1), at("zebra.glb"));
    EXPECT_EQ(neighbours.move(-6), at("part2.obj"));
}

TEST_F(FolderNeighboursTest, SeeWhatComesAndGoes)
{
    FolderNeighbours neighbours({at("part2.obj")});
    write("part3.obj");
    EXPECT_EQ(neighbours.move(1), at("part3.obj"));
    fs::remove(at("part3.obj")); // the current one: its place is kept
    EXPECT_EQ(neighbours.move(1), at("part10.obj"));
}

TEST_F(FolderNeighboursTest, SeveralNamedFilesAreAllThereIs)
{
    FolderNeighbours neighbours({at("zebra.glb"), at("part2.obj"), at("notes.txt")});
    EXPECT_EQ(neighbours.current(), at("zebra.glb"));
    EXPECT_EQ(neighbours.move(1), at("part2.obj"));
    EXPECT_EQ(neighbours.move(1), at("notes.txt"));
    EXPECT_EQ(neighbours.move(1), at("zebra.glb"));
}

TEST_F(FolderNeighboursTest, AFileAloneIsItsOwnNeighbour)
{
    TemporaryFolder const other;
    fs::path const lonely = other.path() / "model-without-extension";
    std::ofstream(lonely) << "x";
    FolderNeighbours neighbours({lonely});
    EXPECT_EQ(neighbours.place().count, 1U);
    EXPECT_EQ(neighbours.move(1), lonely);
    EXPECT_EQ(neighbours.move(-5), lonely);
}

TEST_F(FolderNeighboursTest, AFolderThatIsGoneIsNoTrouble)
{
    FolderNeighbours neighbours({fs::path("/nowhere/at/all.obj")});
    EXPECT_EQ(neighbours.move(1), fs::path("/nowhere/at/all.obj"));
    FolderNeighbours nothing;
    EXPECT_TRUE(nothing.empty());
    EXPECT_EQ(nothing.place().count, 0U);
}

TEST_F(FolderNeighboursTest, AFolderStandsForItsModels)
{
    FolderNeighbours neighbours({folder.path()});
    EXPECT_EQ(neighbours.current(), at("Part1.OBJ"));
    EXPECT_EQ(neighbours.place().index, 0U);
    EXPECT_EQ(neighbours.place().count, 4U);
    write("part3.obj"); // looked at anew, as for a file alone
    EXPECT_EQ(neighbours.move(2), at("part3.obj"));
    EXPECT_EQ(FolderNeighbours({fs::path(folder.path().string() + "/")}).current(), at("Part1.OBJ"));

    TemporaryFolder const other;
    std::ofstream(other.path() / "one.stl") << "x";
    FolderNeighbours several({other.path(), at("zebra.glb"), at("folder.glb")});
    EXPECT_EQ(several.place().count, 2U);
    EXPECT_EQ(several.current(), other.path() / "one.stl");
    EXPECT_EQ(several.move(1), at("zebra.glb"));
}

TEST_F(FolderNeighboursTest, AFolderWithoutModelsIsNone)
{
    EXPECT_TRUE(FolderNeighbours({at("folder.glb")}).empty());
}

TEST(ComesBefore, CountsAsPeopleDo)
{
    EXPECT_TRUE(comesBefore("a2", "a10"));
    EXPECT_FALSE(comesBefore("a10", "a2"));
    EXPECT_TRUE(comesBefore("a2b10", "a2b11"));
    EXPECT_TRUE(comesBefore("A1", "b1"));
    EXPECT_TRUE(comesBefore("B9", "b10"));
    EXPECT_TRUE(comesBefore("a", "a1"));
    EXPECT_TRUE(comesBefore("x99999999999999999999998", "x99999999999999999999999"));
    EXPECT_FALSE(comesBefore("same", "same"));
    // Equal but for zeros or case: one order, not both.
    EXPECT_NE(comesBefore("a01", "a1"), comesBefore("a1", "a01"));
    EXPECT_NE(comesBefore("A", "a"), comesBefore("a", "A"));
}

} // namespace
} // namespace sgview
