#pragma once

#include "Maths/Matrix.h"
#include "OpenGLRenderer/Renderer.h"
#include "SceneGraph/SGRendererManager.h"
#include "SceneGraph/SGSharedData.h"
#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"
#include "Tests/RecordingGL/ArgumentText.h"
#include "Tests/RecordingGL/RecordingGL.h"
#include "Utilities/Log.h"

#include <gmock/gmock.h>

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

/// What tests of the passes share.
namespace RendererTesting {

using Calls = std::vector<std::string>;

inline Calls operator+(Calls a, Calls const& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// Gathers what is logged while it lives.
class LogCapture {
public:
    LogCapture() { Log::getInstance().setStream(stream); }
    LogCapture(LogCapture const&) = delete;
    LogCapture& operator=(LogCapture const&) = delete;
    ~LogCapture() { Log::getInstance().setStream(std::cerr); }

    [[nodiscard]] std::string text() const { return stream.str(); }

private:
    std::ostringstream stream;
};

/// OpenGL on record, and a renderer for it that uses a number of texture units.
class RendererTest : public testing::Test {
protected:
    RendererTest() { useUnits(2); }
    ~RendererTest() override { GLRenderer::renderer.reset(); }

    void useUnits(int units)
    {
        LogCapture const quiet;
        gl.setString(GL_VERSION, "2.1 Recording");
        gl.setString(GL_RENDERER, "Recording");
        gl.setString(GL_EXTENSIONS, "GL_ARB_multitexture GL_ARB_vertex_program");
        gl.setIntegers(GL_MAX_TEXTURE_UNITS_ARB, {units});
        GLRenderer::renderer.reset();
        smart_ptr<GLRenderer> const renderer(new GLRenderer);
        static_cast<void>(gl.takeCalls());
    }

    /// The calls that showing a node to a pass makes, on entering and on leaving.
    template <typename Pass, typename Node>
    Calls entering(Pass& pass, Node& node)
    {
        static_cast<void>(gl.takeCalls());
        node.acceptEnter(&pass);
        return gl.takeCalls();
    }
    template <typename Pass, typename Node>
    Calls leaving(Pass& pass, Node& node)
    {
        static_cast<void>(gl.takeCalls());
        node.acceptLeave(&pass);
        return gl.takeCalls();
    }

    RecordingGL gl;
};

template <typename Node>
void show(SGNodeVisitor& visitor, Node& node)
{
    node.acceptEnter(&visitor);
    node.acceptLeave(&visitor);
}

/// How a matrix is loaded: its columns one after another.
inline Calls matrixLoad(std::string const& mode, Matrix const& matrix)
{
    std::vector<double> columns;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row)
            columns.push_back(matrix(row, column));
    return {"glMatrixMode(" + mode + ")", "glLoadMatrixd(" + listText(columns.data(), columns.size()) + ")"};
}

inline smart_ptr<SharedImage> sharedImage(Image_base::Format format = Image_base::RGB)
{
    return make_smart<SharedImage>(make_smart<Image_base>(2, 2, format));
}

inline smart_ptr<SharedTextureCoords> sharedCoordinates(std::vector<Vector3> coordinates)
{
    auto const data = make_smart<TextureCoordsData>();
    data->coordinates = std::move(coordinates);
    return make_smart<SharedTextureCoords>(data);
}

inline smart_ptr<SharedGeometry> sharedGeometry(std::vector<Vector3> vertices, bool closed = false)
{
    auto const data = make_smart<GeometryData>();
    data->vertices = std::move(vertices);
    data->closed = closed;
    return make_smart<SharedGeometry>(data);
}

inline smart_ptr<SharedSurfaceGeometry> sharedNormals(std::vector<UVector3> normals)
{
    auto const data = make_smart<SurfaceGeometryData>();
    data->normals = std::move(normals);
    return make_smart<SharedSurfaceGeometry>(data);
}

inline smart_ptr<SharedSurfaceGeometry> sharedFacets(std::vector<std::int32_t> facets)
{
    auto const data = make_smart<SurfaceGeometryData>();
    data->facets = std::move(facets);
    return make_smart<SharedSurfaceGeometry>(data);
}

inline smart_ptr<SharedBoneWeights> sharedWeights(std::vector<std::vector<BoneInfluence>> const& lists)
{
    auto const data = make_smart<BoneWeightsData>();
    for (std::vector<BoneInfluence> const& list : lists)
        data->addVertex(list);
    return make_smart<SharedBoneWeights>(data);
}

inline smart_ptr<SharedBoneTransforms> sharedPose(std::vector<BoneTransform> bones)
{
    return make_smart<SharedBoneTransforms>(BoneTransformVector(std::move(bones)));
}

/// A triangle with normals along z.
inline smart_ptr<SGSurfaceGeometryReferenceNode> triangle(smart_ptr<SGNode> const& parent = nullptr)
{
    auto const node = make_smart<SGSurfaceGeometryReferenceNode>(parent);
    node->setGeometry(sharedGeometry({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}}));
    node->setNormals(sharedNormals(std::vector<UVector3>(3)));
    node->setFacets(sharedFacets({0, 1, 2}));
    return node;
}

} // namespace RendererTesting
