#pragma once

#include "Viewer/Platform/Picture.h"

#include <cstdint>
#include <memory>
#include <vector>

struct WebPAnimEncoder;

namespace sgview {

/// Makes a WebP file of pictures: a still one of one, a moving one that repeats for ever of several.
class WebpEncoder {
public:
    static constexpr int largestSide = 16383; ///< pixels, of the format
    static constexpr int lossless = 100;
    static constexpr int usualQuality = 90;

    /// \param size     of every picture, at most `largestSide` each
    /// \param quality  0 to 100, where 100 loses nothing
    /// \param rate     pictures a second
    /// \throws std::bad_alloc
    WebpEncoder(PictureSize size, int quality, double rate);

    /// The next picture, with its opacity.
    /// \throws OutputError
    void add(Picture const& picture);

    /// The whole file, after the last picture.
    /// \throws OutputError
    [[nodiscard]] std::vector<std::uint8_t> finish();

private:
    struct End {
        void operator()(WebPAnimEncoder* encoder) const;
    };

    [[nodiscard]] int nextMoment() const;
    [[noreturn]] void fail() const;

    int quality_;
    double rate_;
    std::uint32_t count_ = 0;
    std::unique_ptr<WebPAnimEncoder, End> encoder_;
};

} // namespace sgview
