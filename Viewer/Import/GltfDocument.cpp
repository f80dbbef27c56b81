#include "Viewer/Import/GltfDocument.h"

#include "Viewer/Import/ImportError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <map>
#include <string_view>

namespace sgview {

namespace {

constexpr std::size_t glbHeader = 12;
constexpr std::size_t glbChunkHeader = 8;

/// tinygltf and the JSON library recurse; real files nest a dozen levels.
constexpr int deepestNesting = 200;

constexpr std::array<std::string_view, 12> knownExtensions{
    "KHR_texture_transform", "KHR_materials_unlit",    "KHR_materials_pbrSpecularGlossiness",
    "KHR_mesh_quantization", "KHR_lights_punctual",    "KHR_materials_emissive_strength",
    "KHR_materials_ior",     "KHR_materials_specular", "KHR_materials_clearcoat",
    "KHR_materials_sheen",   "KHR_materials_volume",   "KHR_materials_transmission"};

std::uint32_t wordAt(Bytes const& bytes, std::size_t at)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + at, sizeof word);
    return word;
}

/// The JSON part. tinygltf trusts the length of the second chunk by 8 bytes too many, so both are checked
/// here.
std::string_view jsonOf(std::string const& file, Bytes const& bytes, bool binary)
{
    auto const text = [&](std::size_t from, std::size_t size) {
        return std::string_view(reinterpret_cast<char const*>(bytes.data()) + from, size);
    };
    if (!binary)
        return text(0, bytes.size());
    auto const require = [&](bool holds, std::string_view reason) {
        if (!holds)
            throw ImportError(ImportFailure::broken, file, reason);
    };
    require(bytes.size() >= glbHeader + glbChunkHeader, "the binary glTF header is cut off");
    std::size_t const length = wordAt(bytes, 8);
    require(length <= bytes.size(), "the file is shorter than its header says");
    std::size_t const json = wordAt(bytes, glbHeader);
    std::size_t const afterJson = glbHeader + glbChunkHeader + json;
    require(afterJson <= length, "the JSON chunk is cut off");
    if (afterJson < length) {
        require(afterJson + glbChunkHeader <= length, "the second chunk's header is cut off");
        require(afterJson + glbChunkHeader + wordAt(bytes, afterJson) <= length,
                "the second chunk is cut off");
    }
    return text(glbHeader + glbChunkHeader, json);
}

void checkNesting(std::string const& file, std::string_view json)
{
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < json.size(); ++i) {
        char const c = json[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            if (++depth > deepestNesting)
                throw ImportError(ImportFailure::broken, file, "the JSON is nested too deeply");
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
}

std::string percentDecoded(std::string_view uri)
{
    std::string text;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        unsigned char code = 0;
        if (uri[i] == '%' && i + 2 < uri.size() &&
            std::from_chars(uri.data() + i + 1, uri.data() + i + 3, code, 16).ptr == uri.data() + i + 3) {
            text += static_cast<char>(code);
            i += 2;
        } else {
            text += uri[i];
        }
    }
    return text;
}

/// What tinygltf's callbacks share.
struct Source {
    FileAccess* access;
    std::map<std::string, std::size_t> bufferLengths; ///< by name; a file may be longer than its buffer
};

/// \throws ImportError
Source inspect(std::string const& file, std::string_view json, FileAccess& access, Warnings& warnings)
{
    auto const document = nlohmann::json::parse(json.begin(), json.end(), nullptr, false);
    if (!document.is_object())
        throw ImportError(ImportFailure::broken, file, "the JSON cannot be parsed");
    Source source{&access, {}};
    auto const arrayOf = [&](char const* name) {
        auto const found = document.find(name);
        return found != document.end() && found->is_array() ? *found : nlohmann::json::array();
    };
    for (auto const& extension : arrayOf("extensionsRequired")) {
        if (!extension.is_string() ||
            std::ranges::find(knownExtensions, extension.get<std::string>()) != knownExtensions.end())
            continue;
        auto const name = extension.get<std::string>();
        if (!name.starts_with("KHR_materials_"))
            throw ImportError(ImportFailure::formatNotRead, file,
                              "needs the extension " + name + ", which is not read");
        warnings.add("extension " + name + ": left out");
    }
    for (auto const& buffer : arrayOf("buffers")) {
        if (!buffer.is_object() || !buffer.contains("uri") || !buffer["uri"].is_string() ||
            !buffer.contains("byteLength") || !buffer["byteLength"].is_number_unsigned())
            continue;
        source.bufferLengths[percentDecoded(buffer["uri"].get<std::string>())] =
            buffer["byteLength"].get<std::size_t>();
    }
    return source;
}

bool readWholeFile(std::vector<unsigned char>* out, std::string* error, std::string const& name, void* user)
{
    auto* const source = static_cast<Source*>(user);
    std::optional<Bytes> bytes = source->access->read(name);
    if (!bytes) {
        if (error != nullptr)
            *error += "not found";
        return false;
    }
    auto const buffer = source->bufferLengths.find(name);
    if (buffer != source->bufferLengths.end() && bytes->size() > buffer->second)
        bytes->resize(buffer->second);
    *out = std::move(*bytes);
    return true;
}

/// Keeps the encoded bytes. Those in buffer views are left where they are: tinygltf does not check where the
/// view lies.
bool keepEncoded(tinygltf::Image* image, int, std::string*, std::string*, int, int,
                 unsigned char const* bytes, int size, void*)
{
    if (image->bufferView < 0)
        image->image.assign(bytes, bytes + size);
    return true;
}

void setCallbacks(tinygltf::TinyGLTF& loader, Source& source)
{
    tinygltf::FsCallbacks callbacks{};
    // tinygltf asks for a name as it stands and then once more behind "./"; whether it exists shows on
    // reading.
    callbacks.FileExists = [](std::string const& name, void*) { return !name.starts_with("./"); };
    callbacks.ExpandFilePath = [](std::string const& name, void*) { return name; };
    callbacks.ReadWholeFile = readWholeFile;
    callbacks.WriteWholeFile = [](std::string*, std::string const&, std::vector<unsigned char> const&,
                                  void*) { return false; };
    callbacks.user_data = &source;
    loader.SetFsCallbacks(callbacks);
    loader.SetImageLoader(keepEncoded, nullptr);
}

ImportError failureOf(std::string const& file, Source const& source, std::string const& error)
{
    for (auto const& [name, length] : source.bufferLengths) {
        bool const isFile = !name.starts_with("data:");
        if (isFile && FileAccess::isRefused(name) && !source.access->resolve(name))
            return {ImportFailure::refusedPath, file,
                    "buffer '" + name + "' lies outside the model's folder"};
        if (isFile && !source.access->resolve(name))
            return {ImportFailure::broken, file, "buffer '" + name + "' is missing"};
    }
    return {ImportFailure::broken, file, error.empty() ? "not a valid glTF file" : error};
}

} // namespace

GltfDocument parseGltf(std::filesystem::path const& file, Bytes const& bytes, FileAccess& access,
                       Warnings& warnings)
{
    GltfDocument document;
    document.file = file.string();
    document.binary = bytes.size() >= 4 && std::equal(bytes.begin(), bytes.begin() + 4, "glTF");
    std::string_view const json = jsonOf(document.file, bytes, document.binary);
    checkNesting(document.file, json);
    Source source = inspect(document.file, json, access, warnings);

    tinygltf::TinyGLTF loader;
    setCallbacks(loader, source);
    std::string error;
    std::string remark;
    bool parsed = false;
    auto const length = static_cast<unsigned int>(bytes.size());
    try {
        parsed =
            document.binary
                ? loader.LoadBinaryFromMemory(&document.content, &error, &remark, bytes.data(), length)
                : loader.LoadASCIIFromString(&document.content, &error, &remark, json.data(), length, "");
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const& thrown) {
        error = thrown.what();
    }
    if (!parsed)
        throw failureOf(document.file, source, error);
    return document;
}

} // namespace sgview
