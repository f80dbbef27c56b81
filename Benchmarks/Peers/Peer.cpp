#include "Benchmarks/Peers/Peer.h"

#include "Viewer/Platform/HeadlessContext.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <optional>

namespace {

int drawsAFrame(PeerScene const& scene)
{
    return scene.kind == sgview::BenchSceneKind::deep ? scene.count / 10 + 1 : scene.count;
}

PeerScene sceneOf(BenchRun& run)
{
    auto const kind = sgview::benchSceneNamed(run.scene);
    if (!kind)
        throw std::runtime_error("no scene '" + run.scene + "'");
    if (run.count == 0)
        run.count = sgview::usualCount(*kind);
    return {*kind, run.count, run.moving};
}

} // namespace

int runPeer(int argc, char** argv, std::string const& program, bool bringsContext,
            std::function<std::unique_ptr<Peer>(PeerScene const&)> const& make)
{
    CLI::App app("Draws a scene of `sgview bench` with " + program + " and says how long its frames take.");
    BenchRun run;
    run.program = program;
    run.count = 0;
    app.add_option("--scene", run.scene, "as in `sgview bench`")->capture_default_str();
    app.add_option("--count", run.count, "surfaces or levels")->check(CLI::Range(1, 1'000'000));
    app.add_flag("--moving", run.moving, "set every transform anew for each frame");
    app.add_option("--frames", run.frames, "to time")->check(CLI::Range(1, 100'000))->capture_default_str();
    app.add_option("--picture", run.picture, "where to leave the last frame, a PNG file");
    CLI11_PARSE(app, argc, argv);
    try {
        PeerScene const scene = sceneOf(run);
        keepMemoryFor(run, drawsAFrame(scene));
        std::optional<sgview::HeadlessContext> context;
        if (!bringsContext)
            context.emplace(sgview::PictureSize{BenchRun::width, BenchRun::height});
        double const began = now();
        std::unique_ptr<Peer> const peer = make(scene);
        FrameTimes const times = timeFrames(
            run.frames, began, [&](int frame) { peer->prepare(frame); }, [&](int) { peer->draw(); });
        printResult(run, times);
        savePicture(run);
        // What libraries do while a process ends, with OpenGL half gone, is not measured.
        std::cout.flush();
        std::_Exit(EXIT_SUCCESS);
    } catch (std::exception const& error) {
        std::cerr << program << ": " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
