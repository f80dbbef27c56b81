// The scenes in OpenGL alone: loops over plain arrays that make the fewest calls that draw them, surfaces of
// the same pictures one after the other. No scene graph, no culling, no test of what is set already.

#include "Benchmarks/Peers/PlainScene.h"
#include "Viewer/Bench/SceneMotion.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

/// Columns of four, as OpenGL takes them.
using PlainMatrix = std::array<float, 16>;

PlainMatrix plain(Matrix const& matrix)
{
    PlainMatrix result;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row)
            result[static_cast<std::size_t>(4 * column + row)] = static_cast<float>(matrix(row, column));
    return result;
}

PlainMatrix turnedAndPlaced(double turn, Vector3 const& place)
{
    auto const s = static_cast<float>(std::sin(turn));
    auto const c = static_cast<float>(std::cos(turn));
    return {c,
            0.0F,
            -s,
            0.0F,
            0.0F,
            1.0F,
            0.0F,
            0.0F,
            s,
            0.0F,
            c,
            0.0F,
            static_cast<float>(place.x),
            static_cast<float>(place.y),
            static_cast<float>(place.z),
            1.0F};
}

/// Of maps whose last row is 0 0 0 1.
PlainMatrix product(PlainMatrix const& a, PlainMatrix const& b)
{
    PlainMatrix result;
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 3; ++row) {
            float sum = column == 3 ? a[12 + row] : 0.0F;
            for (std::size_t i = 0; i < 3; ++i)
                sum += a[4 * i + row] * b[4 * column + i];
            result[4 * column + row] = sum;
        }
        result[4 * column + 3] = column == 3 ? 1.0F : 0.0F;
    }
    return result;
}

void fillBuffer(GLenum target, void const* data, std::size_t size)
{
    GLuint name = 0;
    glGenBuffers(1, &name);
    glBindBuffer(target, name);
    glBufferData(target, static_cast<GLsizeiptr>(size), data, GL_STATIC_DRAW);
}

void const* offset(std::size_t bytes)
{
    return reinterpret_cast<void const*>(bytes);
}

/// Position and normal of a vertex one after the other.
constexpr std::size_t floatsASkinnedVertex = 6;

void skin(PlainMesh const& mesh, std::vector<double> const& secondWeights,
          std::array<Matrix3, 2> const& bones, float* out)
{
    for (std::size_t i = 0; i < mesh.positions.size(); ++i, out += floatsASkinnedVertex) {
        double const w = secondWeights[i];
        std::array<double, 9> m;
        for (int k = 0; k < 9; ++k)
            m[static_cast<std::size_t>(k)] = (1.0 - w) * bones[0][k] + w * bones[1][k];
        auto const& [x, y, z] = mesh.positions[i];
        auto const& [nx, ny, nz] = mesh.normals[i];
        for (std::size_t row = 0; row < 3; ++row) {
            out[row] = static_cast<float>(m[3 * row] * x + m[3 * row + 1] * y + m[3 * row + 2] * z);
            out[3 + row] = static_cast<float>(m[3 * row] * nx + m[3 * row + 1] * ny + m[3 * row + 2] * nz);
        }
    }
}

class BareOpenGLPeer : public Peer {
public:
    explicit BareOpenGLPeer(PeerScene const& scene) : scene_(scene), mesh_(meshOf(scene))
    {
        setUpView();
        setUpLight();
        loadMesh();
        if (scene_.kind == sgview::BenchSceneKind::textured)
            loadTextures();
        if (scene_.kind == sgview::BenchSceneKind::deep)
            matrices_.resize(static_cast<std::size_t>(scene_.count));
        else
            places_ = placesOf(scene_);
        for (std::size_t i = 0; i < static_cast<std::size_t>(scene_.count); ++i)
            colors_.push_back(plainColor(i));
        matrices_.resize(colors_.size());
        setMatrices(0);
        order_.resize(colors_.size());
        std::iota(order_.begin(), order_.end(), std::size_t{0});
        if (!textures_.empty())
            std::ranges::stable_sort(order_, {}, [](std::size_t i) { return i % pictureCount; });
        if (scene_.isSkinned()) {
            weights_ = secondWeights(scene_.kind);
            skinned_.resize(colors_.size(),
                            std::vector<float>(mesh_.positions.size() * floatsASkinnedVertex));
        }
    }

    void prepare(int frame) override
    {
        if (scene_.moving)
            setMatrices(frame);
        if (scene_.kind == sgview::BenchSceneKind::deep)
            top_ = product(view_, plain(sgview::chain::top(frame).getMatrix()));
        for (std::size_t i = 0; i < skinned_.size(); ++i) {
            double const bend = sgview::sheetBend(static_cast<int>(i), frame);
            skin(mesh_, weights_, {sgview::turnAboutY(bend), sgview::turnAboutY(-bend)}, skinned_[i].data());
        }
    }

    void draw() override
    {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        if (scene_.kind == sgview::BenchSceneKind::deep)
            drawChain();
        else
            drawSurfaces();
    }

private:
    void setMatrices(int frame)
    {
        for (std::size_t i = 0; i < matrices_.size(); ++i)
            matrices_[i] = scene_.kind == sgview::BenchSceneKind::deep
                               ? plain(stepOf(scene_, i, frame).getMatrix())
                               : turnedAndPlaced(turnOf(scene_, i, frame), places_[i]);
    }

    void drawSurface(PlainMatrix const& matrix, std::size_t surface) const
    {
        glLoadMatrixf(matrix.data());
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, colors_[surface].data());
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(mesh_.indices.size()), GL_UNSIGNED_SHORT, nullptr);
    }

    void drawSurfaces() const
    {
        std::size_t bound = pictureCount;
        for (std::size_t const i : order_) {
            if (!textures_.empty() && i % pictureCount != bound) {
                bound = i % pictureCount;
                bindTextures(bound);
            }
            if (!skinned_.empty())
                pointTo(skinned_[i].data(), floatsASkinnedVertex);
            drawSurface(product(view_, matrices_[i]), i);
        }
    }

    void drawChain() const
    {
        PlainMatrix matrix = top_;
        for (std::size_t level = 0; level < matrices_.size(); ++level) {
            matrix = product(matrix, matrices_[level]);
            if (level % sgview::chain::levelsACube == 0)
                drawSurface(matrix, level);
        }
    }

    void setUpView()
    {
        auto const [eye, near, far] = viewOf(scene_);
        double const right = near * std::tan(22.5 * std::numbers::pi / 180.0);
        glMatrixMode(GL_PROJECTION);
        glFrustum(-right, right, -right, right, near, far);
        glMatrixMode(GL_MODELVIEW);
        view_ = plain(Matrix::translationMatrix(eye * -1.0));
        glEnable(GL_DEPTH_TEST);
        glDisable(GL_DITHER);
        glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    }

    static void setUpLight()
    {
        constexpr std::array<float, 4> white{1.0F, 1.0F, 1.0F, 1.0F};
        constexpr std::array<float, 4> black{0.0F, 0.0F, 0.0F, 1.0F};
        constexpr std::array<float, 4> ambient{ambientLight, ambientLight, ambientLight, 1.0F};
        constexpr std::array<float, 4> position{static_cast<float>(towardsLight.x),
                                                static_cast<float>(towardsLight.y),
                                                static_cast<float>(towardsLight.z), 0.0F};
        glLoadIdentity();
        glLightfv(GL_LIGHT0, GL_POSITION, position.data());
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white.data());
        glLightfv(GL_LIGHT0, GL_AMBIENT, black.data());
        glLightfv(GL_LIGHT0, GL_SPECULAR, black.data());
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient.data());
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
    }

    /// Vertices of so many floats, position and normal first.
    static void pointTo(float const* vertices, std::size_t floats)
    {
        auto const stride = static_cast<GLsizei>(floats * sizeof(float));
        glVertexPointer(3, GL_FLOAT, stride, vertices);
        glNormalPointer(GL_FLOAT, stride,
                        offset(reinterpret_cast<std::size_t>(vertices) + 3 * sizeof(float)));
    }

    /// Puts the mesh on the card and points to it; of a skinned one the indices alone.
    void loadMesh()
    {
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_NORMAL_ARRAY);
        fillBuffer(GL_ELEMENT_ARRAY_BUFFER, mesh_.indices.data(),
                   mesh_.indices.size() * sizeof(std::uint16_t));
        if (scene_.isSkinned())
            return;
        std::vector<float> vertices;
        for (std::size_t i = 0; i < mesh_.positions.size(); ++i) {
            vertices.insert(vertices.end(), mesh_.positions[i].begin(), mesh_.positions[i].end());
            vertices.insert(vertices.end(), mesh_.normals[i].begin(), mesh_.normals[i].end());
            if (!mesh_.coordinates.empty())
                vertices.insert(vertices.end(), mesh_.coordinates[i].begin(), mesh_.coordinates[i].end());
        }
        fillBuffer(GL_ARRAY_BUFFER, vertices.data(), vertices.size() * sizeof(float));
        pointTo(nullptr, vertices.size() / mesh_.positions.size());
    }

    void loadTextures()
    {
        textures_.resize(pictureCount);
        glGenTextures(static_cast<GLsizei>(pictureCount), textures_.data());
        for (std::size_t i = 0; i < pictureCount; ++i) {
            glBindTexture(GL_TEXTURE_2D, textures_[i]);
            glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
            glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, pictureSide, pictureSide, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                         pictureBytes(i).data());
        }
        for (GLenum const layer : {GL_TEXTURE0, GL_TEXTURE1}) {
            glClientActiveTexture(layer);
            glTexCoordPointer(2, GL_FLOAT, 8 * sizeof(float), offset(6 * sizeof(float)));
            glEnableClientState(GL_TEXTURE_COORD_ARRAY);
            glActiveTexture(layer);
            glEnable(GL_TEXTURE_2D);
        }
    }

    void bindTextures(std::size_t surface) const
    {
        auto const pictures = picturesOf(surface);
        for (std::size_t layer = 0; layer < pictures.size(); ++layer) {
            glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(layer));
            glBindTexture(GL_TEXTURE_2D, textures_[pictures[layer]]);
        }
    }

    PeerScene scene_;
    PlainMesh mesh_;
    PlainMatrix view_{};
    PlainMatrix top_{}; ///< of a chain, in eye space
    std::vector<Vector3> places_;
    std::vector<PlainMatrix> matrices_; ///< a surface or a level
    std::vector<std::array<float, 4>> colors_;
    std::vector<std::size_t> order_; ///< in which surfaces are drawn
    std::vector<GLuint> textures_;
    std::vector<double> weights_;
    std::vector<std::vector<float>> skinned_; ///< vertices a surface
};

} // namespace

int main(int argc, char** argv)
{
    return runPeer(argc, argv, "bare OpenGL", false,
                   [](PeerScene const& scene) { return std::make_unique<BareOpenGLPeer>(scene); });
}
