#pragma once

#include "Viewer/Bench/BenchScene.h"
#include "Viewer/Bench/GridLayout.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Scene/ModelInstance.h"

#include <stdexcept>
#include <vector>

namespace sgview {

/// A crowd that has more vertices than can be held. what() is one line.
class CrowdTooLarge : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Instances of one model on a square grid, each fitted into its place and at its own time of the animation.
class CrowdScene : public BenchScene {
public:
    static constexpr int most = 10'000;                     ///< instances
    static constexpr std::size_t mostVertices = 20'000'000; ///< of all instances together, as drawn

    /// \param model      checked
    /// \param animation  index of an animation, or `none` for the rest pose
    /// \param count      instances, 1 to `most`
    /// \throws CrowdTooLarge
    CrowdScene(Model model, Index animation, int count);

    void prepare(int frame) override;

private:
    [[nodiscard]] double secondsAt(std::size_t instance, int frame) const;
    [[nodiscard]] Bounds boundsOf(ModelInstance& instance) const;
    void addInstance(std::shared_ptr<ModelResources const> const& resources);

    Index animation_;
    double length_ = 0.0; ///< of the animation, seconds
    std::vector<smart_ptr<SGTransformNode>> transforms_;
    std::vector<ModelInstance> instances_;
};

} // namespace sgview
