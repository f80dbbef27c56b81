#include "Viewer/Commands/ModelSummary.h"

#include "Utilities/Strings.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/ModelCheck.h"
#include "Viewer/Import/ModelCounts.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace sgview {

namespace {

std::string textOf(Vector3 const& point)
{
    return "(" + stringize(point.x) + ", " + stringize(point.y) + ", " + stringize(point.z) + ")";
}

void countSurface(ModelSummary& summary, ModelSurface const& surface)
{
    ++summary.surfaces;
    summary.triangles += surface.facets.size() / 3;
    summary.vertices += surface.positions.size();
    summary.mostInfluencesInFile = std::max(summary.mostInfluencesInFile, surface.mostInfluencesInFile);
    summary.droppedInfluences += surface.droppedInfluences;
    for (std::size_t i = 1; i < surface.influenceOffsets.size(); ++i)
        summary.mostInfluences =
            std::max(summary.mostInfluences, surface.influenceOffsets[i] - surface.influenceOffsets[i - 1]);
}

std::string poseName(ModelSummary const& summary)
{
    if (summary.posedBy == none)
        return "rest pose";
    auto const& animation = summary.animations[static_cast<std::size_t>(summary.posedBy)];
    return "'" + oneLine(animation.name) + "' at " + stringize(summary.seconds) + " s";
}

std::string influencesInWords(ModelSummary const& summary)
{
    if (summary.bones == 0)
        return "none";
    std::string words = std::to_string(summary.mostInfluences) + " a vertex at most";
    if (summary.droppedInfluences > 0)
        words += " (" + std::to_string(summary.mostInfluencesInFile) + " in the file; " +
                 std::to_string(summary.droppedInfluences) + " of the weakest dropped)";
    return words;
}

/// "materials:   2" and a line for each.
class ListWriter {
public:
    explicit ListWriter(std::ostream& stream) : stream_(stream) {}

    template <typename Value>
    void head(std::string label, Value const& value)
    {
        constexpr std::size_t column = 13;
        label += ':';
        label.resize(std::max(column, label.size() + 1), ' ');
        stream_ << label << value << '\n';
    }
    void item(std::string const& text) { stream_ << "  " << text << '\n'; }

private:
    std::ostream& stream_;
};

Json asJson(Vector3 const& point)
{
    return Json::array({point.x, point.y, point.z});
}

Json asJson(SurfaceBounds const& surface)
{
    bool const empty = surface.bounds.empty();
    return {{"name", surface.name},
            {"low", empty ? Json() : asJson(surface.bounds.low)},
            {"high", empty ? Json() : asJson(surface.bounds.high)}};
}

} // namespace

ModelSummary summarise(std::string file, Model const& model)
{
    ModelSummary summary;
    summary.file = std::move(file);
    summary.format = model.format;
    summary.nodes = model.nodes.size();
    summary.curves = model.curves.size();
    for (ModelSurface const& surface : model.surfaces)
        countSurface(summary, surface);
    summary.bones = countsOf(model).bones;
    for (ModelSplit const& split : model.splits)
        summary.splits.push_back({split.name, split.parts});
    for (ModelMaterial const& material : model.materials)
        summary.materials.push_back(material.name);
    for (ModelImage const& image : model.images)
        summary.textures.push_back({image.name, image.width, image.height});
    for (ModelAnimation const& animation : model.animations)
        summary.animations.push_back({animation.name, animation.length});
    summary.warnings = model.warnings;
    return summary;
}

void writeText(std::ostream& stream, ModelSummary const& summary)
{
    ListWriter list(stream);
    list.head("file", oneLine(summary.file));
    list.head("format", oneLine(summary.format));
    list.head("nodes", summary.nodes);
    list.head("surfaces", summary.surfaces);
    list.head("triangles", summary.triangles);
    list.head("vertices", summary.vertices);
    list.head("curves", summary.curves);
    list.head("bones", summary.bones);
    list.head("influences", influencesInWords(summary));
    list.head("splits", summary.splits.size());
    for (ModelSummary::Split const& split : summary.splits)
        list.item("'" + oneLine(split.surface) + "' into " + std::to_string(split.parts) +
                  " parts of at most " + std::to_string(mostBonesOfSkin) + " bones each");
    list.head("materials", summary.materials.size());
    for (std::string const& material : summary.materials)
        list.item("'" + oneLine(material) + "'");
    list.head("textures", summary.textures.size());
    for (ModelSummary::Texture const& texture : summary.textures)
        list.item("'" + oneLine(texture.name) + "', " + std::to_string(texture.width) + " x " +
                  std::to_string(texture.height) + " pixels");
    list.head("animations", summary.animations.size());
    for (std::size_t i = 0; i < summary.animations.size(); ++i)
        list.item(std::to_string(i) + " '" + oneLine(summary.animations[i].name) + "', " +
                  stringize(summary.animations[i].seconds) + " s");
    list.head("warnings", summary.warnings.size());
    for (std::string const& warning : summary.warnings)
        list.item(oneLine(warning));
    list.head("bounds", poseName(summary));
    for (SurfaceBounds const& surface : summary.bounds) {
        bool const empty = surface.bounds.empty();
        list.item("'" + oneLine(surface.name) + "', " +
                  (empty ? "nowhere" : textOf(surface.bounds.low) + " to " + textOf(surface.bounds.high)));
    }
}

Json asJson(ModelSummary const& summary)
{
    Json json;
    json["file"] = summary.file;
    json["format"] = summary.format;
    json["nodes"] = summary.nodes;
    json["surfaces"] = summary.surfaces;
    json["triangles"] = summary.triangles;
    json["vertices"] = summary.vertices;
    json["curves"] = summary.curves;
    json["bones"] = summary.bones;
    json["influences"] = {{"mostInFile", summary.mostInfluencesInFile},
                          {"most", summary.mostInfluences},
                          {"dropped", summary.droppedInfluences}};
    json["splits"] = Json::array();
    for (ModelSummary::Split const& split : summary.splits)
        json["splits"].push_back({{"surface", split.surface}, {"parts", split.parts}});
    json["materials"] = summary.materials;
    json["textures"] = Json::array();
    for (ModelSummary::Texture const& texture : summary.textures)
        json["textures"].push_back(
            {{"name", texture.name}, {"width", texture.width}, {"height", texture.height}});
    json["animations"] = Json::array();
    for (ModelSummary::Animation const& animation : summary.animations)
        json["animations"].push_back({{"name", animation.name}, {"seconds", animation.seconds}});
    json["warnings"] = summary.warnings;
    json["pose"] = {{"animation", summary.posedBy == none ? Json() : Json(summary.posedBy)},
                    {"seconds", summary.seconds}};
    json["bounds"] = Json::array();
    for (SurfaceBounds const& surface : summary.bounds)
        json["bounds"].push_back(asJson(surface));
    return json;
}

Json failureAsJson(std::string const& file, std::string_view kind, std::string_view message)
{
    Json json;
    json["file"] = file;
    json["error"] = {{"kind", kind}, {"message", message}};
    return json;
}

} // namespace sgview
