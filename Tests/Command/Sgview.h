#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

/// How a run of sgview ended.
struct Outcome {
    int status = -1; ///< exit status; -1 where a signal ended it
    int signal = 0;
    std::string output;
    std::string errors;
};

[[nodiscard]] std::vector<std::string> linesOf(std::string const& text);

/// Under what circumstances sgview runs.
struct Circumstances {
    std::map<std::string, std::optional<std::string>> environment; ///< on top of the test's own; none unsets
    std::optional<std::uintmax_t> largestFile;                     ///< bytes
    bool asAnybody = false;            ///< without root's right to read and write everything
    std::optional<std::string> output; ///< file that standard output goes to, instead of the outcome
    bool closedStreams = false;        ///< no standard input, output and error
};

/// A test that runs sgview as a person types it, in a folder of its own, as a user for whose card every
/// technique is switched off: what is drawn does not depend on how fast the machine is just now.
class SgviewTest : public testing::Test {
protected:
    SgviewTest();
    ~SgviewTest() override;

    [[nodiscard]] Outcome run(std::vector<std::string> const& arguments,
                              Circumstances const& circumstances = {}) const;

    /// The same in two steps. What goes to the standard streams is in the files "output" and "errors" of a
    /// folder.
    [[nodiscard]] pid_t start(std::vector<std::string> const& arguments, Circumstances const& circumstances,
                              std::filesystem::path const& streams) const;
    [[nodiscard]] static Outcome finish(pid_t process, std::filesystem::path const& streams);

    /// Runs what ought to go well: no word on standard error, exit status 0.
    [[nodiscard]] std::string runWell(std::vector<std::string> const& arguments,
                                      Circumstances const& circumstances = {}) const;

    /// Draws into `name`, which ought to go well; returns the file's bytes.
    [[nodiscard]] std::string render(std::string const& name, std::vector<std::string> arguments) const;

    /// Expects one line of sgview's on standard error, nothing on standard output, nothing left in the folder
    /// that was not there before.
    void expectFailure(std::vector<std::string> const& arguments, int status, std::string const& line,
                       Circumstances const& circumstances = {}) const;

    /// A user without preferences yet, whose folder for them is "user" in `folder`.
    [[nodiscard]] Circumstances asNewUser() const;

    /// From now on the user's configuration is in the folder "config" of `folder`.
    void useOwnConfiguration();

    void writeFile(std::string const& name, std::string const& content) const;
    [[nodiscard]] std::string contentOf(std::string const& name) const;
    [[nodiscard]] std::vector<std::string> filesInFolder() const;

    std::filesystem::path folder;

private:
    std::filesystem::path configuration_; ///< of the user that sgview runs as
};

/// A model of the project's own.
[[nodiscard]] std::string testModel(std::string const& name);

/// The demonstration creature: skinned, textured, animations "swim" and "look".
[[nodiscard]] std::string creature();
