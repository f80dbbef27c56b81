#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <gtest/gtest.h>

#include <stdexcept>

TEST(SGSurfaceGeometryReferenceNode, KeepsItsReferences)
{
    SGSurfaceGeometryReferenceNode node(nullptr);
    auto const weights = make_smart<SharedBoneWeights>();
    auto const pose = make_smart<SharedBoneTransforms>();
    auto const geometry = make_smart<SharedGeometry>();
    auto const normals = make_smart<SharedSurfaceGeometry>();
    auto const facets = make_smart<SharedSurfaceGeometry>();
    auto const data = make_smart<SGSurfaceData>("hull");
    node.setBoneWeights(weights);
    node.setBoneTransforms(pose);
    node.setGeometry(geometry);
    node.setNormals(normals);
    node.setFacets(facets);
    node.setSurfaceData(data);
    EXPECT_EQ(node.getBoneWeights(), weights);
    EXPECT_EQ(node.getBoneTransforms(), pose);
    EXPECT_EQ(node.getGeometry(), geometry);
    EXPECT_EQ(node.getNormals(), normals);
    EXPECT_EQ(node.getFacets(), facets);
    EXPECT_EQ(node.getSurfaceData()->name, "hull");
}

TEST(SGSurfaceGeometryReferenceNode, RefusesOneWrapperAsNormalsAndFacets)
{
    SGSurfaceGeometryReferenceNode node(nullptr);
    auto const one = make_smart<SharedSurfaceGeometry>();
    auto const other = make_smart<SharedSurfaceGeometry>();
    node.setNormals(one);
    node.setFacets(other);
    EXPECT_THROW(node.setFacets(one), std::invalid_argument);
    EXPECT_THROW(node.setNormals(other), std::invalid_argument);
    EXPECT_EQ(node.getNormals(), one);
    EXPECT_EQ(node.getFacets(), other);
}

TEST(SGSurfaceGeometryReferenceNode, MayHaveNeitherNormalsNorFacets)
{
    SGSurfaceGeometryReferenceNode node(nullptr);
    node.setNormals(nullptr);
    node.setFacets(nullptr);
    EXPECT_FALSE(node.getNormals());
    EXPECT_FALSE(node.getFacets());
}
