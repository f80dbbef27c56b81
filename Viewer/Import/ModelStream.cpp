#include "Viewer/Import/ModelStream.h"

#include "Viewer/Import/ImportError.h"

#include <cstring>
#include <type_traits>

namespace sgview {

namespace {

/// Types whose every bit pattern is a value, and which have no padding.
template <typename T>
inline constexpr bool isPlain =
    std::is_same_v<T, double> || std::is_same_v<T, float> || std::is_same_v<T, std::int32_t> ||
    std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::uint8_t> || std::is_same_v<T, std::uint64_t> ||
    std::is_same_v<T, char> || std::is_same_v<T, Vector3> || std::is_same_v<T, Quaternion> ||
    std::is_same_v<T, Matrix> || std::is_same_v<T, std::array<double, 2>> ||
    std::is_same_v<T, std::array<float, 4>>;

class Writer {
public:
    explicit Writer(ByteSink const& sink) : sink_(sink) {}

    template <typename T>
    void list(std::vector<T> const& items)
    {
        count(items.size());
        if constexpr (isPlain<T>)
            raw(items.data(), items.size() * sizeof(T));
        else
            for (T const& item : items)
                value(item);
    }
    template <typename T>
    void value(T const& item)
    {
        if constexpr (isPlain<T>)
            raw(&item, sizeof(T));
        else
            transfer(*this, item);
    }
    void value(bool item) { value(static_cast<std::uint8_t>(item ? 1 : 0)); }
    void value(Interpolation item) { value(static_cast<std::uint8_t>(item)); }
    void value(std::string const& text)
    {
        count(text.size());
        raw(text.data(), text.size());
    }
    template <typename T>
    void value(std::vector<T> const& items)
    {
        list(items);
    }
    void flush()
    {
        sink_(buffer_);
        buffer_.clear();
    }

private:
    void count(std::size_t size) { value(static_cast<std::uint64_t>(size)); }
    void raw(void const* data, std::size_t size)
    {
        constexpr std::size_t piece = 65536;
        auto const* bytes = static_cast<std::uint8_t const*>(data);
        if (buffer_.size() + size > piece)
            flush();
        if (size > piece)
            sink_({bytes, size});
        else
            buffer_.insert(buffer_.end(), bytes, bytes + size);
    }

    ByteSink const& sink_;
    std::vector<std::uint8_t> buffer_;
};

class Reader {
public:
    explicit Reader(std::span<std::uint8_t const> bytes) : rest_(bytes) {}

    template <typename T>
    void value(T& item)
    {
        if constexpr (isPlain<T>)
            std::memcpy(static_cast<void*>(&item), take(sizeof(T)).data(), sizeof(T));
        else
            transfer(*this, item);
    }
    void value(bool& item)
    {
        std::uint8_t byte = 0;
        value(byte);
        item = byte != 0;
    }
    void value(Interpolation& item)
    {
        std::uint8_t byte = 0;
        value(byte);
        item = static_cast<Interpolation>(byte);
    }
    void value(std::string& text)
    {
        auto const bytes = take(count(1));
        text.assign(bytes.begin(), bytes.end());
    }
    template <typename T>
    void value(std::vector<T>& items)
    {
        if constexpr (isPlain<T>) {
            std::size_t const size = count(sizeof(T));
            auto const bytes = take(size * sizeof(T));
            items.resize(size);
            if (size > 0)
                std::memcpy(static_cast<void*>(items.data()), bytes.data(), bytes.size());
        } else {
            // Grown item by item: an item takes bytes of the stream, so the list cannot outgrow it by much.
            for (std::size_t left = count(1); left > 0; --left)
                value(items.emplace_back());
        }
    }
    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    [[nodiscard]] std::span<std::uint8_t const> rest() const { return rest_; }

private:
    std::size_t count(std::size_t itemSize)
    {
        std::uint64_t size = 0;
        value(size);
        if (size > rest_.size() / itemSize)
            throw ImportError(ImportFailure::broken, "model stream: a list longer than the stream");
        return static_cast<std::size_t>(size);
    }
    std::span<std::uint8_t const> take(std::size_t size)
    {
        if (size > rest_.size())
            throw ImportError(ImportFailure::broken, "model stream: it ends early");
        auto const taken = rest_.first(size);
        rest_ = rest_.subspan(size);
        return taken;
    }

    std::span<std::uint8_t const> rest_;
};

template <typename Archive, typename... Ts>
void each(Archive& archive, Ts&... items)
{
    (archive.value(items), ...);
}

// One list of members for both directions: `T` is the type itself or its const.
template <typename T, typename Kind>
concept Of = std::is_same_v<std::remove_const_t<T>, Kind>;

template <typename T>
inline constexpr bool isTrack = false;
template <typename T>
inline constexpr bool isTrack<ModelTrack<T>> = true;

template <typename Archive, typename T>
void transfer(Archive& a, T& item)
{
    if constexpr (Of<T, ModelImage>)
        each(a, item.name, item.width, item.height, item.alpha, item.rows);
    else if constexpr (Of<T, ModelTexture>)
        each(a, item.image, item.coordinates, item.clamp);
    else if constexpr (Of<T, ModelMaterial>)
        each(a, item.name, item.ambient, item.diffuse, item.specular, item.emissive, item.shininess,
             item.blending, item.unlit, item.textures);
    else if constexpr (Of<T, ModelInfluence>)
        each(a, item.bone, item.weight);
    else if constexpr (Of<T, ModelSurface>)
        each(a, item.name, item.material, item.positions, item.normals, item.coordinates, item.facets,
             item.skin, item.influenceOffsets, item.influences, item.mostInfluencesInFile,
             item.droppedInfluences);
    else if constexpr (Of<T, ModelSplit>)
        each(a, item.name, item.first, item.parts);
    else if constexpr (Of<T, ModelCurve>)
        each(a, item.name, item.material, item.positions, item.closed);
    else if constexpr (Of<T, ModelBone>)
        each(a, item.node, item.inverseBind);
    else if constexpr (Of<T, ModelSkin>)
        each(a, item.name, item.bones);
    else if constexpr (Of<T, ModelNode>)
        each(a, item.name, item.parent, item.translation, item.rotation, item.scale, item.hasMatrix,
             item.matrix, item.surfaces, item.curves);
    else if constexpr (isTrack<std::remove_const_t<T>>)
        each(a, item.interpolation, item.times, item.values);
    else if constexpr (Of<T, FileStamp>)
        each(a, item.time, item.size);
    else if constexpr (Of<T, ModelChannel>)
        each(a, item.node, item.translation, item.rotation, item.scale);
    else if constexpr (Of<T, ModelAnimation>)
        each(a, item.name, item.length, item.channels);
    else {
        static_assert(Of<T, Model>);
        each(a, item.format, item.nodes, item.surfaces, item.curves, item.materials, item.images, item.skins,
             item.animations, item.splits, item.warnings);
    }
}

} // namespace

void writeSources(SourceFiles const& sources, ByteSink const& sink)
{
    Writer writer(sink);
    writer.value(static_cast<std::uint64_t>(sources.size()));
    for (SourceFile const& source : sources) {
        writer.value(source.file.string());
        writer.value(source.stamp.has_value());
        writer.value(source.stamp.value_or(FileStamp()));
    }
    writer.flush();
}

SourceFiles readSources(std::span<std::uint8_t const>& bytes)
{
    Reader reader(bytes);
    std::uint64_t count = 0;
    reader.value(count);
    if (count > mostSourceFiles)
        throw ImportError(ImportFailure::broken, "model stream: more files than can be");
    SourceFiles sources(static_cast<std::size_t>(count));
    for (SourceFile& source : sources) {
        std::string file;
        bool exists = false;
        FileStamp stamp;
        each(reader, file, exists, stamp);
        source.file = file;
        if (exists)
            source.stamp = stamp;
    }
    bytes = reader.rest();
    return sources;
}

void writeModel(Model const& model, ByteSink const& sink)
{
    Writer writer(sink);
    writer.value(model);
    writer.flush();
}

Model readModel(std::span<std::uint8_t const> bytes)
{
    Reader reader(bytes);
    Model model;
    reader.value(model);
    if (!reader.atEnd())
        throw ImportError(ImportFailure::broken, "model stream: bytes left over");
    return model;
}

} // namespace sgview
