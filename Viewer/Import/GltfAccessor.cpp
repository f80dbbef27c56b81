#include "Viewer/Import/GltfAccessor.h"

#include "Viewer/Import/ImportError.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace sgview {

namespace {

/// An accessor without data is all zeros, however many it claims.
constexpr std::size_t mostZeros = std::size_t{1} << 24;

template <typename T>
double decode(std::uint8_t const* at, bool normalised)
{
    T value;
    std::memcpy(&value, at, sizeof value);
    if constexpr (std::is_integral_v<T>)
        if (normalised)
            return std::max(static_cast<double>(value) / static_cast<double>(std::numeric_limits<T>::max()),
                            -1.0);
    return static_cast<double>(value);
}

using Decoder = double (*)(std::uint8_t const*, bool);

Decoder decoderOf(int componentType)
{
    switch (componentType) {
    case TINYGLTF_COMPONENT_TYPE_BYTE:
        return decode<std::int8_t>;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return decode<std::uint8_t>;
    case TINYGLTF_COMPONENT_TYPE_SHORT:
        return decode<std::int16_t>;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return decode<std::uint16_t>;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT:
        return decode<std::uint32_t>;
    case TINYGLTF_COMPONENT_TYPE_FLOAT:
        return decode<float>;
    default:
        return nullptr;
    }
}

template <typename T>
T const* elementOf(std::vector<T> const& list, int index)
{
    return index >= 0 && static_cast<std::size_t>(index) < list.size()
               ? &list[static_cast<std::size_t>(index)]
               : nullptr;
}

} // namespace

/// How one component is stored.
struct GltfAccessor::Layout {
    Decoder decoder = nullptr;
    std::size_t componentSize = 0;
    bool normalised = false;
};

void GltfAccessor::fail(std::string_view what, std::string_view reason) const
{
    throw ImportError(ImportFailure::broken, document_->file, std::string(what) + ": " + std::string(reason));
}

std::span<std::uint8_t const> GltfAccessor::bytesOf(int bufferView, std::string_view what) const
{
    tinygltf::BufferView const* const view = elementOf(document_->content.bufferViews, bufferView);
    if (view == nullptr)
        fail(what, "buffer view " + std::to_string(bufferView) + " does not exist");
    tinygltf::Buffer const* const buffer = elementOf(document_->content.buffers, view->buffer);
    if (buffer == nullptr)
        fail(what, "buffer " + std::to_string(view->buffer) + " does not exist");
    if (view->byteOffset > buffer->data.size() || view->byteLength > buffer->data.size() - view->byteOffset)
        fail(what, "buffer view " + std::to_string(bufferView) + " reaches beyond its buffer");
    return {buffer->data.data() + view->byteOffset, view->byteLength};
}

void GltfAccessor::fill(GltfNumbers& numbers, Layout const& layout, int bufferView, std::size_t offset,
                        std::string_view what) const
{
    std::span<std::uint8_t const> const bytes = bytesOf(bufferView, what);
    std::size_t const elementSize = layout.componentSize * numbers.components;
    std::size_t const declared =
        document_->content.bufferViews[static_cast<std::size_t>(bufferView)].byteStride;
    std::size_t const stride = declared == 0 ? elementSize : declared;
    if (stride < elementSize)
        fail(what, "its elements overlap");
    if (numbers.count == 0)
        return;
    if (offset > bytes.size() || elementSize > bytes.size() - offset ||
        numbers.count - 1 > (bytes.size() - offset - elementSize) / stride)
        fail(what, "it reaches beyond its buffer view");

    numbers.values.resize(numbers.count * numbers.components);
    for (std::size_t i = 0; i < numbers.count; ++i) {
        std::uint8_t const* const element = bytes.data() + offset + i * stride;
        for (std::size_t c = 0; c < numbers.components; ++c)
            numbers.values[i * numbers.components + c] =
                layout.decoder(element + c * layout.componentSize, layout.normalised);
    }
}

GltfNumbers GltfAccessor::numbers(int index, std::initializer_list<std::size_t> components,
                                  std::string_view what) const
{
    tinygltf::Accessor const* const accessor = elementOf(document_->content.accessors, index);
    if (accessor == nullptr)
        fail(what, "accessor " + std::to_string(index) + " does not exist");

    Layout layout;
    layout.decoder = decoderOf(accessor->componentType);
    int const componentsInFile = tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(accessor->type));
    if (layout.decoder == nullptr || componentsInFile <= 0)
        fail(what, "its type is unknown");
    layout.componentSize = static_cast<std::size_t>(
        tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(accessor->componentType)));
    layout.normalised = accessor->normalized;

    GltfNumbers numbers;
    numbers.count = accessor->count;
    numbers.components = static_cast<std::size_t>(componentsInFile);
    if (std::ranges::find(components, numbers.components) == components.end())
        fail(what, std::to_string(numbers.components) + " components are too many or too few");
    if (accessor->bufferView >= 0) {
        fill(numbers, layout, accessor->bufferView, accessor->byteOffset, what);
    } else {
        if (numbers.count > mostZeros)
            throw ImportError(ImportFailure::tooBig, document_->file,
                              std::string(what) + ": " + std::to_string(numbers.count) +
                                  " elements without data");
        numbers.values.assign(numbers.count * numbers.components, 0.0);
    }
    if (accessor->sparse.isSparse)
        applySparse(numbers, *accessor, what);
    return numbers;
}

void GltfAccessor::applySparse(GltfNumbers& numbers, tinygltf::Accessor const& accessor,
                               std::string_view what) const
{
    auto const& sparse = accessor.sparse;
    if (sparse.count < 0 || sparse.indices.byteOffset < 0 || sparse.values.byteOffset < 0)
        fail(what, "its sparse part has a negative number");
    auto const sizeOf = [](int componentType) {
        return static_cast<std::size_t>(
            std::max(0, tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(componentType))));
    };
    Layout const indexLayout{decoderOf(sparse.indices.componentType), sizeOf(sparse.indices.componentType),
                             false};
    Layout const valueLayout{decoderOf(accessor.componentType), sizeOf(accessor.componentType),
                             accessor.normalized};
    if (indexLayout.decoder == nullptr || sparse.indices.componentType == TINYGLTF_COMPONENT_TYPE_FLOAT)
        fail(what, "its sparse indices have an unknown type");

    GltfNumbers places{static_cast<std::size_t>(sparse.count), 1, {}};
    fill(places, indexLayout, sparse.indices.bufferView, static_cast<std::size_t>(sparse.indices.byteOffset),
         what);
    GltfNumbers values{places.count, numbers.components, {}};
    fill(values, valueLayout, sparse.values.bufferView, static_cast<std::size_t>(sparse.values.byteOffset),
         what);
    for (std::size_t i = 0; i < places.count; ++i) {
        double const place = places.values[i];
        if (!(place >= 0.0 && place < static_cast<double>(numbers.count)))
            fail(what, "a sparse index is out of range");
        for (std::size_t c = 0; c < numbers.components; ++c)
            numbers.values[static_cast<std::size_t>(place) * numbers.components + c] = values.at(i, c);
    }
}

std::vector<std::uint32_t> GltfAccessor::indices(int index, std::string_view what) const
{
    tinygltf::Accessor const* const accessor = elementOf(document_->content.accessors, index);
    if (accessor != nullptr && accessor->componentType != TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE &&
        accessor->componentType != TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT &&
        accessor->componentType != TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT)
        fail(what, "indices are whole numbers from 0 on");
    GltfNumbers const numbers = this->numbers(index, {1}, what);
    std::vector<std::uint32_t> indices(numbers.values.size());
    std::ranges::transform(numbers.values, indices.begin(), [](double value) {
        return value >= 0.0 && value <= 4294967295.0 ? static_cast<std::uint32_t>(value) : 0xFFFFFFFFU;
    });
    return indices;
}

} // namespace sgview
