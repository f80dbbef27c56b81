#include "Tests/Command/Sgview.h"

#include "Tests/Command/ShellCommand.h"

#include <gmock/gmock.h>

#include <array>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <pty.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class RenderPipe : public SgviewTest {
protected:
    [[nodiscard]] std::vector<std::string> drawing(std::vector<std::string> const& options) const
    {
        std::vector<std::string> arguments{"render", creature(), "--size", "64x48", "--output", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return arguments;
    }
};

TEST_F(RenderPipe, PictureOnStandardOutput)
{
    writeFile("piped.png", runWell(drawing({})));
    static_cast<void>(render("a.png", {creature(), "--size", "64x48"}));
    EXPECT_EQ(contentOf("piped.png"), contentOf("a.png"));
}

TEST_F(RenderPipe, FramesOnStandardOutput)
{
    std::string frames;
    for (char const* frame : {"0", "1", "2"})
        frames += render("a.png", {creature(), "--size", "64x48", "--turntable", "3", "--frames", frame});
    EXPECT_EQ(runWell(drawing({"--turntable", "3"})), frames) << "PNG after PNG";
    EXPECT_EQ(runWell(drawing({"--turntable", "3", "--format", "rgba"})).size(), 3U * 64 * 48 * 4);
    EXPECT_THAT(runWell(drawing({"--turntable", "3", "--format", "y4m"})), testing::StartsWith("YUV4MPEG2 "));
    EXPECT_THAT(runWell(drawing({"--turntable", "3", "--format", "webp"})), testing::StartsWith("RIFF"));
}

TEST_F(RenderPipe, NamesOfWhatIsOpenAlready)
{
    std::string const picture = render("a.png", {creature(), "--size", "64x48"});
    std::string const film = runWell(drawing({"--turntable", "2", "--format", "rgba"}));
    std::string const draw = SGVIEW " render " + creature() + " --no-config --technique plain --size 64x48 ";
    auto const shell = [&](std::string const& line) {
        ShellOutcome const outcome = runInShell("cd " + folder.string() + " && " + line);
        EXPECT_EQ(outcome.status, 0) << line;
        EXPECT_EQ(outcome.output, "") << line;
        return contentOf("out");
    };
    for (std::string const name : {"/dev/stdout", "link"}) {
        std::filesystem::remove(folder / "link");
        std::filesystem::create_symlink("/dev/stdout", folder / "link");
        EXPECT_EQ(shell(draw + "-o " + name + " --format png | cat > out"), picture) << name;
        EXPECT_EQ(shell(draw + "-o " + name + " --turntable 2 --format rgba | cat > out"), film) << name;
        EXPECT_EQ(shell("{ echo a; " + draw + "-o " + name + " --format png; echo z; } > out"),
                  "a\n" + picture + "z\n")
            << name << ", a file that others write to as well";
        EXPECT_EQ(shell("echo a > out; " + draw + "-o " + name + " --format png >> out"), "a\n" + picture);
    }
    EXPECT_EQ(shell(draw + "-o /dev/fd/9 --format png 9> out"), picture);
    expectFailure({"render", creature(), "--output", "/dev/fd/99"}, 1, "/dev/fd/99: Bad file descriptor");
    static_cast<void>(runWell({"demo", "--size", "64x48", "--output", "demo.png"}));
    for (char const* name : {"-", "/dev/stdout"})
        EXPECT_EQ(runWell({"demo", "--size", "64x48", "--output", name}), contentOf("demo.png")) << name;
    EXPECT_FALSE(std::filesystem::exists(folder / "-"));
    expectFailure({"render", creature(), "--output", "/dev/stdout", "--json"}, 2,
                  "--json: standard output takes the pictures already");
}

TEST_F(RenderPipe, DevicesAndNamedPipes)
{
    std::string const picture = render("a.png", {creature(), "--size", "64x48"});
    EXPECT_EQ(render("/dev/null", {creature(), "--size", "64x48"}), "");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = contentOf("pipe"); });
    EXPECT_EQ(runWell({"render", creature(), "--technique", "plain", "--size", "64x48", "--format", "png",
                       "--output", "pipe"}),
              "");
    reader.join();
    EXPECT_EQ(read, picture);
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe")) << "and is no file now";
}

TEST_F(RenderPipe, MessagesStayOutOfThePicture)
{
    Outcome const outcome = run({"render", testModel("lines.gltf"), "--animation", "0", "--output", "-"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, testing::StartsWith("sgview: warning: no animation in "));
    EXPECT_EQ(outcome.output, render("a.png", {testModel("lines.gltf")}));
}

TEST_F(RenderPipe, ReaderThatGoesAway)
{
    std::string const pipe = (folder / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (bool const named : {false, true}) {
        std::thread reader([&pipe] {
            int const end = ::open(pipe.c_str(), O_RDONLY);
            char byte = 0;
            static_cast<void>(!::read(end, &byte, 1));
            ::close(end);
        });
        std::vector<std::string> arguments = drawing({"--turntable", "99999", "--format", "rgba"});
        Circumstances circumstances;
        if (named)
            arguments[5] = "pipe";
        else
            circumstances.output = pipe;
        Outcome const outcome = run(arguments, circumstances);
        EXPECT_EQ(outcome.signal, SIGPIPE);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(filesInFolder(), std::vector<std::string>{"pipe"});
        reader.join();
    }
}

TEST_F(RenderPipe, FullDevice)
{
    Circumstances full;
    full.output = "/dev/full";
    for (char const* format : {"png", "rgba", "y4m", "webp"})
        expectFailure(drawing({"--turntable", "3", "--format", format}), 1,
                      "standard output: No space left on device", full);
}

TEST_F(RenderPipe, FilmsThatCannotBeWritten)
{
    expectFailure({"render", creature(), "--turntable", "3", "--output", "no/a.webp"}, 1,
                  "no/a.webp: there is no such folder");
    Circumstances cramped;
    cramped.largestFile = 30000;
    for (char const* name : {"a.rgba", "a.y4m"})
        expectFailure({"render", creature(), "--turntable", "99999", "--size", "64x48", "--output", name}, 1,
                      std::string(name) + ": File too large", cramped);
}

TEST_F(RenderPipe, TerminalsGetNoPictures)
{
    int reader = -1;
    int terminal = -1;
    std::array<char, 256> name{};
    if (::openpty(&reader, &terminal, name.data(), nullptr, nullptr) != 0)
        GTEST_SKIP() << "the system gives no pseudo-terminal";
    Circumstances atTerminal;
    atTerminal.output = name.data();
    expectFailure(
        drawing({}), 2,
        "--output: standard output is a terminal, which shows no pictures; lead it into a file or a "
        "pipe",
        atTerminal);
    ::close(terminal);
    ::close(reader);
}

} // namespace
