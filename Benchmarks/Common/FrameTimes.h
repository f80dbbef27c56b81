#pragma once

#include <functional>
#include <string>
#include <vector>

/// What a program that draws the scenes of `sgview bench` is asked for, and prints what became of it under.
struct BenchRun {
    std::string program; ///< "OpenSceneGraph 3.6.5"
    std::string scene = "many";
    int count = 1;
    bool moving = false;
    int frames = 60;
    std::string picture; ///< where to leave what was drawn, a PNG file; nowhere if empty

    static constexpr int width = 512;
    static constexpr int height = 512;
};

/// Milliseconds.
struct FrameTimes {
    std::vector<double> whole;       ///< of each frame
    std::vector<double> application; ///< of each, what preparing it took
    double start = 0.0;              ///< until the end of the first frame, from the moment that was given
};

/// Draws frames 0, 1, 2 and so on, and times them as `sgview bench` does: some to warm up, then those wanted,
/// each until OpenGL is done with it.
/// \param began    what `now` said before anything of the scene was made
/// \param prepare  changes the scene for a frame
/// \param draw     draws it
[[nodiscard]] FrameTimes timeFrames(int frames, double began, std::function<void(int frame)> const& prepare,
                                    std::function<void(int frame)> const& draw);

/// Keeps freed memory in the process, as all programs that are compared do. Where drawing is discarded the
/// driver loses some at every draw: what it will need is made ready then, so that no frame waits for the
/// system to find it.
void keepMemoryFor(BenchRun const& run, int drawsAFrame);

/// Milliseconds since some fixed moment.
[[nodiscard]] double now();

/// Prints a run as one line of JSON, with the keys of `sgview bench --json`.
void printResult(BenchRun const& run, FrameTimes const& times);

/// Leaves the picture that was drawn last, if it is wanted.
void savePicture(BenchRun const& run);
