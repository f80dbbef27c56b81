#include "Viewer/Import/AssimpMaterials.h"

#include "Viewer/Import/PhysicalMaterial.h"

#include <assimp/GltfMaterial.h>
#include <assimp/material.h>
#include <assimp/scene.h>

#include <algorithm>
#include <array>

namespace sgview {

namespace {

constexpr float black = 1.0F / 255.0F;

/// Of the diffuse colour. Assimp makes up an ambient colour of up to a twelfth for formats that have none;
/// what files mean begins at a tenth.
constexpr float leastAmbient = 0.09F;

float strongest(Colour const& colour)
{
    return std::max({colour[0], colour[1], colour[2]});
}

class Reader {
public:
    Reader(aiScene const& scene, TextureStore& textures, std::string_view relativePrefix, Warnings& warnings)
        : scene_(scene), textures_(textures), relativePrefix_(relativePrefix), warnings_(warnings)
    {
    }

    MaterialPlan read(aiMaterial const& source)
    {
        MaterialPlan plan;
        ModelMaterial& material = plan.material;
        material.name = source.GetName().C_Str();
        readColours(source, material);
        readHighlight(source, material);
        readOpacity(source, material);
        int shading = aiShadingMode_Gouraud;
        source.Get(AI_MATKEY_SHADING_MODEL, shading);
        material.unlit = shading == aiShadingMode_NoShading;
        readLayers(source, plan);
        if (!material.textures.empty() && strongest(material.diffuse) <= black) {
            float const alpha = material.diffuse[3];
            material.diffuse = material.ambient = {1, 1, 1, alpha};
        }
        return plan;
    }

private:
    static Colour colour(aiMaterial const& source, char const* key, unsigned int type, unsigned int index,
                         Colour const& otherwise)
    {
        aiColor3D found;
        if (source.Get(key, type, index, found) != aiReturn_SUCCESS)
            return otherwise;
        return {fraction(static_cast<double>(found.r)), fraction(static_cast<double>(found.g)),
                fraction(static_cast<double>(found.b)), 1.0F};
    }

    static void readColours(aiMaterial const& source, ModelMaterial& material)
    {
        Colour const base = colour(source, AI_MATKEY_BASE_COLOR, material.diffuse);
        material.diffuse = colour(source, AI_MATKEY_COLOR_DIFFUSE, base);
        material.ambient = colour(source, AI_MATKEY_COLOR_AMBIENT, material.diffuse);
        if (strongest(material.ambient) <= std::max(black, leastAmbient * strongest(material.diffuse)))
            material.ambient = material.diffuse;
        material.emissive = colour(source, AI_MATKEY_COLOR_EMISSIVE, material.emissive);
    }

    static void readHighlight(aiMaterial const& source, ModelMaterial& material)
    {
        constexpr float leastExponent = 1.0F;
        constexpr float largestExponent = 128.0F;
        float exponent = 0.0F;
        float strength = 1.0F;
        source.Get(AI_MATKEY_SHININESS, exponent);
        source.Get(AI_MATKEY_SHININESS_STRENGTH, strength);
        if (!(exponent >= leastExponent))
            return;
        material.specular = colour(source, AI_MATKEY_COLOR_SPECULAR, material.specular);
        for (std::size_t i = 0; i < 3; ++i)
            material.specular[i] *= fraction(static_cast<double>(strength));
        material.shininess = std::min(exponent, largestExponent);
    }

    void readOpacity(aiMaterial const& source, ModelMaterial& material)
    {
        float opacity = 1.0F;
        source.Get(AI_MATKEY_OPACITY, opacity);
        opacity = fraction(static_cast<double>(opacity));
        if (opacity <= black) {
            warnings_.add("material '" + material.name + "': wholly transparent, taken as opaque");
            opacity = 1.0F;
        }
        material.diffuse[3] = material.ambient[3] = opacity;
        material.blending = opacity < 1.0F;
    }

    void readLayers(aiMaterial const& source, MaterialPlan& plan)
    {
        aiTextureType const first = source.GetTextureCount(aiTextureType_DIFFUSE) > 0
                                        ? aiTextureType_DIFFUSE
                                        : aiTextureType_BASE_COLOR;
        addLayers(source, first, plan);
        if (plan.material.textures.empty() && source.GetTextureCount(first) == 0 &&
            source.GetTextureCount(aiTextureType_EMISSIVE) > 0) {
            addLayers(source, aiTextureType_EMISSIVE, plan);
            plan.material.unlit = !plan.material.textures.empty();
        }
        addLayers(source, aiTextureType_LIGHTMAP, plan);
        for (aiTextureType const type : {aiTextureType_NORMALS, aiTextureType_HEIGHT})
            if (source.GetTextureCount(type) > 0)
                warnings_.add("normal and bump maps are not drawn");
    }

    void addLayers(aiMaterial const& source, aiTextureType type, MaterialPlan& plan)
    {
        for (unsigned int i = 0; i < source.GetTextureCount(type); ++i) {
            aiString path;
            unsigned int set = 0;
            std::array<aiTextureMapMode, 3> wrap{};
            if (source.GetTexture(type, i, &path, nullptr, &set, nullptr, nullptr, wrap.data()) !=
                    aiReturn_SUCCESS ||
                path.length == 0)
                continue;
            ModelTexture layer;
            layer.image = imageOf(path);
            if (layer.image == none)
                continue;
            layer.clamp = wrap[0] == aiTextureMapMode_Clamp && wrap[1] == aiTextureMapMode_Clamp;
            int flags = 0;
            source.Get(AI_MATKEY_TEXFLAGS(type, i), flags);
            if (textures_.image(layer.image).alpha && (flags & aiTextureFlags_IgnoreAlpha) == 0)
                plan.material.blending = true;
            plan.material.textures.push_back(layer);
            plan.sources.push_back({static_cast<Index>(std::min(set, 1000U)), {1, 0, 0, 0, 1, 0}});
        }
    }

    Index imageOf(aiString const& path)
    {
        aiTexture const* const embedded = scene_.GetEmbeddedTexture(path.C_Str());
        if (embedded == nullptr) {
            std::string_view name = path.C_Str();
            if (name.starts_with(relativePrefix_))
                name.remove_prefix(relativePrefix_.size());
            return textures_.fromFile(std::string(name));
        }
        std::string const name =
            path.C_Str()[0] == '*' ? "embedded " + std::string(path.C_Str() + 1) : path.C_Str();
        return textures_.embedded(name, [&] { return pixelsOf(*embedded, name); });
    }

    static Pixels pixelsOf(aiTexture const& texture, std::string const& name)
    {
        if (texture.pcData == nullptr)
            throw PictureError("the picture is empty");
        if (texture.mHeight == 0) {
            std::span const bytes(reinterpret_cast<std::uint8_t const*>(texture.pcData), texture.mWidth);
            return decodePicture(
                bytes, name + "." + std::string(texture.achFormatHint, strnlen(texture.achFormatHint, 8)));
        }
        constexpr unsigned int largestSide = 16384;
        if (texture.mWidth > largestSide || texture.mHeight > largestSide)
            throw PictureError("the picture is too big");
        Pixels pixels{
            static_cast<std::int32_t>(texture.mWidth), static_cast<std::int32_t>(texture.mHeight), {}};
        std::size_t const count = std::size_t{texture.mWidth} * texture.mHeight;
        pixels.rgba.reserve(count * 4);
        for (aiTexel const& texel : std::span(texture.pcData, count))
            pixels.rgba.insert(pixels.rgba.end(), {texel.r, texel.g, texel.b, texel.a});
        return pixels;
    }

    aiScene const& scene_;
    TextureStore& textures_;
    std::string_view relativePrefix_;
    Warnings& warnings_;
};

} // namespace

std::vector<std::size_t> readAssimpMaterials(aiScene const& scene, MaterialTable& table,
                                             TextureStore& textures, std::string_view relativePrefix,
                                             Warnings& warnings)
{
    Reader reader(scene, textures, relativePrefix, warnings);
    std::vector<std::size_t> numbers;
    for (aiMaterial const* const material : std::span(scene.mMaterials, scene.mNumMaterials))
        numbers.push_back(table.add(reader.read(*material)));
    if (numbers.empty())
        numbers.push_back(table.add({}));
    return numbers;
}

} // namespace sgview
