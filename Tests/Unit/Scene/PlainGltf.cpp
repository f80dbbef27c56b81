#include "Tests/Unit/Scene/PlainGltf.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <map>
#include <stdexcept>

namespace {

std::string readFile(std::filesystem::path const& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot open " + file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string decodeBase64(std::string const& text)
{
    std::string const alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned bits = 0;
    int count = 0;
    for (char const c : text) {
        std::size_t const value = alphabet.find(c);
        if (value == std::string::npos)
            break;
        bits = bits << 6 | static_cast<unsigned>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<char>(bits >> count & 0xFFU));
        }
    }
    return bytes;
}

template <typename T>
T readAs(std::string const& bytes, std::size_t offset)
{
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

double component(std::string const& bytes, std::size_t offset, int type, bool normalised)
{
    switch (type) {
    case 5121: // unsigned byte
        return readAs<std::uint8_t>(bytes, offset) / (normalised ? 255.0 : 1.0);
    case 5123: // unsigned short
        return readAs<std::uint16_t>(bytes, offset) / (normalised ? 65535.0 : 1.0);
    case 5126: // float
        return static_cast<double>(readAs<float>(bytes, offset));
    default:
        throw std::runtime_error("component type not expected here");
    }
}

std::size_t componentSize(int type)
{
    return type == 5121 ? 1 : type == 5123 ? 2 : 4;
}

std::vector<double> unit(std::vector<double> q)
{
    double const length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    for (double& x : q)
        x /= length;
    return q;
}

std::vector<double> slerp(std::vector<double> const& a, std::vector<double> b, double t)
{
    double d = a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
    if (d < 0.0) {
        d = -d;
        for (double& x : b)
            x = -x;
    }
    double const angle = std::acos(std::fmin(d, 1.0));
    double const from = angle < 1e-9 ? 1.0 - t : std::sin((1.0 - t) * angle) / std::sin(angle);
    double const to = angle < 1e-9 ? t : std::sin(t * angle) / std::sin(angle);
    std::vector<double> mixed;
    for (std::size_t i = 0; i < 4; ++i)
        mixed.push_back(from * a[i] + to * b[i]);
    return mixed;
}

std::array<double, 16> multiplied(std::array<double, 16> const& a, std::array<double, 16> const& b)
{
    std::array<double, 16> product{};
    for (std::size_t column = 0; column < 4; ++column)
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t k = 0; k < 4; ++k)
                product[4 * column + row] += a[4 * k + row] * b[4 * column + k];
    return product;
}

std::vector<double> numbers(nlohmann::json const& node, char const* name, std::vector<double> otherwise)
{
    return node.contains(name) ? node.at(name).get<std::vector<double>>() : otherwise;
}

} // namespace

PlainGltf::PlainGltf(std::filesystem::path const& file) : document_(nlohmann::json::parse(readFile(file)))
{
    for (auto const& buffer : document_.at("buffers")) {
        auto const uri = buffer.at("uri").get<std::string>();
        std::size_t const comma = uri.find("base64,");
        buffers_.push_back(comma == std::string::npos ? readFile(file.parent_path() / uri)
                                                      : decodeBase64(uri.substr(comma + 7)));
    }
    parents_.assign(document_.at("nodes").size(), -1);
    for (std::size_t i = 0; i < parents_.size(); ++i)
        if (document_["nodes"][i].contains("children"))
            for (std::size_t const child : document_["nodes"][i]["children"])
                parents_[child] = static_cast<int>(i);
}

double PlainGltf::animationLength() const
{
    double length = 0.0;
    for (auto const& sampler : document_.at("animations").at(0).at("samplers"))
        for (double const time : accessor(sampler.at("input")))
            length = std::fmax(length, time);
    return length;
}

std::size_t PlainGltf::primitiveCount() const
{
    return document_.at("meshes").at(skinnedNode().at("mesh").get<std::size_t>()).at("primitives").size();
}

std::vector<double> PlainGltf::accessor(std::size_t index) const
{
    std::map<std::string, std::size_t> const counts = {
        {"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4}, {"MAT4", 16}};
    auto const& source = document_.at("accessors").at(index);
    auto const& view = document_.at("bufferViews").at(source.at("bufferView").get<std::size_t>());
    std::string const& bytes = buffers_.at(view.at("buffer").get<std::size_t>());
    std::size_t const components = counts.at(source.at("type").get<std::string>());
    int const type = source.at("componentType");
    std::size_t const tight = components * componentSize(type);
    std::size_t const stride = view.value("byteStride", tight);
    std::size_t const start =
        view.value("byteOffset", std::size_t{0}) + source.value("byteOffset", std::size_t{0});
    std::vector<double> values;
    for (std::size_t i = 0; i < source.at("count").get<std::size_t>(); ++i)
        for (std::size_t c = 0; c < components; ++c)
            values.push_back(component(bytes, start + i * stride + c * componentSize(type), type,
                                       source.value("normalized", false)));
    return values;
}

nlohmann::json const& PlainGltf::skinnedNode() const
{
    for (auto const& node : document_.at("nodes"))
        if (node.contains("skin") && node.contains("mesh"))
            return node;
    throw std::runtime_error("no skinned mesh");
}

std::vector<double> PlainGltf::animated(std::size_t node, std::string const& path, double seconds,
                                        std::vector<double> const& atRest) const
{
    for (auto const& channel : document_.at("animations").at(0).at("channels")) {
        auto const& target = channel.at("target");
        if (target.value("node", std::size_t{9999999}) != node || target.at("path") != path)
            continue;
        auto const& sampler =
            document_.at("animations").at(0).at("samplers").at(channel.at("sampler").get<std::size_t>());
        std::vector<double> const times = accessor(sampler.at("input"));
        std::vector<double> const values = accessor(sampler.at("output"));
        std::string const mode = sampler.value("interpolation", std::string("LINEAR"));
        std::size_t const size = atRest.size();
        std::size_t const perKey = mode == "CUBICSPLINE" ? 3 : 1;
        // Element 0 is the in-tangent, 1 the value, 2 the out-tangent of a spline's key.
        auto const at = [&](std::size_t key, std::size_t element) {
            auto const first = values.begin() + static_cast<std::ptrdiff_t>((key * perKey + element) * size);
            return std::vector<double>(first, first + static_cast<std::ptrdiff_t>(size));
        };
        std::size_t const value = perKey == 3 ? 1 : 0;
        if (seconds <= times.front())
            return at(0, value);
        if (seconds >= times.back())
            return at(times.size() - 1, value);
        std::size_t key = 0;
        while (times[key + 1] <= seconds)
            ++key;
        double const span = times[key + 1] - times[key];
        double const t = (seconds - times[key]) / span;
        if (mode == "STEP")
            return at(key, value);
        if (mode == "LINEAR" && path == "rotation")
            return slerp(unit(at(key, 0)), unit(at(key + 1, 0)), t);
        std::vector<double> result;
        for (std::size_t i = 0; i < size; ++i) {
            if (mode == "LINEAR")
                result.push_back((1.0 - t) * at(key, 0)[i] + t * at(key + 1, 0)[i]);
            else
                result.push_back((2 * t * t * t - 3 * t * t + 1) * at(key, 1)[i] +
                                 span * (t * t * t - 2 * t * t + t) * at(key, 2)[i] +
                                 (-2 * t * t * t + 3 * t * t) * at(key + 1, 1)[i] +
                                 span * (t * t * t - t * t) * at(key + 1, 0)[i]);
        }
        return result;
    }
    return atRest;
}

PlainGltf::Columns PlainGltf::localTransform(std::size_t node, double seconds) const
{
    auto const& source = document_.at("nodes").at(node);
    if (source.contains("matrix"))
        return source.at("matrix").get<Columns>();
    auto const t = animated(node, "translation", seconds, numbers(source, "translation", {0, 0, 0}));
    auto const q = unit(animated(node, "rotation", seconds, numbers(source, "rotation", {0, 0, 0, 1})));
    auto const s = animated(node, "scale", seconds, numbers(source, "scale", {1, 1, 1}));
    double const x = q[0];
    double const y = q[1];
    double const z = q[2];
    double const w = q[3];
    return {(w * w + x * x - y * y - z * z) * s[0],
            2 * (x * y + w * z) * s[0],
            2 * (x * z - w * y) * s[0],
            0,
            2 * (x * y - w * z) * s[1],
            (w * w - x * x + y * y - z * z) * s[1],
            2 * (y * z + w * x) * s[1],
            0,
            2 * (x * z + w * y) * s[2],
            2 * (y * z - w * x) * s[2],
            (w * w - x * x - y * y + z * z) * s[2],
            0,
            t[0],
            t[1],
            t[2],
            1};
}

PlainGltf::Columns PlainGltf::globalTransform(std::size_t node, double seconds) const
{
    Columns const local = localTransform(node, seconds);
    return parents_[node] < 0
               ? local
               : multiplied(globalTransform(static_cast<std::size_t>(parents_[node]), seconds), local);
}

nlohmann::json const& PlainGltf::attributes(std::size_t primitive) const
{
    return document_.at("meshes")
        .at(skinnedNode().at("mesh").get<std::size_t>())
        .at("primitives")
        .at(primitive)
        .at("attributes");
}

std::vector<PlainGltf::Point> PlainGltf::restVertices(std::size_t primitive) const
{
    std::vector<double> const positions = accessor(attributes(primitive).at("POSITION"));
    std::vector<Point> points;
    for (std::size_t i = 0; i < positions.size(); i += 3)
        points.push_back({positions[i], positions[i + 1], positions[i + 2]});
    return points;
}

std::vector<PlainGltf::Point> PlainGltf::skinnedVertices(std::size_t primitive, double seconds) const
{
    auto const& skin = document_.at("skins").at(skinnedNode().at("skin").get<std::size_t>());
    std::vector<Columns> jointMatrices;
    for (std::size_t j = 0; j < skin.at("joints").size(); ++j) {
        Columns matrix = globalTransform(skin.at("joints").at(j), seconds);
        if (skin.contains("inverseBindMatrices")) {
            std::vector<double> const all = accessor(skin.at("inverseBindMatrices"));
            Columns inverseBind{};
            std::copy_n(all.begin() + static_cast<std::ptrdiff_t>(16 * j), 16, inverseBind.begin());
            matrix = multiplied(matrix, inverseBind);
        }
        jointMatrices.push_back(matrix);
    }
    std::vector<double> const positions = accessor(attributes(primitive).at("POSITION"));
    std::vector<double> const joints = accessor(attributes(primitive).at("JOINTS_0"));
    std::vector<double> const weights = accessor(attributes(primitive).at("WEIGHTS_0"));
    std::vector<Point> points(positions.size() / 3, Point{});
    for (std::size_t v = 0; v < points.size(); ++v) {
        for (std::size_t k = 0; k < 4; ++k) {
            Columns const& m = jointMatrices.at(static_cast<std::size_t>(joints[4 * v + k]));
            for (std::size_t row = 0; row < 3; ++row)
                points[v][row] +=
                    weights[4 * v + k] * (m[row] * positions[3 * v] + m[4 + row] * positions[3 * v + 1] +
                                          m[8 + row] * positions[3 * v + 2] + m[12 + row]);
        }
    }
    return points;
}
