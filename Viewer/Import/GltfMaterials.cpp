#include "Viewer/Import/GltfMaterials.h"

#include "Viewer/Import/GltfAccessor.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/PhysicalMaterial.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace sgview {

namespace {

class Reader {
public:
    Reader(GltfDocument const& document, TextureStore& textures, Warnings& warnings)
        : document_(document), textures_(textures), warnings_(warnings)
    {
    }

    MaterialPlan read(tinygltf::Material const& source)
    {
        MaterialPlan plan;
        plan.material.name = source.name;
        auto const glossy = source.extensions.find("KHR_materials_pbrSpecularGlossiness");
        if (glossy != source.extensions.end())
            readGlossy(glossy->second, plan);
        else
            readMetallic(source.pbrMetallicRoughness, plan);

        plan.material.unlit = source.extensions.contains("KHR_materials_unlit");
        plan.material.blending = source.alphaMode == "BLEND" || source.alphaMode == "MASK";
        if (!plan.material.blending)
            plan.material.diffuse[3] = plan.material.ambient[3] = 1.0F;
        readEmission(source, plan);
        noteMissing(source);
        return plan;
    }

private:
    static Colour colour(std::vector<double> const& numbers, Colour const& otherwise)
    {
        Colour result = otherwise;
        for (std::size_t i = 0; i < numbers.size() && i < result.size(); ++i)
            result[i] = fraction(numbers[i]);
        return result;
    }

    static std::vector<double> numbersOf(tinygltf::Value const& object, std::string const& name)
    {
        std::vector<double> numbers;
        if (object.Has(name) && object.Get(name).IsArray())
            for (std::size_t i = 0; i < object.Get(name).ArrayLen(); ++i)
                numbers.push_back(object.Get(name).Get(static_cast<int>(i)).GetNumberAsDouble());
        return numbers;
    }

    static double numberOf(tinygltf::Value const& object, std::string const& name, double otherwise)
    {
        return object.Has(name) && object.Get(name).IsNumber() ? object.Get(name).GetNumberAsDouble()
                                                               : otherwise;
    }

    void readMetallic(tinygltf::PbrMetallicRoughness const& source, MaterialPlan& plan)
    {
        setMetallic(plan.material, colour(source.baseColorFactor, {1, 1, 1, 1}), source.metallicFactor,
                    source.roughnessFactor);
        addLayer(plan, source.baseColorTexture.index, source.baseColorTexture.texCoord,
                 source.baseColorTexture.extensions);
    }

    void readGlossy(tinygltf::Value const& source, MaterialPlan& plan)
    {
        setGlossy(plan.material, colour(numbersOf(source, "diffuseFactor"), {1, 1, 1, 1}),
                  colour(numbersOf(source, "specularFactor"), {1, 1, 1, 1}),
                  numberOf(source, "glossinessFactor", 1.0));
        if (!source.Has("diffuseTexture"))
            return;
        tinygltf::Value const& texture = source.Get("diffuseTexture");
        tinygltf::ExtensionMap extensions;
        if (texture.Has("extensions") && texture.Get("extensions").IsObject())
            extensions = texture.Get("extensions").Get<tinygltf::Value::Object>();
        addLayer(plan, static_cast<int>(numberOf(texture, "index", none)),
                 static_cast<int>(numberOf(texture, "texCoord", 0)), extensions);
    }

    void addLayer(MaterialPlan& plan, int texture, int set, tinygltf::ExtensionMap const& extensions)
    {
        if (texture < 0)
            return;
        ModelTexture layer;
        layer.image = imageOf(texture, plan.material.name, layer.clamp);
        if (layer.image == none)
            return;
        plan.material.textures.push_back(layer);
        plan.sources.push_back(sourceOf(set, extensions));
    }

    /// KHR_texture_transform: translation * rotation * scale, turning counter-clockwise as seen with v
    /// downwards.
    static CoordinateSource sourceOf(int set, tinygltf::ExtensionMap const& extensions)
    {
        CoordinateSource source{set, {1, 0, 0, 0, 1, 0}};
        auto const found = extensions.find("KHR_texture_transform");
        if (found == extensions.end())
            return source;
        tinygltf::Value const& transform = found->second;
        auto const pair = [&](char const* name, double otherwise) {
            std::vector<double> numbers = numbersOf(transform, name);
            numbers.resize(2, otherwise);
            return numbers;
        };
        std::vector<double> const offset = pair("offset", 0.0);
        std::vector<double> const scale = pair("scale", 1.0);
        double const angle = numberOf(transform, "rotation", 0.0);
        double const c = std::cos(angle);
        double const s = std::sin(angle);
        source.set = static_cast<Index>(numberOf(transform, "texCoord", set));
        source.map = {c * scale[0], s * scale[1], offset[0], -s * scale[0], c * scale[1], offset[1]};
        return source;
    }

    Index imageOf(int index, std::string const& material, bool& clamp)
    {
        tinygltf::Model const& content = document_.content;
        auto const exists = [](int i, auto const& list) {
            return i >= 0 && static_cast<std::size_t>(i) < list.size();
        };
        if (!exists(index, content.textures) ||
            !exists(content.textures[static_cast<std::size_t>(index)].source, content.images)) {
            warnings_.add("material '" + material +
                          "': its texture does not exist or has no picture that is read");
            return none;
        }
        tinygltf::Texture const& texture = content.textures[static_cast<std::size_t>(index)];
        if (exists(texture.sampler, content.samplers)) {
            tinygltf::Sampler const& sampler = content.samplers[static_cast<std::size_t>(texture.sampler)];
            clamp = sampler.wrapS == TINYGLTF_TEXTURE_WRAP_CLAMP_TO_EDGE &&
                    sampler.wrapT == TINYGLTF_TEXTURE_WRAP_CLAMP_TO_EDGE;
        }
        return load(texture.source);
    }

    Index load(int index)
    {
        tinygltf::Image const& image = document_.content.images[static_cast<std::size_t>(index)];
        bool const missing = image.bufferView < 0 && image.image.empty();
        std::string const key =
            image.uri.empty() ? "embedded " + std::to_string(index) : image.uri.substr(0, longestName);
        return textures_.embedded(key, [&] {
            if (missing)
                throw PictureError(textures_.absenceOf(image.uri));
            if (image.bufferView < 0)
                return decodePicture(image.image, image.uri);
            try {
                return decodePicture(GltfAccessor(document_).bytesOf(image.bufferView, key), image.name);
            } catch (ImportError const& error) {
                throw PictureError(error.what());
            }
        });
    }

    void readEmission(tinygltf::Material const& source, MaterialPlan& plan)
    {
        ModelMaterial& material = plan.material;
        material.emissive = colour(source.emissiveFactor, {0, 0, 0, 1});
        bool const glows = material.emissive[0] + material.emissive[1] + material.emissive[2] > 0.0F;
        if (source.emissiveTexture.index < 0 || !glows)
            return;
        Colour const glow = std::exchange(material.emissive, {0, 0, 0, 1});
        bool const isBlack = material.diffuse[0] + material.diffuse[1] + material.diffuse[2] == 0.0F;
        if (isBlack && material.textures.empty()) { // all the light it gives is its own
            addLayer(plan, source.emissiveTexture.index, source.emissiveTexture.texCoord,
                     source.emissiveTexture.extensions);
            if (!material.textures.empty()) {
                std::copy_n(glow.begin(), 3, material.diffuse.begin());
                material.ambient = material.diffuse;
                material.unlit = true;
            }
            return;
        }
        // Without its texture the whole surface would glow.
        warnings_.add("material '" + source.name + "': its emissive texture is not drawn");
    }

    void noteMissing(tinygltf::Material const& source)
    {
        if (source.normalTexture.index >= 0)
            warnings_.add("normal maps are not drawn");
        if (source.occlusionTexture.index >= 0)
            warnings_.add("occlusion maps are not drawn");
        if (source.pbrMetallicRoughness.metallicRoughnessTexture.index >= 0)
            warnings_.add("metallic-roughness maps are not drawn");
    }

    static constexpr std::size_t longestName = 200;

    GltfDocument const& document_;
    TextureStore& textures_;
    Warnings& warnings_;
};

} // namespace

std::vector<std::size_t> readGltfMaterials(GltfDocument const& document, MaterialTable& table,
                                           TextureStore& textures, Warnings& warnings)
{
    Reader reader(document, textures, warnings);
    std::vector<std::size_t> numbers;
    for (tinygltf::Material const& material : document.content.materials)
        numbers.push_back(table.add(reader.read(material)));
    numbers.push_back(table.add(reader.read(tinygltf::Material())));
    return numbers;
}

} // namespace sgview
