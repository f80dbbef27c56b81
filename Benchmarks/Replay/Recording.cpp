#include "Benchmarks/Replay/Recording.h"

#include "Benchmarks/Replay/CallKind.h"

#include <array>
#include <fstream>

namespace {

/// Of the format and of the list of calls: a recording is read back by the build that wrote it.
constexpr std::uint64_t mark =
    0x5347'4c52'4543'0000U + static_cast<std::uint64_t>(CallKind::of_gluBuild2DMipmaps);

template <typename Value>
void put(std::ostream& out, std::vector<Value> const& values)
{
    std::uint64_t const count = values.size();
    out.write(reinterpret_cast<char const*>(&count), sizeof count);
    out.write(reinterpret_cast<char const*>(values.data()),
              static_cast<std::streamsize>(count * sizeof(Value)));
}

template <typename Value>
void take(std::istream& in, std::uintmax_t fileSize, std::vector<Value>& values)
{
    std::uint64_t count = 0;
    in.read(reinterpret_cast<char*>(&count), sizeof count);
    if (!in || count > fileSize / sizeof(Value))
        throw RecordingError("it ends early");
    values.resize(count);
    in.read(reinterpret_cast<char*>(values.data()), static_cast<std::streamsize>(count * sizeof(Value)));
}

std::array<std::uint64_t, 4> headOf(Recording const& recording)
{
    return {mark, recording.setupFrames, recording.width, recording.height};
}

} // namespace

void Recording::save(std::filesystem::path const& file) const
{
    std::ofstream out(file, std::ios::binary);
    auto const head = headOf(*this);
    out.write(reinterpret_cast<char const*>(head.data()), sizeof head);
    put(out, words);
    put(out, addresses);
    put(out, arrays);
    put(out, frames);
    put(out, picture);
    if (!out.flush())
        throw RecordingError(file.string() + ": cannot be written");
}

Recording Recording::load(std::filesystem::path const& file)
try {
    std::ifstream in(file, std::ios::binary);
    Recording recording;
    auto head = headOf(recording);
    in.read(reinterpret_cast<char*>(head.data()), sizeof head);
    if (!in || head[0] != mark)
        throw RecordingError("not a recording that this build made");
    recording.setupFrames = head[1];
    recording.width = head[2];
    recording.height = head[3];
    std::uintmax_t const size = std::filesystem::file_size(file);
    take(in, size, recording.words);
    take(in, size, recording.addresses);
    take(in, size, recording.arrays);
    take(in, size, recording.frames);
    take(in, size, recording.picture);
    if (!in || recording.frames.size() < recording.setupFrames + 2)
        throw RecordingError("it ends early");
    return recording;
} catch (RecordingError const& error) {
    throw RecordingError(file.string() + ": " + error.what());
}
