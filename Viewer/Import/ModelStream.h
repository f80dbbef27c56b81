#pragma once

#include "Viewer/Import/Model.h"
#include "Viewer/Import/SourceFiles.h"

#include <cstdint>
#include <functional>
#include <span>

namespace sgview {

/// Takes the next bytes of a stream; may throw to end the writing.
using ByteSink = std::function<void(std::span<std::uint8_t const>)>;

/// Writes a model as bytes, in pieces of some 64 KiB. The bytes are for another process of the same program:
/// numbers are in the machine's own order.
void writeModel(Model const& model, ByteSink const& sink);

/// Reads what `writeModel` wrote. Trusts no length: memory is taken only for bytes that are there. Whether
/// the model makes sense is for `checkModel` to say.
///
/// \throws ImportError  broken: the bytes end early, or there are some left
[[nodiscard]] Model readModel(std::span<std::uint8_t const> bytes);

/// The same for the files that a model was made of.
void writeSources(SourceFiles const& sources, ByteSink const& sink);

/// Reads what `writeSources` wrote.
/// \param bytes  are left with what comes after
/// \throws ImportError  broken: the bytes end early, or there are more files than can be
[[nodiscard]] SourceFiles readSources(std::span<std::uint8_t const>& bytes);

} // namespace sgview
