#pragma once

#include "Viewer/Import/MaterialTable.h"
#include "Viewer/Import/Model.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

struct aiBone;
struct aiMesh;
struct aiNode;
struct aiScene;

namespace sgview {

/// Turns the nodes, meshes and bones that Assimp read into those of a model. All surfaces share one skin, in
/// which each pair of node and rest pose is one bone.
class AssimpMeshes {
public:
    /// All arguments must outlive this.
    AssimpMeshes(aiScene const& scene, MaterialTable& materials, std::vector<std::size_t> const& plans,
                 Model& model, Warnings& warnings)
        : scene_(scene), materials_(materials), plans_(plans), model_(model), warnings_(warnings)
    {
    }

    /// Reads everything into the model.
    void read();

    /// The first node of each name.
    [[nodiscard]] std::map<std::string, Index> const& nodesByName() const { return nodesByName_; }

    /// Whether the file has points, which are not drawn.
    [[nodiscard]] bool hasPoints() const { return hasPoints_; }

private:
    struct Instance {
        std::vector<Index> surfaces;
        std::vector<Index> curves;
    };

    void addNodes();
    [[nodiscard]] ModelNode nodeFrom(aiNode const& source, Index parent);
    void attachMeshes();
    [[nodiscard]] Instance instantiate(aiMesh const& mesh, Index node);
    void addSurface(aiMesh const& mesh, Index node, Instance& instance);
    void addCurves(aiMesh const& mesh, Instance& instance);
    void bind(ModelSurface& surface, aiMesh const& mesh, Index node);
    [[nodiscard]] Index boneFor(aiBone const& bone, Index nodeOfMesh);
    [[nodiscard]] Index boneFor(Index node, Matrix const& inverseBind);
    [[nodiscard]] std::size_t planOf(aiMesh const& mesh) const;

    aiScene const& scene_;
    MaterialTable& materials_;
    std::vector<std::size_t> const& plans_;
    Model& model_;
    Warnings& warnings_;
    std::vector<aiNode const*> sources_; ///< by node index
    std::map<std::string, Index> nodesByName_;
    std::map<std::tuple<Index, std::array<double, 16>>, Index> bones_;
    bool hasPoints_ = false;
};

} // namespace sgview
