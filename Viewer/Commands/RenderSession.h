#pragma once

#include "Viewer/CommandLine/CommandLine.h"
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
    /// \param written  gets the files written, also those before a failure
    /// \throws what leaves nothing to be drawn by: ContextError, SGModuleError, TechniqueError;
    ///         what this model alone suffers from: ImportError, UsageError, OutputError, OpenGLError
    void draw(PictureSubject const& subject, std::vector<std::filesystem::path>& written);

private:
    void start();
    [[nodiscard]] Technique measure(SGRenderer const& renderer) const;
    void drawStill(ModelScene& scene, Index animation, PictureSubject subject, FrameWriter& writer);
    void drawFilm(ModelScene& scene, Index animation, PictureSubject subject, FrameWriter& writer);

    RenderRequest const& request_;
    Messages const& messages_;
    PictureKind kind_;
    std::optional<PictureDrawer> drawer_; ///< from the first model on that can be drawn
    Technique technique_ = Technique::plain;
};

} // namespace sgview
