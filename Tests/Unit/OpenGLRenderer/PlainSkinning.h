#pragma once

#include "Maths/BoneTransform.h"
#include "Maths/UVector3.h"
#include "SceneGraph/BoneWeightsData.h"

#include <random>
#include <span>
#include <vector>

/// Skinning as it is defined: what faster ways are held against.
namespace PlainSkinning {

struct Vertex {
    Vector3 position;
    UVector3 normal;
};

/// The weighted sum of the bones' images, and the cross product of two tangents taken the same way.
inline Vertex skinned(Vertex const& rest, std::span<BoneInfluence const> influences,
                      std::span<BoneTransform const> pose)
{
    if (influences.empty())
        return rest;
    Vector3 a;
    Vector3 b;
    getBasis(rest.normal, a, b);
    Vector3 position;
    Vector3 sumA;
    Vector3 sumB;
    for (BoneInfluence const& influence : influences) {
        BoneTransform const& bone = pose[static_cast<std::size_t>(influence.bone)];
        position += influence.weight * bone.transform(rest.position);
        sumA += influence.weight * bone.rotate(a);
        sumB += influence.weight * bone.rotate(b);
    }
    return {position, UVector3(cross(sumA, sumB))};
}

/// Numbers for a test, the same in every run.
class Random {
public:
    explicit Random(unsigned int seed) : engine_(seed) {}

    double number(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    int integer(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
    Vector3 vector() { return {number(-1.0, 1.0), number(-1.0, 1.0), number(-1.0, 1.0)}; }

    /// Turns, stretches a little and moves.
    BoneTransform bone()
    {
        Matrix3 const stretch({number(0.5, 2.0), 0, 0, 0, number(0.5, 2.0), 0, 0, 0, number(0.5, 2.0)});
        return {Matrix3::rotationMatrix(vector(), number(-1.0, 1.0)) * stretch, vector()};
    }

    std::vector<BoneTransform> pose(int bones)
    {
        std::vector<BoneTransform> result;
        for (int i = 0; i < bones; ++i)
            result.push_back(bone());
        return result;
    }

    /// Of `most` bones at most; the weights sum to 1.
    std::vector<BoneInfluence> influences(int most, int bones)
    {
        std::vector<BoneInfluence> list(static_cast<std::size_t>(integer(0, most)));
        double sum = 0.0;
        for (BoneInfluence& influence : list) {
            influence = {integer(0, bones - 1), number(0.05, 1.0)};
            sum += influence.weight;
        }
        for (BoneInfluence& influence : list)
            influence.weight /= sum;
        return list;
    }

private:
    std::mt19937 engine_;
};

} // namespace PlainSkinning
