#include "Viewer/Bench/BenchSceneKind.h"

#include "Viewer/Bench/DeepScene.h"
#include "Viewer/Bench/GridScene.h"
#include "Viewer/Bench/SkinnedScene.h"

namespace sgview {

namespace {

struct KindFacts {
    BenchSceneKind kind;
    std::string_view name;
    int usualCount;
    int most; ///< more would take gigabytes
};

constexpr std::array<KindFacts, allBenchScenes.size()> allFacts{
    {{BenchSceneKind::many, "many", 10'000, 1'000'000},
     {BenchSceneKind::textured, "textured", 2'000, 1'000'000},
     {BenchSceneKind::skinned, "skinned", 64, 2'000},
     {BenchSceneKind::skinnedVaried, "skinned-varied", 64, 2'000},
     {BenchSceneKind::deep, "deep", 2'000, 1'000'000}}};

KindFacts const& factsOf(BenchSceneKind kind)
{
    return allFacts[static_cast<std::size_t>(kind)];
}

std::unique_ptr<BenchScene> makeTextured(int count, bool moving)
{
    constexpr int verticesASide = 20;
    auto scene = std::make_unique<GridScene>(makeSheet(verticesASide, 0.9), count, moving);
    scene->addTextures(makeSheetCoordinates(verticesASide));
    return scene;
}

} // namespace

std::string_view nameOf(BenchSceneKind kind)
{
    return factsOf(kind).name;
}

std::optional<BenchSceneKind> benchSceneNamed(std::string_view name)
{
    for (KindFacts const& facts : allFacts)
        if (facts.name == name)
            return facts.kind;
    return std::nullopt;
}

std::string_view thingsIn(BenchSceneKind kind)
{
    return kind == BenchSceneKind::deep ? "nested transforms" : "surfaces";
}

int usualCount(BenchSceneKind kind)
{
    return factsOf(kind).usualCount;
}

int mostOf(BenchSceneKind kind)
{
    return factsOf(kind).most;
}

std::unique_ptr<BenchScene> makeBenchScene(BenchSceneKind kind, int count, bool moving)
{
    switch (kind) {
    case BenchSceneKind::many:
        return std::make_unique<GridScene>(makeCube(0.7), count, moving);
    case BenchSceneKind::textured:
        return makeTextured(count, moving);
    case BenchSceneKind::skinned:
        return std::make_unique<SkinnedScene>(count, SkinnedScene::Weights::byColumn, moving);
    case BenchSceneKind::skinnedVaried:
        return std::make_unique<SkinnedScene>(count, SkinnedScene::Weights::varied, moving);
    case BenchSceneKind::deep:
        return std::make_unique<DeepScene>(count, moving);
    }
    return nullptr;
}

} // namespace sgview
