#pragma once

#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

namespace RendererTesting {

inline Transform const mirror(Matrix3(), {0.0, 1.0, 0.0}, -2.0);

/// What a frame may swap on a surface, to see that it is swapped back.
struct SurfaceReferences {
    explicit SurfaceReferences(SGSurfaceGeometryReferenceNode const& node)
        : geometry(node.getGeometry()),
          normals(node.getNormals()),
          facets(node.getFacets()),
          weights(node.getBoneWeights()),
          pose(node.getBoneTransforms())
    {
        for (SGTextureLayer const& layer : node.textureLayers) {
            textures.push_back(layer.texture);
            coordinates.push_back(layer.coordinates);
        }
    }

    bool operator==(SurfaceReferences const&) const = default;

    smart_ptr<SharedGeometry> geometry;
    smart_ptr<SharedSurfaceGeometry> normals;
    smart_ptr<SharedSurfaceGeometry> facets;
    smart_ptr<SharedBoneWeights> weights;
    smart_ptr<SharedBoneTransforms> pose;
    std::vector<smart_ptr<SharedImage>> textures;
    std::vector<smart_ptr<SharedTextureCoords>> coordinates;
};

inline void skin(SGSurfaceGeometryReferenceNode& surface)
{
    surface.setBoneWeights(sharedWeights({{{0, 1.0}}, {{1, 0.75}, {0, 0.25}}, {{1, 1.0}}}));
    surface.setBoneTransforms(
        sharedPose({BoneTransform{Matrix3({0, -1, 0, 1, 0, 0, 0, 0, 1}), {0.0, 0.0, 3.0}},
                    BoneTransform{Matrix3(), {1.0, 0.5, 0.0}}}));
}

/// In a light a surface of every kind; a quad and a curve.
struct SceneOfEveryKind {
    SceneOfEveryKind()
    {
        camera->camera = make_smart<CameraBase>(Matrix(), Matrix(), quarl::Rect<int>{0, 0, 640, 480});
        auto const quad = make_smart<SGQuadNode>(camera);
        quad->corners = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 1.0, 0.0}, {0.0, 1.0, 0.0}};
        auto const curve = make_smart<SGCurveGeometryReferenceNode>(camera);
        curve->setGeometry(sharedGeometry({{0.0, 0.0, 0.0}, {1.0, 1.0, 1.0}}));
        lights->lights.resize(1);
        tagged->setFacets(sharedFacets({2, 0, 1}));
        tagged->setExtraData(ExtraDataKeys::noVBO, make_smart<NoVBOTag>());
        addLayer(*textured);
        addLayer(*textured);
        skin(*skinned);
        skin(*unlit);
        unlit->unlit = true;
        skin(*halfSkinned);
        halfSkinned->setBoneWeights(nullptr);
        mirroring->transform = mirror;
        skin(*mirrored);
        addLayer(*mirrored);
        mirrored->textureLayers[0].colorize = true;
        mirrored->textureLayers[0].secondColor = {0.0F, 0.0F, 1.0F, 1.0F};
    }

    static void addLayer(SGGeometryNode& node)
    {
        SGTextureLayer layer;
        layer.texture = sharedImage();
        layer.coordinates = sharedCoordinates({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}});
        node.textureLayers.push_back(layer);
    }

    [[nodiscard]] std::vector<SurfaceReferences> references() const
    {
        std::vector<SurfaceReferences> result;
        for (auto const& surface : surfaces)
            result.emplace_back(*surface);
        return result;
    }

    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGCameraNode> camera = make_smart<SGCameraNode>(root);
    smart_ptr<SGLightsNode> lights = make_smart<SGLightsNode>(camera);
    smart_ptr<SGSurfaceGeometryReferenceNode> tagged = triangle(lights); // drawn before any buffer is
    smart_ptr<SGSurfaceGeometryReferenceNode> textured = triangle(lights);
    smart_ptr<SGSurfaceGeometryReferenceNode> skinned = triangle(lights);
    smart_ptr<SGSurfaceGeometryReferenceNode> unlit = triangle(lights);
    smart_ptr<SGSurfaceGeometryReferenceNode> halfSkinned = triangle(lights);
    smart_ptr<SGTransformNode> mirroring = make_smart<SGTransformNode>(lights);
    smart_ptr<SGSurfaceGeometryReferenceNode> mirrored = triangle(mirroring);
    smart_ptr<SGSurfaceGeometryReferenceNode> plainMirrored = triangle(mirroring);
    std::vector<smart_ptr<SGSurfaceGeometryReferenceNode>> surfaces{
        tagged, textured, skinned, unlit, halfSkinned, mirrored, plainMirrored};
};

/// The draws of `SceneOfEveryKind`, in order.
enum DrawIndex { TAGGED, TEXTURED, SKINNED, UNLIT, HALF_SKINNED, MIRRORED, PLAIN_MIRRORED, CURVE, DRAWS };

} // namespace RendererTesting
