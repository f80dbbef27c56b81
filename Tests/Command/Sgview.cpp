#include "Tests/Command/Sgview.h"

#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

std::string readAll(fs::path const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

fs::path makeFolder(std::string const& purpose)
{
    std::string name = (fs::temp_directory_path() / ("sgview-" + purpose + "-XXXXXX")).string();
    return ::mkdtemp(name.data());
}

/// The folder of a user whose preferences hold a verdict that grants nothing.
class PlainUser {
public:
    PlainUser() : folder(makeFolder("user"))
    {
        sgview::HeadlessContext const context({8, 8});
        fs::create_directories(folder / "OpenGLRenderer");
        std::ofstream(folder / "OpenGLRenderer" / "preferences")
            << "GL_CARD = " << sgview::cardInUse()
            << "\nGL_VBO = False\nGL_VertexProgram = False\nGL_VertexShader = False\n";
    }
    PlainUser(PlainUser const&) = delete;
    PlainUser& operator=(PlainUser const&) = delete;
    ~PlainUser() { fs::remove_all(folder); }

    fs::path folder;
};

fs::path plainUser()
{
    static PlainUser const user;
    return user.folder;
}

void arrange(Circumstances const& circumstances)
{
    for (auto const& [name, value] : circumstances.environment) {
        if (value)
            ::setenv(name.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name.c_str());
    }
    if (circumstances.largestFile) {
        rlimit const limit{*circumstances.largestFile, *circumstances.largestFile};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    if (circumstances.asAnybody)
        for (int right : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH})
            ::prctl(PR_CAPBSET_DROP, right, 0, 0, 0); // who is not root has no such right anyway
}

/// Runs in the forked child.
[[noreturn]] void becomeSgview(std::vector<std::string> arguments, fs::path const& folder,
                               fs::path const& streams, Circumstances const& circumstances)
{
    for (auto const& [number, name] : {std::pair(1, "output"), std::pair(2, "errors")})
        ::dup2(::open((streams / name).c_str(), O_WRONLY | O_CREAT, 0600), number);
    ::dup2(::open("/dev/null", O_RDONLY), 0);
    if (circumstances.output)
        ::dup2(::open(circumstances.output->c_str(), O_WRONLY), 1);
    arrange(circumstances);
    for (int stream = 0; stream <= 2 && circumstances.closedStreams; ++stream)
        ::close(stream);
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    if (::chdir(folder.c_str()) == 0)
        ::execv(SGVIEW, pointers.data());
    ::_exit(127);
}

} // namespace

std::vector<std::string> linesOf(std::string const& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

SgviewTest::SgviewTest() : folder(makeFolder("test")), configuration_(plainUser()) {}

SgviewTest::~SgviewTest()
{
    fs::permissions(folder, fs::perms::owner_all);
    fs::remove_all(folder);
}

pid_t SgviewTest::start(std::vector<std::string> const& arguments, Circumstances const& circumstances,
                        fs::path const& streams) const
{
    std::vector<std::string> all{"sgview"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    Circumstances usual = circumstances;
    usual.environment.try_emplace("XDG_CONFIG_HOME", configuration_.string());
    pid_t const process = ::fork();
    if (process == 0)
        becomeSgview(all, folder, streams, usual);
    return process;
}

Outcome SgviewTest::finish(pid_t process, fs::path const& streams)
{
    int status = 0;
    ::waitpid(process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0,
            readAll(streams / "output"), readAll(streams / "errors")};
}

Outcome SgviewTest::run(std::vector<std::string> const& arguments, Circumstances const& circumstances) const
{
    fs::path const streams = makeFolder("streams");
    Outcome const outcome = finish(start(arguments, circumstances, streams), streams);
    fs::remove_all(streams);
    return outcome;
}

std::string SgviewTest::runWell(std::vector<std::string> const& arguments,
                                Circumstances const& circumstances) const
{
    Outcome const outcome = run(arguments, circumstances);
    EXPECT_EQ(outcome.status, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(outcome.signal, 0);
    EXPECT_EQ(outcome.errors, "");
    return outcome.output;
}

std::string SgviewTest::render(std::string const& name, std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), "render");
    arguments.insert(arguments.end(), {"--output", name});
    EXPECT_EQ(runWell(arguments), "");
    return contentOf(name);
}

void SgviewTest::expectFailure(std::vector<std::string> const& arguments, int status, std::string const& line,
                               Circumstances const& circumstances) const
{
    SCOPED_TRACE(testing::PrintToString(arguments));
    std::vector<std::string> const before = filesInFolder();
    Outcome const outcome = run(arguments, circumstances);
    EXPECT_EQ(outcome.status, status);
    EXPECT_EQ(outcome.signal, 0);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "sgview: " + line + "\n");
    EXPECT_EQ(filesInFolder(), before);
}

Circumstances SgviewTest::asNewUser() const
{
    Circumstances circumstances;
    circumstances.environment["XDG_CONFIG_HOME"] = (folder / "user").string();
    return circumstances;
}

void SgviewTest::useOwnConfiguration()
{
    fs::copy(configuration_, folder / "config", fs::copy_options::recursive);
    configuration_ = folder / "config";
}

void SgviewTest::writeFile(std::string const& name, std::string const& content) const
{
    std::ofstream(folder / name, std::ios::binary) << content;
}

std::string SgviewTest::contentOf(std::string const& name) const
{
    return readAll(folder / name);
}

std::vector<std::string> SgviewTest::filesInFolder() const
{
    std::vector<std::string> names;
    for (fs::directory_entry const& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

std::string testModel(std::string const& name)
{
    return SG_SOURCE_FOLDER "/Tests/Models/" + name;
}

std::string creature()
{
    return SG_SOURCE_FOLDER "/Assets/creature.glb";
}
