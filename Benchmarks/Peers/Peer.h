#pragma once

#include "Benchmarks/Common/FrameTimes.h"
#include "Viewer/Bench/BenchSceneKind.h"

#include <functional>
#include <memory>

/// One of the scenes of `sgview bench`, made and drawn by other means than the renderer.
class Peer {
public:
    Peer() = default;
    Peer(Peer const&) = delete;
    Peer& operator=(Peer const&) = delete;
    virtual ~Peer() = default;

    /// Changes what changes from frame to frame.
    virtual void prepare(int frame) = 0;
    virtual void draw() = 0;
};

/// What a peer is asked to draw, at 512 by 512.
struct PeerScene {
    sgview::BenchSceneKind kind;
    int count;
    bool moving;

    /// Whether it is one shape many times over on a grid.
    [[nodiscard]] bool isGrid() const
    {
        return kind == sgview::BenchSceneKind::many || kind == sgview::BenchSceneKind::textured;
    }
    [[nodiscard]] bool isSkinned() const
    {
        return kind == sgview::BenchSceneKind::skinned || kind == sgview::BenchSceneKind::skinnedVaried;
    }
};

/// The program around a peer: reads the command line, draws the frames, prints what became of them.
/// \param program  what the result calls it
/// \param make     makes the scene, with an OpenGL context current or, if it brings one of its own, not
/// \param bringsContext  whether it does
/// \return the exit status
[[nodiscard]] int runPeer(int argc, char** argv, std::string const& program, bool bringsContext,
                          std::function<std::unique_ptr<Peer>(PeerScene const&)> const& make);
