#pragma once

#include "Tests/Window/FakeUser.h"
#include "Tests/Window/Process.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A part of a window, pixels from its upper left corner.
struct Region {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// A test with a display of its own that nobody sees, a home folder of its own, and sgview's window on it.
class WindowTest : public testing::Test {
protected:
    static constexpr sgview::PictureSize windowSize{1000, 640};
    static constexpr int panelWidth = 340;

    /// Where the model is drawn and nothing lies over it.
    static constexpr Region scene{10, 60, windowSize.width - panelWidth - 20, 400};
    /// What the status and the playback bar leave free.
    static constexpr Region betweenBars{0, 52, windowSize.width - panelWidth, windowSize.height - 52 - 64};
    static constexpr Region panel{windowSize.width - panelWidth + 5, 0, panelWidth - 10, windowSize.height};
    static constexpr Region statusLine{12, 12, 400, 30};

    WindowTest();
    ~WindowTest() override;

    void SetUp() override;

    /// Leaves a picture of the window behind where the test has failed.
    void TearDown() override;

    /// A display of a size in pixels, and somebody in front of it.
    void startDisplay(sgview::PictureSize size);

    /// Where a program finds a display, on top of the test's own environment; none unsets.
    using Environment = std::map<std::string, std::optional<std::string>>;
    [[nodiscard]] virtual Environment displayEnvironment() const;

    /// Starts sgview and waits for its window, of `windowSize` unless the arguments say otherwise.
    void open(std::vector<std::string> arguments);

    /// Opens a model and waits until it stands there.
    void openModel(std::string const& file, std::vector<std::string> arguments = {});

    /// Waits until the window's title names a file and its picture keeps still.
    void awaitFile(std::string const& name) const;

    /// Presses Q and expects a good end without a word.
    void quitWell();

    /// Whether something comes true within a time that no sound program needs.
    [[nodiscard]] static bool eventually(std::function<bool()> const& condition);

    /// Whether all programs that have a part in the picture wait for something to happen. On a busy machine
    /// a picture that is the same for a while may only be late.
    [[nodiscard]] virtual bool isResting() const;

    /// What a part of the window shows, once it has shown the same for a while.
    [[nodiscard]] sgview::Picture still(Region const& region) const;
    [[nodiscard]] sgview::Picture look(Region const& region) const;

    /// Waits for a part to show something else, and then for it to keep still.
    sgview::Picture changed(Region const& region, sgview::Picture const& from) const;

    /// Waits until a part shows a picture again, but for single pixels.
    [[nodiscard]] bool returnsTo(Region const& region, sgview::Picture const& picture) const;

    /// What another command of sgview draws into a file.
    [[nodiscard]] sgview::Picture draw(std::vector<std::string> arguments, sgview::PictureSize size) const;

    /// Waits until the program uses next to no processor time.
    [[nodiscard]] bool fallsIdle() const;

    /// What the program has said on standard error.
    [[nodiscard]] std::string errors() const;

    [[nodiscard]] std::vector<std::filesystem::path> keptPictures() const;

    /// Has a picture kept, and reads it.
    [[nodiscard]] sgview::Picture keep(bool withPanel = false);

    std::filesystem::path folder;
    std::filesystem::path home;
    std::unique_ptr<Process> server;
    std::unique_ptr<FakeUser> user;
    std::unique_ptr<Process> program;
    std::string display;
};

/// Whether a program is found by its name.
[[nodiscard]] bool isInstalled(std::string const& program);

/// A part of a picture.
[[nodiscard]] sgview::Picture cut(sgview::Picture const& picture, Region const& region);

/// Part of the pixels that are not a colour, 0 to 1.
[[nodiscard]] double shareOtherThan(sgview::Picture const& picture, int r, int g, int b);

/// Part of the pixels that differ between two pictures of one size, by the measure of the diagnostic, 0 to 1.
[[nodiscard]] double difference(sgview::Picture const& a, sgview::Picture const& b);

/// Red, green and blue, 0 to 255.
using MeanColor = std::array<double, 3>;

/// Those of squares of so many pixels a side.
[[nodiscard]] std::vector<MeanColor> means(sgview::Picture const& picture, int side);

/// The largest difference of one component, of as many squares each.
[[nodiscard]] double farthest(std::vector<MeanColor> const& a, std::vector<MeanColor> const& b);
