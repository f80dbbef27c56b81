#include "Benchmarks/Kernels/Kernels.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "OpenGLRenderer/SkinnedSurface.h"
#include "OpenGLRenderer/SkinningKernels.h"
#include "OpenGLRenderer/SkinningPlan.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "Viewer/Bench/SceneMotion.h"
#include "Viewer/Bench/SceneShapes.h"

#include <array>
#include <cmath>
#include <string>

// A sheet of 100 by 100 vertices that two bones bend, from double precision to the floats that OpenGL takes:
// positions and normals.

namespace {

constexpr int side = 100;
constexpr std::size_t vertexCount = std::size_t{side} * side;
constexpr double bend = 0.4;

enum class Weights { BY_COLUMN, VARIED };

std::vector<double> secondWeights(Weights weights)
{
    std::vector<double> result;
    for (int row = 0; row < side; ++row)
        for (int column = 0; column < side; ++column)
            result.push_back(weights == Weights::VARIED ? sgview::weightVaried(column, row, side)
                                                        : sgview::weightByColumn(column, side));
    return result;
}

std::vector<BoneTransform> pose()
{
    return {{sgview::turnAboutY(bend), Vector3()}, {sgview::turnAboutY(-bend), Vector3()}};
}

smart_ptr<SGSurfaceGeometryReferenceNode> makeSheet(Weights weights)
{
    auto const sheet = sgview::makeSheet(side, 0.9).addSurface(nullptr, Color());
    auto const data = make_smart<BoneWeightsData>();
    for (double const weight : secondWeights(weights))
        data->addVertex(std::array<BoneInfluence, 2>{{{0, 1.0 - weight}, {1, weight}}});
    sheet->setBoneWeights(make_smart<SharedBoneWeights>(data));
    auto const bones = make_smart<SharedBoneTransforms>();
    bones->edit().transforms = pose();
    sheet->setBoneTransforms(bones);
    return sheet;
}

struct Skinned {
    std::vector<float> positions = std::vector<float>(3 * vertexCount);
    std::vector<float> normals = std::vector<float>(3 * vertexCount);
};

/// The loop that anybody would write: a blended matrix a vertex.
void skinPlainly(SGSurfaceGeometryReferenceNode const& sheet, std::vector<double> const& weights,
                 std::vector<BoneTransform> const& bones, Skinned& skinned)
{
    auto const& vertices = sheet.getGeometry()->get()->vertices;
    auto const& normals = sheet.getNormals()->get()->normals;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        double const w = weights[i];
        Matrix3 blended;
        for (int k = 0; k < 9; ++k)
            blended[k] = (1.0 - w) * bones[0].rotation[k] + w * bones[1].rotation[k];
        Vector3 const position =
            blended * vertices[i] + (1.0 - w) * bones[0].translation + w * bones[1].translation;
        Vector3 const normal = blended * normals[i];
        for (int k = 0; k < 3; ++k) {
            skinned.positions[3 * i + static_cast<std::size_t>(k)] = static_cast<float>(position[k]);
            skinned.normals[3 * i + static_cast<std::size_t>(k)] = static_cast<float>(normal[k]);
        }
    }
}

bool isNear(std::vector<float> const& a, std::vector<float> const& b)
{
    constexpr float tolerance = 1e-6F;
    return std::ranges::equal(a, b, [](float x, float y) { return std::abs(x - y) <= tolerance; });
}

/// The blended matrix leaves the length of normals to OpenGL, or to nobody.
void normalise(std::vector<float>& normals)
{
    for (std::size_t i = 0; i < normals.size(); i += 3) {
        float const length = std::hypot(normals[i], normals[i + 1], normals[i + 2]);
        for (std::size_t k = 0; k < 3; ++k)
            normals[i + k] /= length;
    }
}

bool isRight(Skinned const& skinned, Weights weights)
{
    Skinned expected;
    skinPlainly(*makeSheet(weights), secondWeights(weights), pose(), expected);
    normalise(expected.normals);
    return isNear(skinned.positions, expected.positions) && isNear(skinned.normals, expected.normals);
}

std::vector<float> const& floatsOf(SGObject const& object)
{
    return getExtraData<FloatData<float>>(object, ExtraDataKeys::floats)->values;
}

/// As a frame does it, by the fastest kernel.
void skinning(benchmark::State& state, Weights weights)
{
    auto const sheet = makeSheet(weights);
    auto const surface = SkinnedSurface::of(*sheet);
    for (auto _ : state)
        surface->fill(*sheet);
    require(state, isRight({floatsOf(*surface->deformedGeometry()), floatsOf(*surface->deformedNormals())},
                           weights));
    countItems(state, vertexCount);
}
BENCHMARK_CAPTURE(skinning, byColumn, Weights::BY_COLUMN);
BENCHMARK_CAPTURE(skinning, varied, Weights::VARIED);

void skinningByKernel(benchmark::State& state, SkinningKernel const& kernel)
{
    auto const sheet = makeSheet(Weights::VARIED);
    SkinningPlan const plan(sheet->getGeometry()->get()->vertices, sheet->getNormals()->get()->normals,
                            *sheet->getBoneWeights()->get());
    auto const bones = pose();
    Skinned skinned;
    for (auto _ : state)
        plan.skin(kernel, bones, skinned.positions.data(), skinned.normals.data());
    require(state, isRight(skinned, Weights::VARIED));
    countItems(state, vertexCount);
}

[[maybe_unused]] bool const kernelsAreRegistered = [] {
    for (SkinningKernel const* const kernel : supportedSkinningKernels())
        benchmark::RegisterBenchmark(("skinningByKernel/" + std::string(kernel->name)).c_str(),
                                     [kernel](benchmark::State& state) { skinningByKernel(state, *kernel); });
    return true;
}();

void plainSkinning(benchmark::State& state, Weights weights)
{
    auto const sheet = makeSheet(weights);
    auto const second = secondWeights(weights);
    auto const bones = pose();
    Skinned skinned;
    for (auto _ : state) {
        skinPlainly(*sheet, second, bones, skinned);
        benchmark::ClobberMemory();
    }
    normalise(skinned.normals);
    require(state, isRight(skinned, weights));
    countItems(state, vertexCount);
}
BENCHMARK_CAPTURE(plainSkinning, byColumn, Weights::BY_COLUMN);
BENCHMARK_CAPTURE(plainSkinning, varied, Weights::VARIED);

} // namespace
