#pragma once

#include "Viewer/Import/GltfAccessor.h"
#include "Viewer/Import/GltfNodes.h"
#include "Viewer/Import/MaterialTable.h"

#include <map>
#include <vector>

namespace sgview {

/// Turns a glTF file's meshes and skins into surfaces, curves and skins of a model, and hangs them on its
/// nodes. Morph targets are baked with their weights at rest.
class GltfMeshes {
public:
    /// All arguments must outlive this.
    GltfMeshes(GltfDocument const& document, MaterialTable& materials, std::vector<std::size_t> const& plans,
               Model& model, Warnings& warnings)
        : document_(document),
          accessor_(document),
          materials_(materials),
          plans_(plans),
          model_(model),
          warnings_(warnings)
    {
    }

    /// Expects the model to have these nodes already.
    /// \throws ImportError
    void attach(GltfNodes const& nodes);

    /// Whether the file has points, which are not drawn.
    [[nodiscard]] bool hasPoints() const { return hasPoints_; }

private:
    struct Instance {
        std::vector<Index> surfaces;
        std::vector<Index> curves;
    };
    /// Where a mesh is used decides what it becomes: which skin moves it, how it is morphed.
    struct Use {
        int mesh = none;
        Index node = none; ///< with a skin: vertices that no joint moves stay with this node
        int skin = none;
        std::vector<double> morphWeights;
        auto operator<=>(Use const&) const = default;
    };

    [[nodiscard]] Index skinOf(int number, GltfNodes const& nodes);
    [[nodiscard]] Instance instantiate(Use const& use, Index skin);
    void addPrimitive(Use const& use, Index skin, tinygltf::Primitive const& primitive,
                      std::string const& name, Instance& instance);
    [[nodiscard]] std::vector<Vector3> positionsOf(Use const& use, tinygltf::Primitive const& primitive,
                                                   std::string const& attribute,
                                                   std::string const& what) const;
    [[nodiscard]] std::vector<CoordinateSet>
    coordinatesOf(tinygltf::Primitive const& primitive, std::size_t vertices, std::string const& what) const;
    [[nodiscard]] std::vector<Colour> coloursOf(tinygltf::Primitive const& primitive, std::size_t vertices,
                                                std::string const& what) const;
    void bind(ModelSurface& surface, Use const& use, Index skin, tinygltf::Primitive const& primitive);
    void addCurves(std::vector<Vector3> const& positions, std::vector<std::uint32_t> const& order, int mode,
                   std::size_t plan, std::vector<Colour> const& colours, std::string const& name,
                   Instance& instance);
    [[nodiscard]] std::size_t planOf(int material) const;

    GltfDocument const& document_;
    GltfAccessor accessor_;
    MaterialTable& materials_;
    std::vector<std::size_t> const& plans_;
    Model& model_;
    Warnings& warnings_;
    std::map<Use, Instance> instances_;
    std::map<int, Index> skins_;
    bool hasPoints_ = false;
};

} // namespace sgview
