#pragma once

#include "Tests/Frame/SceneParts.h"

#include <random>
#include <vector>

/// A lit scene that a restless host edits at random: nodes come, go and move, surfaces get other data, share
/// it, lose what hangs on it. It keeps a host's duties all the while.
class EditedScene : public Stage {
public:
    explicit EditedScene(std::uint32_t seed);

    /// One change.
    void edit();

    /// The same scene made anew: of the same data, in nodes and wrappers of its own, on which nothing hangs.
    [[nodiscard]] Stage copy() const;

private:
    using Surface = SGSurfaceGeometryReferenceNode;

    [[nodiscard]] std::uint32_t upTo(std::size_t count);
    [[nodiscard]] double within(double low, double high);
    [[nodiscard]] bool chance() { return upTo(2) == 0; }
    [[nodiscard]] Color color();
    [[nodiscard]] Transform place();
    [[nodiscard]] smart_ptr<SurfaceGeometryData const> shape();
    [[nodiscard]] smart_ptr<SGNode> anyParent();
    [[nodiscard]] smart_ptr<SGNode> anyNode();
    [[nodiscard]] smart_ptr<Surface> anySurface();

    void add();
    void drop();
    void move();
    void reshape(Surface& surface);
    void share(Surface& surface);
    void skin(Surface& surface);
    void pose(Surface& surface);
    void paint(Surface& surface);
    void restyle(Surface& surface);
    void strip(Surface& surface);

    std::mt19937 random_;
    std::vector<smart_ptr<SharedImage>> images_;
    std::vector<smart_ptr<SGTransformNode>> transforms_; ///< in the scene, or kept for later
    std::vector<smart_ptr<Surface>> surfaces_;           ///< the same
};
