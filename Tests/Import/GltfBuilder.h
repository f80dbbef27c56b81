#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace sgview {

/// Puts a glTF 2 file together: a test adds data and edits `json` as it likes.
class GltfBuilder {
public:
    GltfBuilder();

    /// Adds an accessor over new data.
    /// \param type  "SCALAR", "VEC3", "MAT4"
    /// \return the accessor's number
    int floats(std::string const& type, std::vector<float> const& values);
    int bytes(std::string const& type, std::vector<std::uint8_t> const& values, bool normalised);
    int shorts(std::string const& type, std::vector<std::uint16_t> const& values, bool normalised);

    /// Adds a buffer view over new data.
    int view(std::vector<std::uint8_t> const& data);

    /// Adds a mesh of one triangle (0, 0, 0), (1, 0, 0), (0, 1, 0) without normals, and returns its
    /// primitive.
    nlohmann::json& triangle();

    /// Adds a node for mesh 0 to the scene, and returns it.
    nlohmann::json& node(nlohmann::json node);

    /// The file as binary glTF.
    [[nodiscard]] std::string glb() const;

    nlohmann::json json;

private:
    int accessor(std::string const& type, int componentType, std::size_t components,
                 std::vector<std::uint8_t> const& data, bool normalised);

    std::vector<std::uint8_t> buffer_;
};

} // namespace sgview
