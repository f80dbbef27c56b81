#pragma once

#include "Viewer/CommandLine/CommandLine.h"
#include "Viewer/Commands/RenderOutcome.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Output/FrameWriter.h"
#include "Viewer/Output/PictureDrawer.h"
#include "Viewer/Scene/ModelScene.h"

#include <optional>

namespace sgview {

/// Draws one model after the other into pictures, all by one request.
class RenderSession {
public:
    RenderSession(RenderRequest const& request, Messages const& messages);

    /// \param subject  the model's file and its index
    /// \param outcome  gets the files written, also those before a failure, the technique and the warnings
    /// \throws what leaves nothing to be drawn by: ContextError, SGModuleError, TechniqueError;
    ///         what this model alone suffers from: ImportError, UsageError, OutputError, OpenGLError
    void draw(PictureSubject const& subject, RenderOutcome& outcome);

private:
    void start();
    [[nodiscard]] Technique measure(SGRenderer const& renderer) const;
    /// Keeps a warning, and tells it, with the model's file where there are several.
    void warn(RenderOutcome& outcome, std::string const& warning) const;
    [[nodiscard]] bool isBackground(Picture const& picture) const;
    void warnOfBlank(RenderOutcome& outcome) const;
    void drawStill(ModelScene& scene, Index animation, PictureSubject subject, FrameWriter& writer,
                   RenderOutcome& outcome);
    void drawFilm(ModelScene& scene, Index animation, PictureSubject subject, FrameWriter& writer,
                  RenderOutcome& outcome);

    RenderRequest const& request_;
    Messages const& messages_;
    PictureKind kind_;
    std::optional<PictureDrawer> drawer_; ///< from the first model on that can be drawn
    Technique technique_ = Technique::plain;
};

} // namespace sgview
