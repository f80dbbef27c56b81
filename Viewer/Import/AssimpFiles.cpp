#include "Viewer/Import/AssimpFiles.h"

#include <assimp/IOStream.hpp>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

namespace sgview {

namespace {

class MemoryStream : public Assimp::IOStream {
public:
    explicit MemoryStream(Bytes bytes) : owned_(std::move(bytes)), bytes_(owned_) {}
    explicit MemoryStream(std::span<std::uint8_t const> bytes) : bytes_(bytes) {}

    std::size_t Read(void* buffer, std::size_t size, std::size_t count) override
    {
        if (size == 0)
            return 0;
        std::size_t const items = std::min(count, (bytes_.size() - at_) / size);
        if (items > 0)
            std::memcpy(buffer, bytes_.data() + at_, items * size);
        at_ += items * size;
        return items;
    }
    std::size_t Write(void const*, std::size_t, std::size_t) override { return 0; }
    aiReturn Seek(std::size_t offset, aiOrigin origin) override
    {
        // Assimp passes negative offsets as wrapped sizes; sums wrap back.
        std::size_t const from = origin == aiOrigin_SET ? 0 : origin == aiOrigin_CUR ? at_ : bytes_.size();
        std::size_t const target = from + offset;
        if (target > bytes_.size())
            return aiReturn_FAILURE;
        at_ = target;
        return aiReturn_SUCCESS;
    }
    std::size_t Tell() const override { return at_; }
    std::size_t FileSize() const override { return bytes_.size(); }
    void Flush() override {}

private:
    Bytes owned_;
    std::span<std::uint8_t const> bytes_;
    std::size_t at_ = 0;
};

} // namespace

bool AssimpFiles::Exists(char const* name) const
{
    return mainName_ == name || access_.resolve(name).has_value();
}

Assimp::IOStream* AssimpFiles::Open(char const* name, char const* mode)
{
    if (std::string_view(mode).find_first_of("wa+") != std::string_view::npos)
        return nullptr;
    // Assimp hands every stream back to Close.
    if (mainName_ == name)
        return std::make_unique<MemoryStream>(std::span<std::uint8_t const>(mainFile_)).release();
    if (!access_.resolve(name)) {
        noteMissing(name);
        return nullptr;
    }
    std::optional<Bytes> bytes = access_.read(name);
    return bytes ? std::make_unique<MemoryStream>(std::move(*bytes)).release() : nullptr;
}

void AssimpFiles::noteMissing(std::string_view name)
{
    // Assimp also tries names of its own making.
    std::string_view const bare = name.substr(name.find_last_of("/\\") + 1);
    if (std::ranges::search(mainFile_, bare).empty())
        return;
    if (name.starts_with("./"))
        name.remove_prefix(2);
    warnings_.add("file '" + std::string(name) + "': " + access_.absenceOf(name));
}

void AssimpFiles::Close(Assimp::IOStream* stream)
{
    std::unique_ptr<Assimp::IOStream> const ended(stream);
}

} // namespace sgview
