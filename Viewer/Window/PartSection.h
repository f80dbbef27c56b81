#pragma once

#include "Viewer/Import/Model.h"
#include "Viewer/Window/PanelSection.h"

#include <cstddef>
#include <vector>

namespace sgview {

class Document;
class ModelInstance;

/// The model's tree of nodes with its parts, each of which can be hidden or shown alone.
class PartSection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "Scene tree"; }
    [[nodiscard]] bool isOpenAtFirst() const override { return false; }
    void build(Session& session) override;

private:
    /// What the tree shows of a model.
    struct Tree {
        int generation = 0;                          ///< of the document's scenes: the one whose tree this is
        std::vector<std::vector<Index>> children;    ///< of each node: those with parts at or below them
        std::vector<std::vector<std::size_t>> parts; ///< of each node
        std::vector<Index> roots;
    };

    void gather(Document const& document);
    void buildNode(ModelInstance& instance, Index node, int level);
    void buildFlat(ModelInstance& instance, Index node);
    void buildPart(ModelInstance& instance, std::size_t part);

    Tree tree_;
};

} // namespace sgview
