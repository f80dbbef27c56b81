#include "Utilities/PrefsFile.h"

#include "Tests/Unit/Utilities/CapturedLog.h"
#include "Tests/Unit/Utilities/ChildProcess.h"
#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <vector>

namespace {

namespace fs = std::filesystem;

ino_t inodeOf(fs::path const& file)
{
    struct stat status {};
    EXPECT_EQ(stat(file.c_str(), &status), 0) << file;
    return status.st_ino;
}

class PrefsFileTest : public testing::Test {
protected:
    TemporaryFolder parent;
    fs::path folder = parent / "configuration/OpenGLRenderer";
    fs::path file = folder / "preferences";
};

} // namespace

TEST_F(PrefsFileTest, GivesBackWhatAnotherHasSet)
{
    PrefsFile first(folder);
    EXPECT_EQ(first.getString("GL_CARD"), "");
    first.setString("GL_CARD", "A / B / 1.5\nsecond line ");
    EXPECT_EQ(first.getString("GL_CARD"), "A / B / 1.5\nsecond line ");
    EXPECT_EQ(PrefsFile(folder).getString("GL_CARD"), "A / B / 1.5\nsecond line ");
}

TEST_F(PrefsFileTest, KeepsEntriesThatOthersHaveWritten)
{
    PrefsFile first(folder);
    PrefsFile second(folder);
    first.setString("a", "1");
    second.setString("b", "2");
    first.setString("c", "3");
    PrefsFile const third(folder);
    EXPECT_EQ(third.getString("a") + third.getString("b") + third.getString("c"), "123");
    EXPECT_EQ(first.getString("b"), "2") << "seen when the file was read again";
}

TEST_F(PrefsFileTest, IsReadableByPeople)
{
    PrefsFile(folder).setString("GL_VBO", "True");
    EXPECT_EQ(readFile(file), "# Preferences of OpenGLRenderer, written by the program.\nGL_VBO = True\n");
}

TEST_F(PrefsFileTest, IsForItsOwnerAlone)
{
    mode_t const before = umask(0);
    PrefsFile(folder).setString("a", "1");
    umask(before);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms{0700});
    EXPECT_EQ(fs::status(folder.parent_path()).permissions(), fs::perms{0700});
    for (auto const& entry : fs::directory_iterator(folder))
        EXPECT_EQ(entry.status().permissions(), fs::perms{0600}) << entry.path();
}

TEST_F(PrefsFileTest, MakesNothingUntilSomethingIsSet)
{
    EXPECT_EQ(PrefsFile(folder).getString("a"), "");
    PrefsFile(folder).setString("a", "");
    EXPECT_TRUE(fs::is_empty(parent.path()));
}

TEST_F(PrefsFileTest, WritesNothingThatIsThereAlready)
{
    PrefsFile prefs(folder);
    prefs.setString("a", "1");
    ino_t const before = inodeOf(file);
    prefs.setString("a", "1");
    prefs.setString("none", "");
    EXPECT_EQ(inodeOf(file), before);
    prefs.setString("a", "2");
    EXPECT_NE(inodeOf(file), before) << "a replaced file is another one";
}

TEST_F(PrefsFileTest, SetsAgainWhatAnotherHasChanged)
{
    PrefsFile first(folder);
    first.setString("a", "1");
    PrefsFile(folder).setString("a", "2");
    first.setString("a", "1");
    EXPECT_EQ(PrefsFile(folder).getString("a"), "1");
}

TEST_F(PrefsFileTest, LeavesAloneWhatAnotherHasChangedSince)
{
    PrefsFile first(folder);
    first.setString("a", "1");
    PrefsFile(folder).setString("a", "2");
    first.setString("b", "3");
    EXPECT_EQ(PrefsFile(folder).getString("a"), "2");
    EXPECT_EQ(first.getString("a"), "2");
}

TEST_F(PrefsFileTest, AnEmptyTextRemovesTheEntry)
{
    PrefsFile prefs(folder);
    prefs.setString("a", "1");
    prefs.setString("b", "2");
    prefs.setString("a", "");
    EXPECT_EQ(prefs.getString("a"), "");
    EXPECT_EQ(readFile(file), "# Preferences of OpenGLRenderer, written by the program.\nb = 2\n");
}

TEST_F(PrefsFileTest, ProcessesThatWriteAtOnceLoseNothing)
{
    constexpr int processes = 4;
    constexpr int keys = 25;
    auto const key = [](int process, int i) { return std::to_string(process) + '.' + std::to_string(i); };
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process)
        children.push_back(ChildProcess::start([&, process] {
            PrefsFile prefs(folder);
            for (int i = 0; i < keys; ++i)
                prefs.setString(key(process, i), "set");
            return 0;
        }));
    for (pid_t const child : children)
        EXPECT_EQ(ChildProcess::wait(child), 0);
    PrefsFile const prefs(folder);
    for (int process = 0; process < processes; ++process)
        for (int i = 0; i < keys; ++i)
            EXPECT_EQ(prefs.getString(key(process, i)), "set") << key(process, i);
}

TEST_F(PrefsFileTest, FollowsALinkAndLeavesItALink)
{
    fs::create_directories(folder);
    fs::create_directory(parent / "elsewhere");
    writeFile(parent / "elsewhere/settings", "a = 1\n");
    fs::create_symlink(parent / "elsewhere/settings", file);
    PrefsFile prefs(folder);
    EXPECT_EQ(prefs.getString("a"), "1");
    prefs.setString("b", "2");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(readFile(parent / "elsewhere/settings"),
              "# Preferences of OpenGLRenderer, written by the program.\na = 1\nb = 2\n");
}

TEST_F(PrefsFileTest, MakesTheFileThatALinkLeadsTo)
{
    fs::create_directories(folder);
    fs::create_symlink("../settings", file);
    PrefsFile(folder).setString("a", "1");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_TRUE(fs::is_regular_file(parent / "configuration/settings"));
    EXPECT_EQ(PrefsFile(folder).getString("a"), "1");
}

TEST_F(PrefsFileTest, FailedEntriesGoOutWithTheNextThatCanBeWritten)
{
    CapturedLog const log;
    PrefsFile prefs(folder);
    writeFile(parent / "configuration", "in the way");
    prefs.setString("a", "1");
    prefs.setString("b", "2");
    EXPECT_EQ(prefs.getString("a") + prefs.getString("b"), "12") << "they last in memory";
    EXPECT_EQ(log.text(), "error: Preferences not saved: " + file.string() + ": Not a directory\n");

    fs::remove(parent / "configuration");
    prefs.setString("c", "3");
    PrefsFile const other(folder);
    EXPECT_EQ(other.getString("a") + other.getString("b") + other.getString("c"), "123");

    fs::remove_all(parent / "configuration");
    writeFile(parent / "configuration", "in the way again");
    prefs.setString("d", "4");
    std::string const text = log.text();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2) << "a new failure, a new line";
}
