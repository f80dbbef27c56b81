#include "Viewer/Output/ByteOutput.h"

#include <cerrno>

namespace sgview {

ByteOutput::ByteOutput(std::optional<std::filesystem::path> const& file) : stream_(stdout)
{
    if (file)
        stream_ = file_.emplace(*file).stream();
}

void ByteOutput::write(std::span<std::uint8_t const> bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), stream_) != bytes.size() || std::fflush(stream_) != 0)
        fail(errno);
}

void ByteOutput::commit()
{
    if (file_)
        file_->commit();
}

void ByteOutput::fail(int error) const
{
    if (file_)
        file_->fail(error);
    failToWrite("standard output", error);
}

} // namespace sgview
