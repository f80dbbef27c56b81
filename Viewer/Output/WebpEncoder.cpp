#include "Viewer/Output/WebpEncoder.h"

#include "Viewer/Platform/OutputFile.h"

#include <webp/encode.h>
#include <webp/mux.h>

#include <cmath>
#include <new>
#include <string>

namespace sgview {

namespace {

/// A picture in the library's form, for as long as it is needed.
class Frame {
public:
    explicit Frame(Picture const& picture)
    {
        if (WebPPictureInit(&frame_) == 0)
            throw std::bad_alloc();
        frame_.use_argb = 1;
        frame_.width = picture.size.width;
        frame_.height = picture.size.height;
        if (WebPPictureImportRGBA(&frame_, picture.pixels.data(), 4 * picture.size.width) == 0)
            throw std::bad_alloc();
    }
    Frame(Frame const&) = delete;
    Frame& operator=(Frame const&) = delete;
    ~Frame() { WebPPictureFree(&frame_); }

    [[nodiscard]] WebPPicture* get() { return &frame_; }

private:
    WebPPicture frame_{};
};

WebPConfig configFor(int quality)
{
    WebPConfig config;
    WebPConfigInit(&config);
    config.lossless = quality == WebpEncoder::lossless ? 1 : 0;
    // Without loss, quality is the effort.
    config.quality = config.lossless != 0 ? 50.0F : static_cast<float>(quality);
    return config;
}

} // namespace

void WebpEncoder::End::operator()(WebPAnimEncoder* encoder) const
{
    WebPAnimEncoderDelete(encoder);
}

WebpEncoder::WebpEncoder(PictureSize size, int quality, double rate) : quality_(quality), rate_(rate)
{
    WebPAnimEncoderOptions options;
    WebPAnimEncoderOptionsInit(&options);
    encoder_.reset(WebPAnimEncoderNew(size.width, size.height, &options));
    if (!encoder_)
        throw std::bad_alloc();
}

void WebpEncoder::add(Picture const& picture)
{
    Frame frame(picture);
    WebPConfig const config = configFor(quality_);
    if (WebPAnimEncoderAdd(encoder_.get(), frame.get(), nextMoment(), &config) == 0)
        fail();
    ++count_;
}

std::vector<std::uint8_t> WebpEncoder::finish()
{
    WebPData data{};
    if (WebPAnimEncoderAdd(encoder_.get(), nullptr, nextMoment(), nullptr) == 0 ||
        WebPAnimEncoderAssemble(encoder_.get(), &data) == 0)
        fail();
    std::vector<std::uint8_t> file(data.bytes, data.bytes + data.size);
    WebPDataClear(&data);
    return file;
}

/// Milliseconds from the first picture; rounded each for itself, lest the roundings add up.
int WebpEncoder::nextMoment() const
{
    return static_cast<int>(std::lround(1000.0 * count_ / rate_));
}

void WebpEncoder::fail() const
{
    throw OutputError(std::string("WebP: ") + WebPAnimEncoderGetError(encoder_.get()));
}

} // namespace sgview
