#include "Benchmarks/Peers/OpenSceneGraphParts.h"

#include <osg/LightModel>
#include <osg/LightSource>

#include <cstring>

namespace {

osg::ref_ptr<osg::Vec3Array> vectors(std::vector<std::array<float, 3>> const& values)
{
    osg::ref_ptr<osg::Vec3Array> result = new osg::Vec3Array;
    for (auto const& [x, y, z] : values)
        result->push_back({x, y, z});
    return result;
}

osg::Vec4 black()
{
    return {0.0F, 0.0F, 0.0F, 1.0F};
}

osg::ref_ptr<osg::LightSource> light()
{
    osg::ref_ptr<osg::LightSource> source = new osg::LightSource;
    source->setReferenceFrame(osg::LightSource::ABSOLUTE_RF);
    osg::Light& light = *source->getLight();
    light.setLightNum(0);
    light.setPosition({static_cast<float>(towardsLight.x), static_cast<float>(towardsLight.y),
                       static_cast<float>(towardsLight.z), 0.0F});
    light.setDiffuse({1.0F, 1.0F, 1.0F, 1.0F});
    light.setAmbient(black());
    light.setSpecular(black());
    return source;
}

} // namespace

osg::ref_ptr<osg::Geometry> osgGeometry(PlainMesh const& mesh)
{
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(vectors(mesh.positions));
    geometry->setNormalArray(vectors(mesh.normals), osg::Array::BIND_PER_VERTEX);
    if (!mesh.coordinates.empty()) {
        osg::ref_ptr<osg::Vec2Array> coordinates = new osg::Vec2Array;
        for (auto const& [u, v] : mesh.coordinates)
            coordinates->push_back({u, v});
        geometry->setTexCoordArray(0, coordinates);
        geometry->setTexCoordArray(1, coordinates);
    }
    geometry->addPrimitiveSet(new osg::DrawElementsUShort(
        GL_TRIANGLES, static_cast<unsigned>(mesh.indices.size()), mesh.indices.data()));
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    return geometry;
}

osg::ref_ptr<osg::Material> osgMaterial(std::size_t surface)
{
    auto const [r, g, b, a] = plainColor(surface);
    osg::ref_ptr<osg::Material> material = new osg::Material;
    material->setAmbient(osg::Material::FRONT_AND_BACK, {r, g, b, a});
    material->setDiffuse(osg::Material::FRONT_AND_BACK, {r, g, b, a});
    material->setSpecular(osg::Material::FRONT_AND_BACK, black());
    return material;
}

std::vector<osg::ref_ptr<osg::Texture2D>> osgTextures()
{
    std::vector<osg::ref_ptr<osg::Texture2D>> textures;
    for (std::size_t i = 0; i < pictureCount; ++i) {
        auto const bytes = pictureBytes(i);
        osg::ref_ptr<osg::Image> image = new osg::Image;
        image->allocateImage(pictureSide, pictureSide, 1, GL_RGBA, GL_UNSIGNED_BYTE);
        std::memcpy(image->data(), bytes.data(), bytes.size());
        osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
        texture->setFilter(osg::Texture::MIN_FILTER, osg::Texture::LINEAR);
        texture->setFilter(osg::Texture::MAG_FILTER, osg::Texture::LINEAR);
        texture->setWrap(osg::Texture::WRAP_S, osg::Texture::REPEAT);
        texture->setWrap(osg::Texture::WRAP_T, osg::Texture::REPEAT);
        textures.push_back(texture);
    }
    return textures;
}

osg::ref_ptr<osg::Group> osgRoot()
{
    osg::ref_ptr<osg::Group> root = new osg::Group;
    osg::StateSet& state = *root->getOrCreateStateSet();
    state.setMode(GL_LIGHTING, osg::StateAttribute::ON);
    state.setMode(GL_CULL_FACE, osg::StateAttribute::OFF);
    osg::ref_ptr<osg::LightModel> model = new osg::LightModel;
    model->setAmbientIntensity({ambientLight, ambientLight, ambientLight, 1.0F});
    state.setAttributeAndModes(model);
    osg::ref_ptr<osg::LightSource> const source = light();
    source->setStateSetModes(state, osg::StateAttribute::ON);
    root->addChild(source);
    return root;
}

osg::Matrix osgMatrix(Transform const& transform)
{
    auto const m = transform.getMatrix();
    // OpenSceneGraph's vectors are rows.
    return {m(0, 0), m(1, 0), m(2, 0), m(3, 0), m(0, 1), m(1, 1), m(2, 1), m(3, 1),
            m(0, 2), m(1, 2), m(2, 2), m(3, 2), m(0, 3), m(1, 3), m(2, 3), m(3, 3)};
}
