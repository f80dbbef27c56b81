#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

/// A glTF file evaluated by the format's own rules, in plain arrays: a second opinion that shares nothing
/// with the importer or the animator. Expects a valid .gltf, buffers embedded or beside it.
class PlainGltf {
public:
    using Point = std::array<double, 3>;

    explicit PlainGltf(std::filesystem::path const& file);

    /// The length of the first animation, seconds.
    [[nodiscard]] double animationLength() const;

    /// The vertices of one primitive of the first skinned mesh, in world space, in the file's order: for
    /// each, the sum over its influences of weight * (joint's global transform) * (inverse bind matrix) *
    /// position.
    [[nodiscard]] std::vector<Point> skinnedVertices(std::size_t primitive, double seconds) const;

    /// The vertices of one primitive of the first skinned mesh as the file has them.
    [[nodiscard]] std::vector<Point> restVertices(std::size_t primitive) const;

    /// How many primitives the first skinned mesh has.
    [[nodiscard]] std::size_t primitiveCount() const;

private:
    using Columns = std::array<double, 16>; // as glTF stores matrices

    [[nodiscard]] std::vector<double> accessor(std::size_t index) const;
    [[nodiscard]] nlohmann::json const& skinnedNode() const;
    [[nodiscard]] nlohmann::json const& attributes(std::size_t primitive) const;
    [[nodiscard]] std::vector<double> animated(std::size_t node, std::string const& path, double seconds,
                                               std::vector<double> const& atRest) const;
    [[nodiscard]] Columns localTransform(std::size_t node, double seconds) const;
    [[nodiscard]] Columns globalTransform(std::size_t node, double seconds) const;

    nlohmann::json document_;
    std::vector<std::string> buffers_;
    std::vector<int> parents_;
};
