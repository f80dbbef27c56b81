#pragma once

#include "Viewer/CommandLine/CommandLine.h"

namespace CLI {
class App;
}

namespace sgview {

// What each command understands, told to CLI11 once. What is registered writes to the request and the general
// options, which must live as long as the App.

/// Without the general ones.
void addWindowOptions(CLI::App& app, WindowRequest& window);
void addRenderCommand(CLI::App& app, RenderRequest& render, GeneralOptions& general);
void addInfoCommand(CLI::App& app, InfoRequest& info, GeneralOptions& general);
void addDemoCommand(CLI::App& app, DemoRequest& demo, GeneralOptions& general);
void addCompareCommand(CLI::App& app, CompareRequest& compare, GeneralOptions& general);

/// \param model  of --model
void addDiagnoseCommand(CLI::App& app, DiagnoseRequest& diagnose, ModelRequest& model,
                        GeneralOptions& general);

void addBenchCommand(CLI::App& app, BenchRequest& bench, GeneralOptions& general);

} // namespace sgview
