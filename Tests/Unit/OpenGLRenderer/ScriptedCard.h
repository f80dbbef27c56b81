#pragma once

#include "SceneGraph/SGNodeVisitor.h"
#include "SceneGraph/SGRootNode.h"
#include "Tests/RecordingGL/RecordingGL.h"
#include "Tests/Unit/OpenGLRenderer/AssetFolder.h"
#include "Tests/Unit/OpenGLRenderer/ScriptedClock.h"
#include "Tests/Unit/OpenGLRenderer/TestPictures.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace RendererTesting {

/// A card and its driver, as far as the graphics diagnostic looks at them: what they claim, how long a frame
/// takes, and which picture comes out of it. How a frame is drawn is told from the calls and the scene.
///
/// Made as a good card, on which every technique is faster than the last; a fault is what a test changes.
class ScriptedCard {
public:
    /// One way to draw the test scene.
    struct Path {
        std::string name;
        std::int64_t frame;                ///< microseconds; those of a clock that goes back are negative
        std::optional<std::int64_t> first; ///< of the first frame after a change of strategy, if it differs
        Picture rest = restPicture();
        Picture bent = bentPicture();
    };

    explicit ScriptedCard(RecordingGL& recordingGL);
    ScriptedCard(ScriptedCard const&) = delete;
    ScriptedCard& operator=(ScriptedCard const&) = delete;
    ~ScriptedCard();

    void claim(std::string const& extensions) { gl.setString(GL_EXTENSIONS, extensions); }

    /// How many of the last scene's objects that were noticed have been there, and how many still are.
    [[nodiscard]] std::size_t sceneObjects() const { return watched_.size(); }
    [[nodiscard]] std::size_t sceneObjectsLeft() const;
    /// The scene's first surface while it is known, or null.
    [[nodiscard]] SGSurfaceGeometryReferenceNode* firstSurface() const;

    RecordingGL& gl;
    ScriptedClock clock;
    // Without a pose:
    Path plain{"plain", 20'000, {}};
    Path buffers{"buffers", 10'000, {}};
    // With one:
    Path processor{"processor", 40'000, {}};
    Path program{"program", 12'500, {}};
    Path shader{"shader", 15'625, {}};

    std::int64_t perSurface = 0; ///< microseconds that each surface adds to a frame
    bool narrates = false;       ///< logs what it does as well, in lines that start with "- "

private:
    class RootFinder;
    class Witness;
    struct Frame {
        bool buffers = false;
        bool program = false;
        bool shader = false;
        bool bent = false;
        bool told = false;
        int surfaces = 0;
    };

    void notice(std::string_view call);
    void noticeDraw();
    void finish();
    void read();
    void tell(std::string const& line) const;
    void tellFrame();
    void watchScene();
    [[nodiscard]] Path const& path() const;

    AssetFolder assets_;
    weak_ptr<SGRootNode> root_;
    std::vector<weak_ptr<SGObject>> watched_;
    std::vector<smart_ptr<SGNodeVisitor>> lastStrategy_;
    Frame frame_;
};

} // namespace RendererTesting
