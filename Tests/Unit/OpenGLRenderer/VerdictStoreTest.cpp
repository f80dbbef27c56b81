#include "OpenGLRenderer/DiagnosticPrefs.h"

#include "Tests/RecordingGL/RecordingGL.h"
#include "Tests/Unit/Utilities/CapturedLog.h"
#include "Tests/Unit/Utilities/ChildProcess.h"
#include "Tests/Unit/Utilities/TemporaryFolder.h"
#include "Utilities/PrefsFile.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <new>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Store = RogueSingleton<Prefs, PrefsFactory>;

constexpr int cannotTry = 77;

struct Verdict {
    Capabilities caps;
    char const* renderer; ///< OpenGL's name of the card
};

// No flag is the same, so that every mixture is neither.
constexpr Verdict oldVerdict{{true, false, true}, "Card"};
constexpr Verdict newVerdict{{false, true, false}, "Card"};
constexpr Verdict otherCards{{false, true, false}, "Other"};

char const* const keys[]{"GL_VBO", "GL_VertexProgram", "GL_VertexShader", "GL_CARD"};

/// The stored values of a verdict, one a line.
std::string valuesOf(Verdict const& verdict)
{
    std::string values;
    for (bool const flag : {verdict.caps.vbo, verdict.caps.vertexProgram, verdict.caps.vertexShader})
        values += flag ? "True\n" : "False\n";
    return values + "Vendor / " + verdict.renderer + " / 2.1\n";
}

std::string valuesIn(Prefs const& prefs)
{
    std::string values;
    for (char const* const key : keys)
        values += prefs.getString(key) + '\n';
    return values;
}

/// The verdict in a file of preferences, written as the graphics diagnostic writes it.
class VerdictStoreTest : public testing::Test {
protected:
    VerdictStoreTest()
    {
        PrefsFactory::setMaker([this] { return make_smart<PrefsFile>(folder.path()); });
        gl.setString(GL_VENDOR, "Vendor");
        gl.setString(GL_VERSION, "2.1");
        write(oldVerdict);
    }
    ~VerdictStoreTest() override
    {
        PrefsFactory::setMaker({});
        Store::reset();
    }

    /// As a fresh process does.
    void write(Verdict const& verdict)
    {
        Store::reset();
        gl.setString(GL_RENDERER, verdict.renderer);
        Diagnostic::writePrefs(verdict.caps);
    }

    /// What a fresh process reads.
    [[nodiscard]] static std::string stored()
    {
        Store::reset();
        return valuesIn(Store::getInstance());
    }

    /// Whether writing failed as it should: one line in the log, the verdict in memory.
    [[nodiscard]] bool failsToWrite(Verdict const& verdict)
    {
        CapturedLog const log;
        write(verdict);
        std::string const text = log.text();
        bool const oneLine =
            text.starts_with("error: Preferences not saved: ") && text.find('\n') + 1 == text.size();
        return oneLine && valuesIn(Store::getInstance()) == valuesOf(verdict);
    }

    /// Kills the writer of a verdict at each of its system calls.
    void expectWholeWheneverKilled(std::string const& before, Verdict const& after,
                                   std::function<void()> const& prepare)
    {
        int kept = 0;
        int replaced = 0;
        auto const check = [&] {
            std::string const left = stored();
            EXPECT_TRUE(left == before || left == valuesOf(after)) << left << "killed at " << kept + replaced;
            ++(left == before ? kept : replaced);
        };
        if (!ChildProcess::killAtEverySystemCall(
                prepare, [&] { write(after); }, check))
            GTEST_SKIP() << "this process may not trace its children";
        EXPECT_GT(kept, 10);
        EXPECT_GT(replaced, 2);
    }

    TemporaryFolder folder;
    fs::path file = folder / "preferences";
    RecordingGL gl;
};

class VerdictStoreFailingCallTest : public VerdictStoreTest,
                                    public testing::WithParamInterface<ChildProcess::SystemCall> {};

/// A store that fails on the way.
class ThrowingPrefs : public PrefsFile {
public:
    ThrowingPrefs(fs::path const& folder, int entries) : PrefsFile(folder), entries_(entries) {}

    void setString(std::string const& key, std::string const& value) override
    {
        if (entries_-- == 0)
            throw std::bad_alloc();
        PrefsFile::setString(key, value);
    }

private:
    int entries_;
};

} // namespace

TEST_F(VerdictStoreTest, HoldsTheNewVerdict)
{
    EXPECT_EQ(stored(), valuesOf(oldVerdict));
    write(otherCards);
    EXPECT_EQ(stored(), valuesOf(otherCards));
}

TEST_F(VerdictStoreTest, IsWholeWheneverItsWriterIsKilled)
{
    expectWholeWheneverKilled(valuesOf(oldVerdict), newVerdict, [this] { write(oldVerdict); });
}

TEST_F(VerdictStoreTest, IsWholeWheneverTheWriterOfAnotherCardsIsKilled)
{
    expectWholeWheneverKilled(valuesOf(oldVerdict), otherCards, [this] { write(oldVerdict); });
}

TEST_F(VerdictStoreTest, IsWholeWheneverTheFirstWriterIsKilled)
{
    fs::path const missing = folder / "missing";
    PrefsFactory::setMaker([missing] { return make_smart<PrefsFile>(missing); });
    expectWholeWheneverKilled("\n\n\n\n", newVerdict, [missing] { fs::remove_all(missing); });
}

TEST_F(VerdictStoreTest, BehindALinkIsWholeWheneverItsWriterIsKilled)
{
    fs::create_directory(folder / "elsewhere");
    fs::rename(file, folder / "elsewhere/settings");
    fs::create_symlink("elsewhere/settings", file);
    expectWholeWheneverKilled(valuesOf(oldVerdict), newVerdict, [this] { write(oldVerdict); });
    EXPECT_EQ(fs::read_symlink(file), "elsewhere/settings");
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder / "elsewhere/settings")));
}

TEST_F(VerdictStoreTest, IsTheOldOneOnAFullDisk)
{
    std::string const before = readFile(file);
    for (rlim_t space = 0; space < before.size(); space += 10) {
        SCOPED_TRACE(space);
        int const result = ChildProcess::run([&] {
            signal(SIGXFSZ, SIG_IGN);
            rlimit const limit{space, space};
            setrlimit(RLIMIT_FSIZE, &limit);
            return failsToWrite(newVerdict) ? 0 : 1;
        });
        EXPECT_EQ(result, 0);
        EXPECT_EQ(readFile(file), before);
    }
    EXPECT_EQ(stored(), valuesOf(oldVerdict));
    write(newVerdict);
    EXPECT_EQ(stored(), valuesOf(newVerdict));
}

TEST_F(VerdictStoreTest, IsTheOldOneInAFolderThatCannotBeWritten)
{
    if (geteuid() == 0) {
        for (fs::path const& path : {folder.path(), file, folder / "preferences.lock"})
            ASSERT_EQ(chown(path.c_str(), 65534, 65534), 0);
    }
    fs::permissions(folder.path(), fs::perms{0500});
    int const result = ChildProcess::run([&] {
        if (!ChildProcess::becomeOrdinaryUser())
            return cannotTry;
        return failsToWrite(newVerdict) ? 0 : 1;
    });
    fs::permissions(folder.path(), fs::perms{0700});
    if (result == cannotTry)
        GTEST_SKIP() << "root cannot become an ordinary user here";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(stored(), valuesOf(oldVerdict));
}

TEST_F(VerdictStoreTest, IsNeverAMixtureOfThoseOfProcessesThatWriteAtOnce)
{
    fs::path const enough = folder / "enough";
    std::vector<pid_t> children;
    for (Verdict const& verdict : {oldVerdict, otherCards})
        children.push_back(ChildProcess::start([&] {
            write(verdict);
            while (!fs::exists(enough))
                Diagnostic::writePrefs(verdict.caps);
            return 0;
        }));

    int changes = 0;
    int mixtures = 0;
    std::string last = valuesOf(oldVerdict);
    for (int reads = 0; reads < 100000 && changes < 30; ++reads) {
        std::string const found = stored();
        mixtures += found != valuesOf(oldVerdict) && found != valuesOf(otherCards) ? 1 : 0;
        changes += found != last ? 1 : 0;
        last = found;
    }
    writeFile(enough, "");
    for (pid_t const child : children)
        EXPECT_EQ(ChildProcess::wait(child), 0);
    EXPECT_EQ(mixtures, 0);
    EXPECT_GE(changes, 2);
}

TEST_F(VerdictStoreTest, IsTheOldOneWhereAnExceptionEndsTheWriting)
{
    for (int entries = 0; entries < 4; ++entries) {
        SCOPED_TRACE(entries);
        PrefsFactory::setMaker([&] { return make_smart<ThrowingPrefs>(folder.path(), entries); });
        EXPECT_THROW(write(newVerdict), std::bad_alloc);
        EXPECT_EQ(valuesIn(Store::getInstance()), valuesOf(oldVerdict)) << "in memory as well";
        EXPECT_EQ(stored(), valuesOf(oldVerdict));
    }
}

TEST_P(VerdictStoreFailingCallTest, IsTheOldOneWhereASystemCallFails)
{
    int const result = ChildProcess::run([&] {
        if (!ChildProcess::failSystemCall(GetParam().number, ENOSPC))
            return cannotTry;
        return failsToWrite(newVerdict) ? 0 : 1;
    });
    if (result == cannotTry)
        GTEST_SKIP() << "the kernel lets no process filter its system calls here";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(stored(), valuesOf(oldVerdict));
    EXPECT_FALSE(fs::exists(folder / "preferences.new"));
}

INSTANTIATE_TEST_SUITE_P(All, VerdictStoreFailingCallTest, testing::ValuesIn(ChildProcess::callsOfSaving),
                         [](auto const& test) { return test.param.name; });
