#include "Viewer/Overlay/SkeletonOverlay.h"

#include <algorithm>

namespace sgview {

namespace {

/// All twelve edges of a double pyramid from the origin to (0, 0, 1), in one go: every corner has an even
/// number of them.
smart_ptr<SharedGeometry> makeBone()
{
    constexpr double radius = 0.06;
    constexpr double height = 0.15;
    Vector3 const foot;
    Vector3 const tip(0.0, 0.0, 1.0);
    Vector3 const a(radius, 0.0, height);
    Vector3 const b(0.0, radius, height);
    Vector3 const c(-radius, 0.0, height);
    Vector3 const d(0.0, -radius, height);
    return shareCurve({foot, a, tip, c, foot, b, tip, d, a, b, c, d}, true);
}

Pen penFor(OverlayStyle const& style)
{
    return {style.suited({0.65F, 0.20F, 0.0F, 1.0F}, {1.0F, 0.70F, 0.25F, 1.0F}), 1.5 * style.pixelsPerPoint};
}

} // namespace

std::vector<Index> jointsOf(Model const& model)
{
    std::vector<bool> isJoint(model.nodes.size(), model.skins.empty());
    for (ModelSkin const& skin : model.skins)
        for (ModelBone const& bone : skin.bones)
            if (bone.node != none)
                isJoint[static_cast<std::size_t>(bone.node)] = true;
    std::vector<Index> joints;
    for (std::size_t i = 0; i < isJoint.size(); ++i)
        if (isJoint[i])
            joints.push_back(static_cast<Index>(i));
    return joints;
}

SkeletonOverlay::SkeletonOverlay(ModelScene& scene, OverlayStyle const& style)
    : scene_(scene),
      knob_(0.015 * style.size()),
      top_(scene.cameraNode()),
      bones_(top_.node(), makeBone(), penFor(style)),
      knobs_(top_.node(), makeBone(), penFor(style))
{
    // The depth buffer's nearest hundredth.
    top_.node()->lower = -0.99;
    top_.node()->upper = -0.98;

    std::vector<ModelNode> const& nodes = scene.model().nodes;
    std::vector<Index> const joints = jointsOf(scene.model());
    std::vector<Index> nearest(nodes.size(), none); // a joint: the node itself or the nearest above
    std::vector<bool> isFollowed(nodes.size(), false);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        Index const parent = nodes[i].parent;
        Index const above = parent == none ? none : nearest[static_cast<std::size_t>(parent)];
        auto const node = static_cast<Index>(i);
        if (!std::ranges::binary_search(joints, node)) {
            nearest[i] = above;
            continue;
        }
        nearest[i] = node;
        if (above == none)
            continue;
        links_.emplace_back(above, node);
        isFollowed[static_cast<std::size_t>(above)] = true;
    }
    std::ranges::copy_if(joints, std::back_inserter(ends_),
                         [&](Index joint) { return !isFollowed[static_cast<std::size_t>(joint)]; });
    update();
}

void SkeletonOverlay::update()
{
    std::vector<Vector3> const places = scene_.instance().posedNodes();
    auto const place = [&places](Index node) { return places[static_cast<std::size_t>(node)]; };
    std::vector<Transform> bones;
    for (auto const& [from, to] : links_)
        bones.push_back(alongLine(place(from), place(to)));
    bones_.place(bones);
    std::vector<Transform> knobs;
    for (Index const end : ends_)
        knobs.emplace_back(Matrix3(), place(end), knob_);
    knobs_.place(knobs);
}

} // namespace sgview
