#include "Tests/Command/Sgview.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

namespace {

namespace fs = std::filesystem;

bool contains(std::string const& statement, std::string const& text)
{
    return statement.find(text) != std::string::npos;
}

bool uses(std::string const& statement, std::string const& option)
{
    return contains(statement, "\"" + option + "\"") || contains(statement, "\"" + option + "=");
}

struct Statement {
    std::string file; ///< name
    std::string text;

    /// Whether a command is run here: named, or what all of the file is about.
    [[nodiscard]] bool isAbout(std::string command) const
    {
        bool const isNamed = contains(text, "\"" + command + "\"");
        command.front() = static_cast<char>(std::toupper(command.front()));
        return isNamed || file.starts_with(command);
    }
};

/// Tells which options tests use, by the statements of their sources.
class OptionUse : public SgviewTest {
protected:
    /// The statements of a folder's tests, without lists of what a help ought to say.
    static std::vector<Statement> statementsIn(std::string const& folderOfTests)
    {
        std::vector<Statement> statements;
        for (fs::directory_entry const& entry :
             fs::directory_iterator(SG_SOURCE_FOLDER "/Tests/" + folderOfTests)) {
            std::string const name = entry.path().filename().string();
            if (!name.ends_with("Test.cpp"))
                continue;
            std::ifstream stream(entry.path());
            std::string const text{std::istreambuf_iterator<char>(stream), {}};
            for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
                end = text.find(";\n", start);
                Statement const statement{name, text.substr(start, end - start)};
                if (name != "HelpTest.cpp" || contains(statement.text, "runWell("))
                    statements.push_back(statement);
            }
        }
        return statements;
    }

    [[nodiscard]] std::vector<std::string> commands() const
    {
        std::string const help = runWell({"--help"});
        std::string const list = help.substr(0, help.find("\n  FILE..."));
        std::regex const entry("\n  ([a-z]+) ");
        std::vector<std::string> names;
        for (std::sregex_iterator i(list.begin(), list.end(), entry), end; i != end; ++i)
            names.push_back((*i)[1]);
        return names;
    }

    [[nodiscard]] std::set<std::string> optionsIn(std::vector<std::string> const& arguments) const
    {
        std::string const help = runWell(arguments);
        std::regex const entry("\n  (?:-[A-Za-z],|   ) (--[a-z-]+)");
        std::set<std::string> names;
        for (std::sregex_iterator i(help.begin(), help.end(), entry), end; i != end; ++i)
            names.insert((*i)[1]);
        return names;
    }
};

TEST_F(OptionUse, EveryOptionOfEveryCommandIsUsedByATest)
{
    std::vector<Statement> const statements = statementsIn("Command");
    std::vector<std::string> const names = commands();
    ASSERT_GE(names.size(), 5U);
    for (std::string const& command : names) {
        std::set<std::string> const options = optionsIn({command, "--help"});
        EXPECT_GE(options.size(), 1U) << command;
        for (std::string const& option : options)
            EXPECT_TRUE(std::ranges::any_of(statements,
                                            [&](Statement const& statement) {
                                                return statement.isAbout(command) &&
                                                       uses(statement.text, option);
                                            }))
                << "no test uses sgview " << command << " " << option;
    }
}

TEST_F(OptionUse, EveryOptionOfTheWindowIsUsedByATest)
{
    std::vector<Statement> statements = statementsIn("Window");
    for (Statement const& statement : statementsIn("Command"))
        if (contains(statement.text, "({\"--") || contains(statement.text, "{{\"--"))
            statements.push_back(statement);
    std::set<std::string> const options = optionsIn({"--help"});
    EXPECT_GE(options.size(), 20U);
    for (std::string const& option : options)
        EXPECT_TRUE(std::ranges::any_of(
            statements, [&](Statement const& statement) { return uses(statement.text, option); }))
            << "no test uses sgview " << option;
}

} // namespace
