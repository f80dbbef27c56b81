#include "Benchmarks/Peers/PlainScene.h"

#include "Viewer/Bench/GridLayout.h"
#include "Viewer/Bench/SceneMotion.h"

namespace {

constexpr double cubeSide = 0.7;
constexpr double sheetSide = 0.9;
constexpr int texturedVertices = 20;

template <typename Vector>
std::array<float, 3> plain(Vector const& vector)
{
    return {static_cast<float>(vector.x), static_cast<float>(vector.y), static_cast<float>(vector.z)};
}

PlainMesh plain(sgview::SceneShape const& shape)
{
    PlainMesh mesh;
    for (auto const& vertex : shape.geometry->get()->vertices)
        mesh.positions.push_back(plain(vertex));
    for (auto const& normal : shape.normals->get()->normals)
        mesh.normals.push_back(plain(normal));
    for (std::int32_t const index : shape.facets->get()->facets)
        mesh.indices.push_back(static_cast<std::uint16_t>(index));
    return mesh;
}

PlainMesh sheet(int vertices)
{
    PlainMesh mesh = plain(sgview::makeSheet(vertices, sheetSide));
    auto const coordinates = sgview::makeSheetCoordinates(vertices);
    for (Vector3 const& coordinate : coordinates->get()->coordinates)
        mesh.coordinates.push_back({static_cast<float>(coordinate.x), static_cast<float>(coordinate.y)});
    return mesh;
}

} // namespace

PlainMesh meshOf(PeerScene const& scene)
{
    if (scene.isSkinned())
        return sheet(sheetVertices);
    if (scene.kind == sgview::BenchSceneKind::textured)
        return sheet(texturedVertices);
    return plain(sgview::makeCube(cubeSide));
}

std::vector<double> secondWeights(sgview::BenchSceneKind kind)
{
    std::vector<double> weights;
    for (int row = 0; row < sheetVertices; ++row)
        for (int column = 0; column < sheetVertices; ++column)
            weights.push_back(kind == sgview::BenchSceneKind::skinnedVaried
                                  ? sgview::weightVaried(column, row, sheetVertices)
                                  : sgview::weightByColumn(column, sheetVertices));
    return weights;
}

PlainView viewOf(PeerScene const& scene)
{
    if (scene.kind == sgview::BenchSceneKind::deep)
        return {sgview::chain::middle + Vector3(0.0, 0.0, sgview::chain::viewingDistance), 1.0, 100.0};
    double const distance = sgview::GridLayout(scene.count).viewingDistance();
    return {{0.0, 0.0, distance}, 0.5 * distance, 1.5 * distance};
}

std::vector<Vector3> placesOf(PeerScene const& scene)
{
    sgview::GridLayout const layout(scene.count);
    std::vector<Vector3> places;
    for (int i = 0; i < scene.count; ++i)
        places.push_back(layout.place(i));
    return places;
}

double turnOf(PeerScene const& scene, std::size_t surface, int frame)
{
    double const turned = scene.moving ? sgview::turnAFrame * frame : 0.0;
    return scene.isSkinned() ? turned : sgview::gridTurn(static_cast<int>(surface)) + turned;
}

Transform stepOf(PeerScene const& scene, std::size_t level, int frame)
{
    return scene.moving ? sgview::chain::movingStep(scene.count, static_cast<int>(level), frame)
                        : sgview::chain::step(scene.count);
}

std::vector<std::uint8_t> pictureBytes(std::size_t number)
{
    auto const shared = sgview::makeChequers(static_cast<int>(number));
    Image_base const& image = *shared->get();
    return {image.getData(),
            image.getData() + image.getRowSize() * static_cast<std::size_t>(image.getHeight())};
}
