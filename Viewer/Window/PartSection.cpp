#include "Viewer/Window/PartSection.h"

#include "Viewer/Window/Session.h"

#include <imgui.h>

#include <algorithm>

namespace sgview {

namespace {

constexpr int deepest = 16; // levels that the panel has room to indent

std::string labelOf(std::string const& name, char const* kind, std::size_t number)
{
    return name.empty() ? std::string(kind) + " " + std::to_string(number) : name;
}

void showAll(ModelInstance& instance)
{
    for (std::size_t i = 0; i < instance.partCount(); ++i)
        instance.setShown(i, true);
}

void showAlone(ModelInstance& instance, std::size_t part)
{
    for (std::size_t i = 0; i < instance.partCount(); ++i)
        instance.setShown(i, i == part);
}

std::size_t countHidden(ModelInstance const& instance)
{
    std::size_t hidden = 0;
    for (std::size_t i = 0; i < instance.partCount(); ++i)
        hidden += instance.isShown(i) ? 0 : 1;
    return hidden;
}

} // namespace

void PartSection::gather(Document const& document)
{
    ModelInstance const& instance = document.scene()->instance();
    std::vector<ModelNode> const& nodes = instance.model().nodes;
    tree_ = {document.generation(), {}, {}, {}};
    tree_.children.resize(nodes.size());
    tree_.parts.resize(nodes.size());
    for (std::size_t i = 0; i < instance.partCount(); ++i)
        tree_.parts[static_cast<std::size_t>(instance.part(i).owner)].push_back(i);
    // Children stand behind their parents: from the back, a node's own children are complete.
    for (std::size_t i = nodes.size(); i-- > 0;) {
        if (tree_.parts[i].empty() && tree_.children[i].empty())
            continue;
        Index const parent = nodes[i].parent;
        (parent == none ? tree_.roots : tree_.children[static_cast<std::size_t>(parent)])
            .push_back(static_cast<Index>(i));
    }
    std::ranges::reverse(tree_.roots);
    for (std::vector<Index>& children : tree_.children)
        std::ranges::reverse(children);
}

void PartSection::build(Session& session)
{
    ModelScene* const scene = session.document.scene();
    if (!scene)
        return;
    if (tree_.generation != session.document.generation())
        gather(session.document);
    ModelInstance& instance = scene->instance();
    std::size_t const hidden = countHidden(instance);
    ImGui::Text("%zu parts, %zu hidden", instance.partCount(), hidden);
    if (hidden > 0) {
        ImGui::SameLine();
        if (ImGui::SmallButton("show all"))
            showAll(instance);
    }
    for (Index const root : tree_.roots)
        buildNode(instance, root, 0);
}

void PartSection::buildNode(ModelInstance& instance, Index node, int level)
{
    if (level == deepest) {
        buildFlat(instance, node);
        return;
    }
    // From the node down its only children: chains of them would take a level each to say nothing.
    auto at = static_cast<std::size_t>(node);
    while (tree_.parts[at].empty() && tree_.children[at].size() == 1)
        at = static_cast<std::size_t>(tree_.children[at].front());
    if (tree_.children[at].empty() && tree_.parts[at].size() == 1) {
        buildPart(instance, tree_.parts[at].front());
        return;
    }
    std::string const name = labelOf(instance.model().nodes[at].name, "node", at);
    ImGui::PushID(static_cast<int>(at));
    bool const isOpen = ImGui::TreeNodeEx("##node", ImGuiTreeNodeFlags_DefaultOpen, "%s", name.c_str());
    if (isOpen) {
        for (std::size_t const part : tree_.parts[at])
            buildPart(instance, part);
        for (Index const child : tree_.children[at])
            buildNode(instance, child, level + 1);
        ImGui::TreePop();
    }
    ImGui::PopID();
}

void PartSection::buildFlat(ModelInstance& instance, Index node)
{
    std::vector<Index> waiting{node};
    while (!waiting.empty()) {
        auto const at = static_cast<std::size_t>(waiting.back());
        waiting.pop_back();
        for (std::size_t const part : tree_.parts[at])
            buildPart(instance, part);
        waiting.insert(waiting.end(), tree_.children[at].rbegin(), tree_.children[at].rend());
    }
}

void PartSection::buildPart(ModelInstance& instance, std::size_t part)
{
    ImGui::PushID(static_cast<int>(part));
    bool isShown = instance.isShown(part);
    if (ImGui::Checkbox(labelOf(instance.part(part).name, "part", part).c_str(), &isShown))
        instance.setShown(part, isShown);
    ImGui::SameLine();
    if (ImGui::SmallButton("alone"))
        showAlone(instance, part);
    ImGui::PopID();
}

} // namespace sgview
