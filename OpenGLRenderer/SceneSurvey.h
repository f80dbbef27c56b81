#pragma once

#include "SceneGraph/SGNodeVisitor.h"

#include <cstdint>
#include <vector>

class SGObject;
struct SGTextureLayer;

/// Finds, in one walk before the passes of a frame, the nodes at which any of them has something to do. In a
/// scene that stands still that is none, and the walks of all those passes can be left out.
class SceneSurvey : public SGNodeVisitor {
public:
    /// What the passes of a strategy look for.
    struct Conditions {
        bool tint = false;        ///< texture layers that ask for a tinted copy
        bool flip = false;        ///< surfaces under a mirroring path
        bool flipPosed = false;   ///< those with bone transforms too
        bool skin = false;        ///< surfaces that bones move
        bool floats = false;      ///< shared data without float arrays
        bool boneFloats = false;  ///< bone weights too
        bool buffers = false;     ///< shared data without buffer objects
        bool boneBuffers = false; ///< bone weights too
        bool textures = false;    ///< images without textures
    };

    struct Finding {
        SGGeometryNode* node;
        bool mirrored; ///< the path to it mirrors
    };

    void take(SGRootNode& root, Conditions const& conditions);

    /// What was found, in the order of the walk.
    [[nodiscard]] std::vector<Finding> const& findings() const { return findings_; }

    /// Whether the nodes found are still there.
    [[nodiscard]] bool isOfTheSameTree() const;

    using SGNodeVisitor::enter;
    using SGNodeVisitor::leave;
    void enter(SGTransformNode* node) override;
    void leave(SGTransformNode* node) override;
    void enter(SGGeometryNode* node) override;
    void enter(SGCurveGeometryReferenceNode* node) override;
    void enter(SGSurfaceGeometryReferenceNode* node) override;
    [[nodiscard]] SGVisitorInterest interest() const override { return VisitorInterest::of(*this); }

private:
    [[nodiscard]] bool isToPrepare(SGGeometryNode const& node) const;
    [[nodiscard]] bool isToPrepare(SGTextureLayer const& layer, bool drawnFromArrays, bool buffered) const;
    [[nodiscard]] bool isToPrepare(SGCurveGeometryReferenceNode const& node) const;
    [[nodiscard]] bool isToPrepare(SGSurfaceGeometryReferenceNode const& node) const;
    [[nodiscard]] bool lacksArray(SGObject const& shared, bool buffered) const;

    Conditions conditions_;
    std::vector<Finding> findings_;
    std::uint64_t treeVersion_ = 0;
    bool mirrored_ = false;
};
