#include "Benchmarks/Kernels/Kernels.h"
#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "Viewer/Bench/SceneShapes.h"

#include <algorithm>

// Vertices and normals of a sheet of 100 by 100 vertices, as floats for the first time.

namespace {

constexpr int side = 100;
constexpr std::size_t vertexCount = std::size_t{side} * side;

template <typename Vector>
void convertPlainly(std::vector<Vector> const& vectors, std::vector<float>& floats)
{
    for (std::size_t i = 0; i < vectors.size(); ++i)
        for (int k = 0; k < 3; ++k)
            floats[3 * i + static_cast<std::size_t>(k)] = static_cast<float>(vectors[i][k]);
}

template <typename Vector>
bool isRight(std::vector<Vector> const& vectors, std::vector<float> const& floats)
{
    std::vector<float> expected(3 * vectors.size());
    convertPlainly(vectors, expected);
    return floats == expected;
}

void floatConversion(benchmark::State& state)
{
    auto const sheet = sgview::makeSheet(side, 0.9);
    auto const surface = sheet.addSurface(nullptr, Color());
    ConverterToFloats converter(false);
    for (auto _ : state) {
        sheet.geometry->clearExtraData();
        sheet.normals->clearExtraData();
        surface->acceptEnter(&converter);
    }
    auto const floatsOf = [](SGObject const& object) {
        return getExtraData<FloatData<float>>(object, ExtraDataKeys::floats)->values;
    };
    require(state, isRight(sheet.geometry->get()->vertices, floatsOf(*sheet.geometry)) &&
                       isRight(sheet.normals->get()->normals, floatsOf(*sheet.normals)));
    countItems(state, vertexCount);
}
BENCHMARK(floatConversion);

void plainFloatConversion(benchmark::State& state)
{
    auto const sheet = sgview::makeSheet(side, 0.9);
    std::vector<float> vertices(3 * vertexCount);
    std::vector<float> normals(3 * vertexCount);
    for (auto _ : state) {
        convertPlainly(sheet.geometry->get()->vertices, vertices);
        convertPlainly(sheet.normals->get()->normals, normals);
        benchmark::ClobberMemory();
    }
    require(state, isRight(sheet.geometry->get()->vertices, vertices) &&
                       isRight(sheet.normals->get()->normals, normals));
    countItems(state, vertexCount);
}
BENCHMARK(plainFloatConversion);

} // namespace
