#include "Viewer/Output/FrameWriter.h"

#include "Viewer/Output/ByteOutput.h"
#include "Viewer/Output/YuvFrames.h"

#include <optional>
#include <string>
#include <utility>

namespace sgview {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Files = std::vector<std::filesystem::path>;

std::span<std::uint8_t const> bytesOf(std::string const& text)
{
    return {reinterpret_cast<std::uint8_t const*>(text.data()), text.size()};
}

Bytes encode(FrameOutput const& output, Picture const& picture, PictureNotes const& notes)
{
    switch (output.format) {
    case PictureFormat::webp: {
        WebpEncoder encoder(picture.size, output.quality, output.rate);
        encoder.add(picture);
        return encoder.finish();
    }
    case PictureFormat::rgba:
        return picture.pixels;
    case PictureFormat::y4m: {
        std::string const header = yuvHeader(picture.size, output.rate);
        Bytes stream(header.begin(), header.end());
        Bytes const frame = yuvFrame(picture);
        stream.insert(stream.end(), frame.begin(), frame.end());
        return stream;
    }
    case PictureFormat::png:
        break;
    }
    return encodePng(picture, output.transparent, notes);
}

/// Each frame whole.
class StillWriter : public FrameWriter {
public:
    StillWriter(FrameOutput output, Files& written) : FrameWriter(written), output_(std::move(output)) {}

    void add(PictureSubject const& subject, Picture const& picture, PictureNotes const& notes) override
    {
        std::optional<std::filesystem::path> const file = output_.name.of(subject);
        ByteOutput to(file);
        to.write(encode(output_, picture, notes));
        to.commit();
        note(file);
    }

    void finish() override {}

private:
    FrameOutput output_;
};

/// All frames in one file.
class FilmWriter : public FrameWriter {
public:
    FilmWriter(std::optional<std::filesystem::path> file, Files& written)
        : FrameWriter(written), file_(std::move(file)), to_(file_)
    {
    }

    void finish() override
    {
        end();
        to_.commit();
        note(file_);
    }

protected:
    void write(std::span<std::uint8_t const> bytes) { to_.write(bytes); }

private:
    virtual void end() {}

    std::optional<std::filesystem::path> file_;
    ByteOutput to_;
};

class RawWriter : public FilmWriter {
public:
    using FilmWriter::FilmWriter;

    void add(PictureSubject const&, Picture const& picture, PictureNotes const&) override
    {
        write(picture.pixels);
    }
};

class YuvWriter : public FilmWriter {
public:
    YuvWriter(FrameOutput const& output, std::optional<std::filesystem::path> file, Files& written)
        : FilmWriter(std::move(file), written), header_(yuvHeader(output.size, output.rate))
    {
    }

    void add(PictureSubject const&, Picture const& picture, PictureNotes const&) override
    {
        write(bytesOf(std::exchange(header_, {})));
        write(yuvFrame(picture));
    }

private:
    std::string header_; ///< until it is written
};

class WebpWriter : public FilmWriter {
public:
    WebpWriter(FrameOutput const& output, std::optional<std::filesystem::path> file, Files& written)
        : FilmWriter(std::move(file), written), encoder_(output.size, output.quality, output.rate)
    {
    }

    void add(PictureSubject const&, Picture const& picture, PictureNotes const&) override
    {
        encoder_.add(picture);
    }

private:
    void end() override { write(encoder_.finish()); }

    WebpEncoder encoder_;
};

} // namespace

std::unique_ptr<FrameWriter> makeFrameWriter(FrameOutput const& output, PictureSubject const& subject,
                                             Files& written)
{
    if (!holdsFilms(output.format) || output.name.tellsFrames())
        return std::make_unique<StillWriter>(output, written);
    std::optional<std::filesystem::path> file = output.name.of(subject);
    if (output.format == PictureFormat::webp)
        return std::make_unique<WebpWriter>(output, std::move(file), written);
    if (output.format == PictureFormat::y4m)
        return std::make_unique<YuvWriter>(output, std::move(file), written);
    return std::make_unique<RawWriter>(std::move(file), written);
}

} // namespace sgview
