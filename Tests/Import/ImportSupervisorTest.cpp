#include "Viewer/Import/ImportSupervisor.h"

#include "Tests/Import/TestFolder.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/ImportWorker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <stop_token>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace sgview {

namespace {

class ImportSupervisorTest : public ::testing::Test {
protected:
    ImportSupervisorTest()
    {
        options_.limits.seconds = memoryIsWatched ? 5 : 2;
        options_.limits.memory = std::uint64_t{512} << 20;
    }

    /// Every outcome leaves no child, no descriptor, and one line.
    void TearDown() override
    {
        EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
        EXPECT_EQ(errno, ECHILD);
        EXPECT_EQ(openDescriptors(), descriptorsBefore_);
    }

    static std::size_t openDescriptors()
    {
        std::filesystem::directory_iterator const all("/proc/self/fd");
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

    ImportFailure failure(std::string const& name)
    {
        try {
            (void)superviseImport(folder_.path() / name, options_);
        } catch (ImportError const& error) {
            message_ = error.what();
            EXPECT_TRUE(message_.starts_with((folder_.path() / name).string() + ": ")) << message_;
            EXPECT_EQ(message_.find('\n'), std::string::npos);
            message_.erase(0, (folder_.path() / name).string().size() + 2);
            return error.failure();
        }
        ADD_FAILURE() << name << " imported";
        return ImportFailure::broken;
    }

    std::size_t descriptorsBefore_ = openDescriptors();
    TestFolder folder_;
    ImportOptions options_;
    std::string message_;
};

} // namespace

TEST_F(ImportSupervisorTest, BringsAModelHome)
{
    Model const model =
        superviseImport(folder_.write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"), options_);
    EXPECT_EQ(model.surfaces.at(0).facets.size(), 3U);
}

TEST_F(ImportSupervisorTest, BringsAnErrorHome)
{
    EXPECT_EQ(failure("absent.obj"), ImportFailure::notFound);
    EXPECT_EQ(message_, "there is no such file");
    EXPECT_EQ(failure("fail.bad"), ImportFailure::broken);
    EXPECT_EQ(message_, "two lines");
}

TEST_F(ImportSupervisorTest, ReportsACrash)
{
    EXPECT_EQ(failure("crash.bad"), ImportFailure::crashed);
    if (!memoryIsWatched) { // the address sanitizer turns the signal into an exit
        EXPECT_EQ(message_, "the importer was ended by signal 11 (Segmentation fault)");
    }
    EXPECT_EQ(failure("leave.bad"), ImportFailure::crashed);
    EXPECT_EQ(message_, "the importer ended early with status 3");
}

TEST_F(ImportSupervisorTest, EndsWhatTakesTooLong)
{
    options_.limits.seconds = 1;
    for (char const* const name : {"hang.bad", "spin.bad", "close.bad"}) {
        auto const start = std::chrono::steady_clock::now();
        EXPECT_EQ(failure(name), ImportFailure::timedOut);
        EXPECT_EQ(message_, "the importer took longer than 1 s; --time-limit grants more");
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << name;
    }
}

TEST_F(ImportSupervisorTest, EndsWhatIsWantedNoMore)
{
    options_.limits.seconds = 30;
    std::stop_source source;
    auto const start = std::chrono::steady_clock::now();
    std::jthread const impatient([&source] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        source.request_stop();
    });
    try {
        (void)superviseImport(folder_.path() / "hang.bad", options_, {source.get_token()});
        FAIL() << "imported";
    } catch (ImportError const& error) {
        EXPECT_EQ(error.failure(), ImportFailure::cancelled);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(ImportSupervisorTest, CountsWhatHasCome)
{
    std::atomic<std::uint64_t> received = 0;
    (void)superviseImport(folder_.path() / "chatter.bad", options_, {{}, &received});
    EXPECT_GT(received, 100U);
}

TEST_F(ImportSupervisorTest, TellsWhichFilesAModelDependsOn)
{
    folder_.write("a.mtl", "newmtl m\nmap_Kd absent.png\n");
    std::string const mesh = "mtllib a.mtl\nusemtl m\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nf 1/1 2/1 3/1\n";
    std::optional<SourceFiles> sources;
    (void)superviseImport(folder_.write("a.obj", mesh), options_, {{}, nullptr, &sources});
    ASSERT_TRUE(sources);
    ASSERT_EQ(sources->size(), 2U);
    EXPECT_EQ(sources->at(0).file.filename(), "a.mtl");
    EXPECT_EQ(sources->at(0).stamp, stampOf(folder_.path() / "a.mtl"));
    EXPECT_EQ(sources->at(1).file.filename(), "absent.png");
    EXPECT_FALSE(sources->at(1).stamp);

    // And which it would need.
    folder_.write("a.gltf", R"({"asset":{"version":"2.0"},"buffers":[{"uri":"a.bin","byteLength":4}]})");
    EXPECT_THROW((void)superviseImport(folder_.path() / "a.gltf", options_, {{}, nullptr, &sources}),
                 ImportError);
    ASSERT_EQ(sources->size(), 1U);
    EXPECT_EQ(sources->at(0).file.filename(), "a.bin");
    sources.reset();
    EXPECT_THROW((void)superviseImport(folder_.path() / "crash.bad", options_, {{}, nullptr, &sources}),
                 ImportError);
    EXPECT_FALSE(sources);
}

TEST_F(ImportSupervisorTest, EndsWhatEatsMemory)
{
    options_.limits.seconds = 30;
    EXPECT_EQ(failure("eat.bad"), ImportFailure::outOfMemory);
    EXPECT_EQ(message_, "the importer needed more memory than 512 MiB; --memory-limit grants more");
}

TEST_F(ImportSupervisorTest, KnowsWhereverMemoryRunsOut)
{
    if (memoryIsWatched)
        GTEST_SKIP() << "the address sanitizer ends the importer in its own way";
    constexpr int side = 300;
    std::string grid;
    for (int i = 0; i < side * side; ++i)
        grid += "v " + std::to_string(i / side) + " " + std::to_string(i % side) + " 0\n";
    for (int i = 0; i + side + 1 < side * side; ++i)
        grid += "f " + std::to_string(i + 1) + " " + std::to_string(i + 2) + " " +
                std::to_string(i + side + 1) + "\n";
    std::filesystem::path const file = folder_.write("grid.obj", grid);
    options_.limits.seconds = 30;
    int imported = 0;
    int refused = 0;
    for (std::uint64_t mebibytes = 100; mebibytes < 250; mebibytes += 10) {
        options_.limits.memory = mebibytes << 20;
        try {
            (void)superviseImport(file, options_);
            ++imported;
        } catch (ImportError const& error) {
            ++refused;
            EXPECT_EQ(error.failure(), ImportFailure::outOfMemory) << mebibytes << ": " << error.what();
        }
    }
    EXPECT_GT(imported, 0);
    EXPECT_GT(refused, 3);
}

TEST(ImportLimits, LeaveMostOfALargeMachineAlone)
{
    constexpr std::uint64_t gibibyte = std::uint64_t{1} << 30;
    EXPECT_EQ(usualMemory(64 * gibibyte), 4 * gibibyte);
    EXPECT_EQ(usualMemory(8 * gibibyte), 2 * gibibyte);
    EXPECT_EQ(usualMemory(gibibyte / 2), gibibyte) << "or nothing could be read there";
    EXPECT_EQ(ImportLimits().memory, usualMemory(machineMemory()));
    EXPECT_GT(machineMemory(), gibibyte / 8);
}

TEST_F(ImportSupervisorTest, LetsNothingBeWritten)
{
    EXPECT_EQ(failure("write.bad"), ImportFailure::crashed);
    EXPECT_EQ(message_, "the importer tried to write a file");
    std::error_code failed;
    auto const size = std::filesystem::file_size(folder_.path() / "written", failed);
    EXPECT_TRUE(failed || size == 0);
}

TEST_F(ImportSupervisorTest, LetsNoProcessBeStarted)
{
    EXPECT_EQ(failure("fork.bad"), ImportFailure::broken);
    EXPECT_EQ(message_, "no further process");
}

TEST_F(ImportSupervisorTest, BelievesNothing)
{
    EXPECT_EQ(failure("lie.bad"), ImportFailure::broken);
    EXPECT_EQ(message_, "surface 0: a facet's vertex does not exist");
    EXPECT_EQ(failure("nonsense.bad"), ImportFailure::crashed);
    EXPECT_EQ(message_, "the importer sent nonsense");
}

TEST_F(ImportSupervisorTest, SilencesTheLibraries)
{
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    Model const model = superviseImport(folder_.path() / "chatter.bad", options_);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(model.format, "sample");
}

TEST_F(ImportSupervisorTest, WorksWhereTheHostIgnoresItsChildren)
{
    struct sigaction ignore {};
    struct sigaction before {};
    ignore.sa_handler = SIG_IGN;
    ::sigaction(SIGCHLD, &ignore, &before);
    EXPECT_EQ(superviseImport(folder_.path() / "chatter.bad", options_).format, "sample");
    EXPECT_EQ(failure("leave.bad"), ImportFailure::crashed);
    ::sigaction(SIGCHLD, &before, nullptr);
}

TEST_F(ImportSupervisorTest, IsNotDisturbedBySignals)
{
    struct sigaction nothing {};
    struct sigaction before {};
    nothing.sa_handler = [](int) {};
    ::sigaction(SIGALRM, &nothing, &before);
    ::ualarm(1000, 1000);
    options_.limits.seconds = 1;
    EXPECT_EQ(failure("hang.bad"), ImportFailure::timedOut);
    options_.limits.seconds = 10;
    EXPECT_EQ(superviseImport(folder_.path() / "chatter.bad", options_).format, "sample");
    ::ualarm(0, 0);
    ::sigaction(SIGALRM, &before, nullptr);
}

} // namespace sgview
