#include "Viewer/Import/FileKind.h"

#include "Viewer/Import/FileNames.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/PictureHeader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <initializer_list>
#include <string_view>

namespace sgview {

namespace {

using Content = std::span<std::uint8_t const>;

constexpr std::size_t inspected = 4096;

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words)
{
    return std::ranges::find(words, word) != words.end();
}

/// As `extensionOf`, with the twofold extensions that tell Ogre's files apart.
std::string longExtensionOf(std::string const& name)
{
    std::string const file = lowerCase(name);
    for (std::string_view const twofold : {"mesh.xml", "skeleton.xml"})
        if (file.ends_with("." + std::string(twofold)))
            return std::string(twofold);
    return extensionOf(name);
}

std::string beginning(Content content)
{
    Content const start = content.first(std::min(content.size(), inspected));
    std::string const text(start.begin(), start.end());
    return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

bool isText(std::string_view start)
{
    return std::ranges::none_of(start, [](char c) {
        auto const code = static_cast<unsigned char>(c);
        return code == 0x7F || (code < 0x20 && std::isspace(code) == 0 && code != 0x1A);
    });
}

std::string_view withoutBlanks(std::string_view text)
{
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// The name of an XML text's root element, lower case; empty if it is not XML.
std::string rootElement(std::string_view text)
{
    text = withoutBlanks(text);
    while (text.starts_with("<?") || text.starts_with("<!")) {
        std::string_view const end = text.starts_with("<!--") ? "-->" : ">";
        std::size_t const at = text.find(end);
        if (at == std::string_view::npos)
            return {};
        text = withoutBlanks(text.substr(at + end.size()));
    }
    if (!text.starts_with('<'))
        return {};
    return lowerCase(text.substr(1, text.find_first_of(" \t\r\n/>", 1) - 1));
}

std::string formatOfXml(std::string const& root, std::string_view text)
{
    if (root == "collada")
        return "dae";
    if (root == "x3d")
        return "x3d";
    if (root == "world")
        return "xgl";
    if (root == "amf")
        return "amf";
    if (root == "irr_scene")
        return "irr";
    if (root == "mesh")
        return text.find("irrlicht") != std::string_view::npos ? "irrmesh" : "mesh.xml";
    return {};
}

struct Signature {
    std::string_view magic;
    std::string_view extension;
};

constexpr std::array signatures{
    Signature{"glTF", "glb"},
    Signature{"Kaydara FBX Binary", "fbx"},
    Signature{"xof 0", "x"},
    Signature{"*3DSMAX_ASCIIEXPORT", "ase"},
    Signature{"AC3D", "ac"},
    Signature{"OFF\n", "off"},
    Signature{"OFF\r", "off"},
    Signature{"ply\n", "ply"},
    Signature{"ply\r", "ply"},
    Signature{"HMP4", "hmp"},
    Signature{"HMP5", "hmp"},
    Signature{"HMP7", "hmp"},
    Signature{"BLENDER", "blend"},
    Signature{"quick3D", "q3o"},
    Signature{"LWSC", "lws"},
    Signature{"MD5Version", "md5mesh"},
    Signature{"INTERQUAKEMODEL", "iqm"},
    Signature{"MS3D000000", "ms3d"},
    Signature{"IDP2", "md2"},
    Signature{"IDP3", "md3"},
    Signature{"IDPC", "mdc"},
    Signature{"IDPO", "mdl"},
    Signature{"IDST", "mdl"},
    Signature{"TERRAGEN", "ter"},
    Signature{"Caligari ", "cob"},
    Signature{"BB3D", "b3d"},
    Signature{"ISO-10303-21", "ifc"},
    Signature{"solid ", "stl"},
};

bool is3ds(Content content)
{
    if (content.size() < 12 || content[0] != 0x4D || content[1] != 0x4D)
        return false;
    std::uint64_t const length =
        content[2] + content[3] * 256ULL + content[4] * 65536ULL + content[5] * 16777216ULL;
    return length >= 6 && length <= content.size();
}

bool isDxf(std::string_view text)
{
    std::size_t const section = text.find("SECTION");
    return section != std::string_view::npos && text.find("HEADER", section) != std::string_view::npos &&
           text.find("$ACADVER", section) != std::string_view::npos;
}

/// The extension that content of its own tells; empty where it tells none.
std::string formatByContent(Content content, std::string_view text)
{
    for (Signature const& signature : signatures)
        if (text.starts_with(signature.magic))
            return std::string(signature.extension);
    if (text.starts_with("FORM") && text.size() > 12 && isOneOf(text.substr(8, 4), {"LWOB", "LWO2", "LXOB"}))
        return "lwo";
    if (is3ds(content))
        return "3ds";
    if (isDxf(text))
        return "dxf";
    if (withoutBlanks(text).starts_with('{') && text.find("\"asset\"") != std::string_view::npos)
        return "gltf";
    return formatOfXml(rootElement(text), text);
}

constexpr auto extensionsRead = std::to_array<std::string_view>(
    {"3d",      "3ds",  "3mf",    "ac",   "ac3d",     "acc",     "amf", "ase",  "ask", "assbin", "b3d",
     "blend",   "bsp",  "bvh",    "cob",  "csm",      "dae",     "dxf", "enff", "fbx", "glb",    "gltf",
     "hmp",     "ifc",  "ifczip", "iqm",  "irr",      "irrmesh", "lwo", "lws",  "lxo", "md2",    "md3",
     "md5mesh", "mdc",  "mdl",    "mesh", "mesh.xml", "ms3d",    "ndo", "nff",  "obj", "off",    "ogex",
     "pk3",     "ply",  "pmx",    "prj",  "q3o",      "q3s",     "raw", "scn",  "sib", "smd",    "stl",
     "stp",     "step", "ter",    "x",    "x3d",      "x3db",    "xgl", "zae",  "zgl"});

bool isRead(std::string_view extension)
{
    return std::ranges::find(extensionsRead, extension) != extensionsRead.end();
}

/// What a side file is to the model it belongs to; empty for any other file.
std::string_view roleOfSideFile(std::string_view extension, std::string_view text)
{
    struct Role {
        std::string_view extension;
        std::string_view role;
    };
    static constexpr std::array roles{
        Role{"bin", "the data of a glTF model"},
        Role{"mtl", "the materials of an OBJ model"},
        Role{"md5anim", "an animation of an MD5 model"},
        Role{"md5camera", "a camera path of an MD5 model"},
        Role{"skeleton", "the skeleton of an Ogre model"},
        Role{"skeleton.xml", "the skeleton of an Ogre model"},
        Role{"material", "the materials of an Ogre model"},
        Role{"vta", "the vertex animation of an SMD model"},
        Role{"mot", "the motion of a LightWave model"},
        Role{"uc", "the script of an Unreal model"},
        Role{"glsl", "a shader of a glTF model"},
        Role{"vert", "a shader of a glTF model"},
        Role{"frag", "a shader of a glTF model"},
    };
    for (Role const& role : roles)
        if (role.extension == extension)
            return role.role;
    if (extension == "mdl" && text.starts_with("IDSQ"))
        return "animations of a Half-Life model";
    return {};
}

constexpr std::uint32_t halfLifeBodyParts = 204; // where a Half-Life model's header counts its body parts

bool isHalfLifeTextureFile(std::string_view extension, Content content)
{
    if (extension != "mdl" || content.size() < halfLifeBodyParts + 4 ||
        std::string_view(reinterpret_cast<char const*>(content.data()), 4) != "IDST")
        return false;
    Content const count = content.subspan(halfLifeBodyParts, 4);
    return std::ranges::all_of(count, [](std::uint8_t byte) { return byte == 0; });
}

bool isProse(std::string_view extension)
{
    return isOneOf(extension, {"txt", "md", "rst", "html", "htm", "log", "ini", "cfg", "csv", "yml", "yaml",
                               "py",  "c",  "cpp", "h",    "hpp", "sh",  "js",  "css", "tex", "rtf"});
}

bool isPictureName(std::string_view extension)
{
    return isOneOf(extension, {"png", "jpg", "jpeg", "bmp", "gif", "tga", "tif", "tiff", "webp", "pcx", "dds",
                               "psd", "hdr", "exr", "ico", "ktx", "svg"});
}

/// glTF 1 and glTF 2 share extensions; the version decides who reads them.
bool isGltf2(Content content, std::string_view extension)
{
    if (extension == "glb")
        return content.size() < 8 || content[4] == 2;
    std::string_view const text(reinterpret_cast<char const*>(content.data()), content.size());
    std::size_t const asset = text.find("\"asset\"");
    std::size_t const version = text.find("\"version\"", asset == std::string_view::npos ? 0 : asset);
    if (version == std::string_view::npos)
        return true;
    std::size_t const value = text.find_first_of("\"0123456789", version + 9);
    return value == std::string_view::npos || text.substr(value, 2).find('1') == std::string_view::npos;
}

} // namespace

FileKind classify(std::filesystem::path const& file, Content content)
{
    auto const refuse = [&](ImportFailure failure, std::string_view reason) -> ImportError {
        return {failure, file.string(), reason};
    };

    std::string const extension = longExtensionOf(file.filename().string());
    std::string const text = beginning(content);

    if (withoutBlanks(text).empty() && content.size() <= inspected)
        throw refuse(ImportFailure::emptyFile, "the file holds nothing but blanks");
    if (isPictureName(extension) || readPictureHeader(content, extension))
        throw refuse(ImportFailure::picture, "a picture, not a model");
    if (isProse(extension))
        throw refuse(ImportFailure::textFile, "a text file, not a model");
    if (std::string_view const role = roleOfSideFile(extension, text); !role.empty())
        throw refuse(ImportFailure::sideFile, std::string(role) + ", not a model of its own");
    if (isHalfLifeTextureFile(extension, content))
        throw refuse(ImportFailure::sideFile, "the textures of a Half-Life model, not a model of its own");

    std::string format = formatByContent(content, text);
    if (isRead(extension) && format != "glb" && format != "gltf")
        format = extension;
    if (format == "gltf" || format == "glb")
        return {isGltf2(content, format) ? FileKind::Reader::gltf2 : FileKind::Reader::assimp, format};
    if (!format.empty())
        return {FileKind::Reader::assimp, format};
    if (isText(text) && (extension.empty() || extension == "xml" || extension == "json"))
        throw refuse(ImportFailure::textFile, "a text file, not a model");
    throw refuse(ImportFailure::formatNotRead,
                 extension.empty() ? "no known model format" : "the format ." + extension + " is not read");
}

std::span<std::string_view const> modelExtensions()
{
    return extensionsRead;
}

bool hasModelName(std::filesystem::path const& file)
{
    return isRead(longExtensionOf(file.filename().string()));
}

} // namespace sgview
