#include "Tests/Command/Sgview.h"

#include <gmock/gmock.h>

#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Arguments = std::vector<std::string>;

/// Standard output is a pipe that nobody reads any more, as in "sgview ... | head".
class LostReader : public SgviewTest {
protected:
    LostReader() { ::mkfifo(pipe.c_str(), 0600); }

    [[nodiscard]] Outcome runUnread(Arguments const& arguments, Circumstances circumstances = {}) const
    {
        circumstances.output = pipe;
        std::thread reader([this] { ::close(::open(pipe.c_str(), O_RDONLY)); });
        Outcome outcome = run(arguments, circumstances);
        reader.join();
        return outcome;
    }

    std::string pipe = (folder / "pipe").string();
};

TEST_F(LostReader, EndsEveryCommandWithoutAWord)
{
    Circumstances newUser = asNewUser();
    for (Arguments const& arguments :
         {Arguments{"--help"},
          {"--version"},
          {"--list-keys"},
          {"--print-man"},
          {"--print-config"},
          {"--print-completion", "bash"},
          {"help", "render"},
          {"info", creature()},
          {"info", creature(), testModel("rigid.gltf"), "--json"},
          {"info", "--gpu"},
          {"render", "--device", "list"},
          {"render", creature(), "--size", "8x8", "--output", "/dev/null", "--format", "png", "--json"},
          {"render", creature(), "--size", "8x8", "--output", "-"},
          {"render", creature(), "--size", "8x8", "--turntable", "3", "--output", "-", "--format", "y4m"},
          {"demo", "--size", "8x8", "--output", "-"},
          {"compare", "--demo", "--times", "1", "--size", "8x8"},
          {"bench", "--count", "1", "--frames", "1", "--size", "8x8"},
          {"diagnose", "--why"},
          {"diagnose", "--force", "--module", FAULTY_MODULE},
          {"diagnose", "--report", "-", "--module", FAULTY_MODULE}}) {
        Outcome const outcome = runUnread(arguments, newUser);
        EXPECT_EQ(outcome.signal, SIGPIPE) << testing::PrintToString(arguments) << outcome.status;
        EXPECT_EQ(outcome.errors, "") << testing::PrintToString(arguments);
    }
}

TEST_F(LostReader, IsAnErrorToWhoeverHasTheSignalIgnored)
{
    auto* const before = std::signal(SIGPIPE, SIG_IGN);
    Outcome const outcome = runUnread({"info", creature()});
    Outcome const picture = runUnread({"render", creature(), "--size", "8x8", "--output", "-"});
    std::signal(SIGPIPE, before);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "sgview: standard output: nobody reads it any more\n");
    EXPECT_EQ(picture.status, 1);
    EXPECT_EQ(picture.errors, "sgview: standard output: Broken pipe\n");
}

} // namespace
