#pragma once

#include "Tests/Frame/Limb.h"
#include "Tests/Frame/SceneParts.h"

#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// A stage seen in perspective, from z = 4, with moving limbs on it.
class TechniqueStage : public Stage {
public:
    /// Of the pictures that are compared, pixels a side.
    static constexpr int side = 512;

    TechniqueStage();

    /// A limb that is bent one way now and another way once advance() is called.
    smart_ptr<SGSurfaceGeometryReferenceNode> addLimb(smart_ptr<SGNode> const& parent, int bones,
                                                      Material const& material, double size = 1.0);

    void advance();

private:
    std::vector<std::pair<smart_ptr<SharedBoneTransforms>, BoneTransformVector>> nextPoses_;
};

/// What every technique must draw alike.
struct TechniqueScene {
    std::string name;
    void (*fill)(TechniqueStage& stage) = nullptr;
    enum class Special {
        none,
        afterPlain,    ///< drawn by the plain technique first, which marks what it skins as changing
        beyondShaders, ///< with more lights than the vertex shader sums
    };
    Special special = Special::none;
};
std::ostream& operator<<(std::ostream& stream, TechniqueScene const& scene);

[[nodiscard]] std::vector<TechniqueScene> const& techniqueScenes();
