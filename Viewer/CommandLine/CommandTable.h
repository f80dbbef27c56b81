#pragma once

#include "Viewer/CommandLine/CommandLine.h"
#include "Viewer/CommandLine/Shell.h"

#include <CLI/CLI.hpp>

#include <map>
#include <optional>
#include <string>

namespace sgview {

/// Every command and every option, once: what reads the command line, and what help, configuration,
/// completion and manual are made from.
class CommandTable {
public:
    CommandTable();

    /// \throws UsageError, CLI::Success  the latter where help or the version is asked for
    void parse(int argc, char const* const* argv);

    /// What is asked for about sgview itself, to be printed; nothing where something is to be done.
    [[nodiscard]] std::optional<std::string> answer() const;

    [[nodiscard]] CommandLine commandLine() const;

    [[nodiscard]] CLI::App const& app() const { return app_; }

private:
    void addPrintOptions();
    void addHelpCommand();
    void complete();
    [[nodiscard]] std::string nameOfCommand() const;
    [[nodiscard]] bool asksForItself() const;

    std::map<std::string, GeneralOptions> general_; ///< by command; that of the window has no name
    RenderRequest render_;
    InfoRequest info_;
    DemoRequest demo_;
    CompareRequest compare_;
    DiagnoseRequest diagnose_;
    ModelRequest diagnosedModel_;
    BenchRequest bench_;
    WindowRequest window_;
    bool printsConfiguration_ = false;
    bool printsManual_ = false;
    std::optional<Shell> printsCompletion_;
    std::string helpFor_; ///< a command
    CLI::App app_;
};

} // namespace sgview
