#pragma once

#include "Viewer/CommandLine/CommandLine.h"
#include "Viewer/Platform/PngEncoder.h"
#include "Viewer/Platform/Technique.h"

#include <string>

namespace sgview {

/// What the pictures of a model say of themselves: Software, Renderer, Technique, Model, Camera, Frame for
/// one of a film, and Command line.
///
/// The command line is not the one that was typed but the one that draws this picture alone, by its model's
/// name without the folder: a frame says the same whether it was drawn with others or by itself.
class RenderNotes {
public:
    /// \param model      a file of the request's
    /// \param animation  its name; none for the rest pose
    /// \param length     of the animation, seconds
    /// \param driver     what draws, in OpenGL's words
    RenderNotes(RenderRequest const& request, std::filesystem::path const& model,
                std::optional<std::string> const& animation, double length, Technique technique,
                std::string const& driver);

    /// \param turn  degrees around the model from where the first frame looks
    [[nodiscard]] PictureNotes of(std::uint32_t frame, double turn) const;

private:
    PictureNotes common_;
    CameraView view_;
    bool isFilm_;
    std::string command_; ///< but for the frame
};

} // namespace sgview
