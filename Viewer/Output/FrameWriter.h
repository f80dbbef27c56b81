#pragma once

#include "Viewer/Output/OutputName.h"
#include "Viewer/Output/PictureFormat.h"
#include "Viewer/Output/WebpEncoder.h"
#include "Viewer/Platform/Picture.h"
#include "Viewer/Platform/PngEncoder.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace sgview {

/// How and where the frames of a model are written.
struct FrameOutput {
    OutputName name;
    PictureFormat format = PictureFormat::png;
    bool transparent = false; ///< with the pictures' opacity
    int quality = WebpEncoder::usualQuality;
    PictureSize size;
    double rate = 1.0; ///< frames a second
};

/// Writes the frames of a model, in the order of their numbers.
class FrameWriter {
public:
    /// \param written  gets each file once it is whole; what goes to standard output is none
    explicit FrameWriter(std::vector<std::filesystem::path>& written) : written_(written) {}
    FrameWriter(FrameWriter const&) = delete;
    FrameWriter& operator=(FrameWriter const&) = delete;
    virtual ~FrameWriter() = default;

    /// \param subject  the model and the frame's number
    /// \throws OutputError  and then leaves the frame's file as it was
    virtual void add(PictureSubject const& subject, Picture const& picture, PictureNotes const& notes) = 0;

    /// Ends what holds all frames. Without it, that leaves nothing behind.
    /// \throws OutputError
    virtual void finish() = 0;

protected:
    void note(std::optional<std::filesystem::path> const& file)
    {
        if (file)
            written_.push_back(*file);
    }

private:
    std::vector<std::filesystem::path>& written_;
};

/// One that writes a file for each frame, where the names tell frames or the format holds but one; or else
/// one file for all.
/// \param subject  the model
/// \param written  as FrameWriter has it; outlives the writer
/// \throws OutputError
[[nodiscard]] std::unique_ptr<FrameWriter> makeFrameWriter(FrameOutput const& output,
                                                           PictureSubject const& subject,
                                                           std::vector<std::filesystem::path>& written);

} // namespace sgview
