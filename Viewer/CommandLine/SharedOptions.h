#pragma once

#include "Viewer/CommandLine/CommandLine.h"
#include "Viewer/CommandLine/OptionText.h"
#include "Viewer/CommandLine/UsageError.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <string>

namespace sgview {

// Options that several commands have, each described once. Names are written "-s,--size"; a default that is
// a value is the option's default_str(), one that takes words stands in the description.

constexpr std::uint32_t mostSeconds = 86400; ///< that a time limit may be

/// The long one of an option's names, or the only one.
[[nodiscard]] std::string longName(std::string const& names);

/// An option whose text `parse` turns into `target`.
template <typename Target, typename Parse>
CLI::Option* addOption(CLI::App& app, std::string const& names, Target& target, Parse parse,
                       std::string const& description)
{
    return app.add_option_function<std::string>(
        names,
        [name = longName(names), &target, parse](std::string const& text) {
            try {
                target = parse(text);
            } catch (UsageError const& error) {
                throw UsageError(name + ": " + error.what());
            }
        },
        description);
}

/// A decimal number.
CLI::Option* addNumber(CLI::App& app, std::string const& names, double& target, double least, double most,
                       std::string const& description);

[[nodiscard]] std::filesystem::path asPath(std::string const& text);

/// The path of a PNG file to write.
[[nodiscard]] std::filesystem::path asPngPath(std::string const& text);

CLI::Option* addFile(CLI::App& app, ModelRequest& model);
CLI::Option* addFiles(CLI::App& app, std::vector<std::filesystem::path>& files, std::string const& what);

CLI::Option* addAnimation(CLI::App& app, std::optional<std::string>& animation, std::string const& byDefault);
void addPoseOptions(CLI::App& app, ModelRequest& model);
void addMoments(CLI::App& app, Moments& moments);

/// Where an import looks, and how much memory it may use.
void addSearchOptions(CLI::App& app, ImportOptions& import);

/// The same, and how long it may take.
void addImportOptions(CLI::App& app, ImportOptions& import);

void addSize(CLI::App& app, PictureSize& size, std::string const& what, std::string const& unit = "pixels");
CLI::Option* addModule(CLI::App& app, std::optional<std::filesystem::path>& module);
void addTechnique(CLI::App& app, std::optional<Technique>& technique);
CLI::Option* addDevice(CLI::App& app, DeviceRequest& device);
void addDrawingOptions(CLI::App& app, PictureRequest& picture, std::string const& what = "the picture");

void addViewOptions(CLI::App& app, CameraView& view);
void addSceneOptions(CLI::App& app, SceneOptions& scene, bool mayBeTransparent = false);

/// What every command has; the last group of its options.
void addGeneralOptions(CLI::App& app, GeneralOptions& general);

/// None of the options that a command has so far goes together with one.
void excludeAll(CLI::App& app, CLI::Option* option);

} // namespace sgview
