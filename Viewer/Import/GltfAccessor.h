#pragma once

#include "Viewer/Import/GltfDocument.h"

#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

namespace sgview {

/// Numbers of an accessor: `count` elements of `components` each, one after the other.
struct GltfNumbers {
    std::size_t count = 0;
    std::size_t components = 0;
    std::vector<double> values;

    [[nodiscard]] double at(std::size_t element, std::size_t component) const
    {
        return values[element * components + component];
    }
};

/// Reads accessors as glTF 2.0 (section 3.6.2) describes them: strided, normalised, sparse. Every offset and
/// count is checked against the buffer it points into.
///
/// All operations throw ImportError (broken, too big); `what` says in its message what is being read.
class GltfAccessor {
public:
    explicit GltfAccessor(GltfDocument const& document) : document_(&document) {}

    /// \param components  how many an element may have
    [[nodiscard]] GltfNumbers numbers(int accessor, std::initializer_list<std::size_t> components,
                                      std::string_view what) const;

    [[nodiscard]] std::vector<std::uint32_t> indices(int accessor, std::string_view what) const;

    /// The bytes of a buffer view.
    [[nodiscard]] std::span<std::uint8_t const> bytesOf(int bufferView, std::string_view what) const;

private:
    struct Layout;
    void fill(GltfNumbers& numbers, Layout const& layout, int bufferView, std::size_t offset,
              std::string_view what) const;
    void applySparse(GltfNumbers& numbers, tinygltf::Accessor const& accessor, std::string_view what) const;
    [[noreturn]] void fail(std::string_view what, std::string_view reason) const;

    GltfDocument const* document_;
};

} // namespace sgview
