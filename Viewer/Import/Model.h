#pragma once

#include "Maths/Matrix.h"
#include "Maths/Vector3.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace sgview {

/// Index into one of a model's lists; `none` where there is nothing to refer to.
using Index = std::int32_t;
inline constexpr Index none = -1;

/// A rotation as a quaternion, scalar last; unit length once a model has been checked.
struct Quaternion {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;
};

/// A picture as the renderer takes it: rows from the bottom up or down exactly as texture coordinates expect
/// (v = 0 is the first row), each row padded to a multiple of 4 bytes, sides powers of two.
struct ModelImage {
    std::string name;               ///< for people: the file's name, or "embedded 0"
    std::int32_t width = 0;         ///< pixels, a power of two, at most 16,384
    std::int32_t height = 0;        ///< likewise
    bool alpha = false;             ///< RGBA where set, else RGB
    std::vector<std::uint8_t> rows; ///< `height` padded rows
};

/// One texture of a material: a picture and how it is laid on.
struct ModelTexture {
    Index image = none;    ///< into Model::images
    Index coordinates = 0; ///< which of a surface's coordinate sets
    bool clamp = false;    ///< clamped at the edges instead of repeated
};

struct ModelMaterial {
    std::string name;
    std::array<float, 4> ambient{0.2F, 0.2F, 0.2F, 1.0F};
    std::array<float, 4> diffuse{0.8F, 0.8F, 0.8F, 1.0F}; ///< alpha is the surface's opacity
    std::array<float, 4> specular{0.0F, 0.0F, 0.0F, 1.0F};
    std::array<float, 4> emissive{0.0F, 0.0F, 0.0F, 1.0F};
    float shininess = 0.0F; ///< 0 to 128
    bool blending = false;  ///< drawn after what is opaque
    bool unlit = false;     ///< drawn in its diffuse colour without lights
    std::vector<ModelTexture>
        textures; ///< layers, the first multiplies the lit colour, each next one the result
};

/// What a surface's vertex hangs on: a bone of the surface's skin, and how strongly.
struct ModelInfluence {
    Index bone = 0;
    double weight = 0.0;
};

/// A triangle mesh with one material. All per-vertex lists are as long as `positions`.
struct ModelSurface {
    std::string name;
    Index material = 0;
    std::vector<Vector3> positions;
    std::vector<Vector3> normals;                                ///< unit length
    std::vector<std::vector<std::array<double, 2>>> coordinates; ///< coordinate sets: u, v
    std::vector<std::int32_t> facets;                            ///< three vertex indices a triangle
    Index skin = none;                                           ///< into Model::skins

    /// Bone influences, flat: those of vertex i are influences[influenceOffsets[i]] up to, not including,
    /// influences[influenceOffsets[i + 1]]. Both are empty for a surface without a skin. One to four a
    /// vertex, strongest first, weights summing to 1.
    std::vector<std::int32_t> influenceOffsets;
    std::vector<ModelInfluence> influences;

    std::int32_t mostInfluencesInFile = 0; ///< before the importer kept the four strongest
    std::int64_t droppedInfluences = 0;    ///< how many it left out, over all vertices
};

/// A surface of the file that has too many bones to be drawn as one: the surfaces it became stand one after
/// another.
struct ModelSplit {
    std::string name;
    Index first = 0; ///< into Model::surfaces
    Index parts = 0;
};

/// A line through points, drawn unlit.
struct ModelCurve {
    std::string name;
    Index material = 0;
    std::vector<Vector3> positions; ///< at least two
    bool closed = false;
};

/// A bone: a node whose movement drives vertices, and the map from the skin's space into the bone's own at
/// rest.
struct ModelBone {
    Index node = none; ///< into Model::nodes; none for the bone that never moves
    Matrix inverseBind;
};

struct ModelSkin {
    std::string name;
    std::vector<ModelBone> bones;
};

/// A place in the hierarchy. Its local map is translation * rotation * scale, or `matrix` where the file gave
/// one that such parts cannot express (shear); then `hasMatrix` is set, the parts are the nearest that can be
/// had, and the node is not animated.
struct ModelNode {
    std::string name;
    Index parent = none; ///< smaller than the node's own index: parents stand before their children
    Vector3 translation;
    Quaternion rotation;
    Vector3 scale{1.0, 1.0, 1.0};
    bool hasMatrix = false;
    Matrix matrix;
    std::vector<Index> surfaces; ///< into Model::surfaces; one surface may hang on several nodes
    std::vector<Index> curves;   ///< into Model::curves
};

enum class Interpolation : std::uint8_t {
    step,   ///< a key's value holds until the next key
    linear, ///< straight for translation and scale, the shorter arc (slerp) for rotation
    cubic,  ///< Hermite spline with tangents, as glTF 2.0 gives it (Appendix C)
};

/// Values over time. Keys are in ascending order of time, seconds from the animation's start.
/// With cubic interpolation there are three values a key: in-tangent, value, out-tangent.
template <typename T>
struct ModelTrack {
    Interpolation interpolation = Interpolation::linear;
    std::vector<double> times;
    std::vector<T> values;
};

/// How one node moves; an empty track leaves that part as the node has it at rest.
struct ModelChannel {
    Index node = none;
    ModelTrack<Vector3> translation;
    ModelTrack<Quaternion> rotation; ///< as in the file; not unit length between keys of a spline
    ModelTrack<Vector3> scale;
};

struct ModelAnimation {
    std::string name;
    double length = 0.0; ///< seconds: the last key of any track
    std::vector<ModelChannel> channels;
};

/// A model file as plain data: what an importer makes of a file, before it is a scene graph.
///
/// Right-handed, y up. A skinned vertex ends at the sum over its influences of
/// weight * (global map of the bone's node) * inverseBind * position, whatever node its surface hangs on;
/// any other vertex at (global map of its node) * position.
struct Model {
    std::string format; ///< for people: "glTF 2.0 (binary)", "Collada"
    std::vector<ModelNode> nodes;
    std::vector<ModelSurface> surfaces;
    std::vector<ModelCurve> curves;
    std::vector<ModelMaterial> materials;
    std::vector<ModelImage> images;
    std::vector<ModelSkin> skins;
    std::vector<ModelAnimation> animations;
    std::vector<ModelSplit> splits;
    std::vector<std::string> warnings; ///< what was left out and why, one line each
};

} // namespace sgview
