#include "Tests/Import/GltfBuilder.h"

#include <cstring>
#include <map>

namespace sgview {

namespace {

template <typename T>
std::vector<std::uint8_t> bytesOf(std::vector<T> const& values)
{
    std::vector<std::uint8_t> bytes(values.size() * sizeof(T));
    if (!values.empty())
        std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

void append(std::string& file, std::uint32_t word)
{
    file.append(reinterpret_cast<char const*>(&word), sizeof word);
}

} // namespace

GltfBuilder::GltfBuilder()
{
    json = {
        {"asset", {{"version", "2.0"}}}, {"scene", 0}, {"scenes", {{{"nodes", nlohmann::json::array()}}}}};
    for (char const* const list : {"nodes", "meshes", "accessors", "bufferViews"})
        json[list] = nlohmann::json::array();
}

int GltfBuilder::view(std::vector<std::uint8_t> const& data)
{
    while (buffer_.size() % 4 != 0)
        buffer_.push_back(0);
    json["bufferViews"].push_back(
        {{"buffer", 0}, {"byteOffset", buffer_.size()}, {"byteLength", data.size()}});
    buffer_.insert(buffer_.end(), data.begin(), data.end());
    return static_cast<int>(json["bufferViews"].size()) - 1;
}

int GltfBuilder::accessor(std::string const& type, int componentType, std::size_t size,
                          std::vector<std::uint8_t> const& data, bool normalised)
{
    static std::map<std::string, std::size_t> const components{
        {"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4}, {"MAT4", 16}};
    json["accessors"].push_back({{"bufferView", view(data)},
                                 {"componentType", componentType},
                                 {"count", data.size() / size / components.at(type)},
                                 {"normalized", normalised},
                                 {"type", type}});
    return static_cast<int>(json["accessors"].size()) - 1;
}

int GltfBuilder::floats(std::string const& type, std::vector<float> const& values)
{
    return accessor(type, 5126, sizeof(float), bytesOf(values), false);
}

int GltfBuilder::bytes(std::string const& type, std::vector<std::uint8_t> const& values, bool normalised)
{
    return accessor(type, 5121, 1, values, normalised);
}

int GltfBuilder::shorts(std::string const& type, std::vector<std::uint16_t> const& values, bool normalised)
{
    return accessor(type, 5123, 2, bytesOf(values), normalised);
}

nlohmann::json& GltfBuilder::triangle()
{
    int const positions = floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});
    json["meshes"].push_back({{"primitives", {{{"attributes", {{"POSITION", positions}}}}}}});
    return json["meshes"].back()["primitives"][0];
}

nlohmann::json& GltfBuilder::node(nlohmann::json node)
{
    json["scenes"][0]["nodes"].push_back(json["nodes"].size());
    json["nodes"].push_back(std::move(node));
    return json["nodes"].back();
}

std::string GltfBuilder::glb() const
{
    nlohmann::json document = json;
    document["buffers"] = {{{"byteLength", buffer_.size()}}};
    std::string text = document.dump();
    text.append((4 - text.size() % 4) % 4, ' ');
    std::string data(buffer_.begin(), buffer_.end());
    data.append((4 - data.size() % 4) % 4, '\0');

    std::string file = "glTF";
    append(file, 2);
    append(file, static_cast<std::uint32_t>(12 + 8 + text.size() + 8 + data.size()));
    append(file, static_cast<std::uint32_t>(text.size()));
    file += "JSON" + text;
    append(file, static_cast<std::uint32_t>(data.size()));
    file.append("BIN\0", 4);
    return file + data;
}

} // namespace sgview
