// Replays a recording: the frames of a scene by the same calls of OpenGL, without a scene graph.

#include "Benchmarks/Common/FrameTimes.h"
#include "Benchmarks/Replay/Replayer.h"
#include "Viewer/Platform/HeadlessContext.h"

#include <CLI/CLI.hpp>
#include <epoxy/gl.h>

#include <iostream>

namespace {

int replay(BenchRun& run, std::string const& file, bool checks)
{
    Recording recording = Recording::load(file);
    sgview::HeadlessContext const context(
        {static_cast<int>(recording.width), static_cast<int>(recording.height)});
    Replayer const replayer(std::move(recording));
    keepMemoryFor(run, run.count);

    std::size_t const setup = replayer.setupFrames();
    std::size_t const repeated = replayer.frameCount() - setup;
    double const start = now();
    double firstFrame = 0.0;
    for (std::size_t frame = 0; frame < setup; ++frame) {
        replayer.play(frame);
        glFinish();
        if (frame == 0)
            firstFrame = now() - start;
    }
    if (checks) {
        for (std::size_t frame = setup; frame < replayer.frameCount(); ++frame)
            replayer.play(frame);
        if (replayer.showsRecordedPicture())
            return EXIT_SUCCESS;
        throw RecordingError("the replay shows another picture than was recorded");
    }
    FrameTimes times = timeFrames(
        run.frames, start, [](int) {},
        [&](int frame) { replayer.play(setup + static_cast<std::size_t>(frame) % repeated); });
    times.start = firstFrame;
    printResult(run, times);
    savePicture(run);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Replays the calls of OpenGL that were recorded of a program's frames.");
    BenchRun run;
    run.program = "replay";
    std::string file;
    bool checks = false;
    app.add_option("FILE", file, "recording")->required();
    app.add_option("--scene", run.scene, "its name, for the result");
    app.add_option("--count", run.count, "draws a frame, about")->check(CLI::Range(1, 1'000'000));
    app.add_flag("--moving", run.moving, "whether it moves, for the result");
    app.add_option("--frames", run.frames, "to time")->check(CLI::Range(1, 100'000));
    app.add_option("--picture", run.picture, "where to leave the last frame, a PNG file");
    app.add_flag("--check", checks, "see whether the last frame is the recorded one, and time nothing");
    CLI11_PARSE(app, argc, argv);
    try {
        return replay(run, file, checks);
    } catch (std::exception const& error) {
        std::cerr << "replay: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
