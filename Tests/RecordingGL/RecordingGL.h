#pragma once

#include <epoxy/gl.h>

#include <array>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Stands in for OpenGL: records every call as text, such as "glEnable(GL_BLEND)", and answers queries as it
/// is told. One lives at a time; a call while none lives ends the process.
///
/// An entry point is a line in GLCalls.def, or a stand-in in one of the EntryPoints files where it answers or
/// keeps state.
class RecordingGL {
public:
    /// The names of textures or the like that were given out and taken back.
    struct Names {
        int generated = 0;
        int deleted = 0;
        std::set<GLuint> live;
    };

    /// What one draw call took from the enabled client arrays, in buffers or not: an entry a vertex, in the
    /// order drawn.
    struct Draw {
        std::vector<std::array<float, 3>> positions;
        std::vector<std::array<float, 3>> normals;
        std::map<GLenum, std::vector<std::array<float, 2>>> textureCoordinates; ///< by texture unit
        std::map<GLuint, std::vector<std::array<float, 4>>> attributes;         ///< generic ones, by index

        bool operator==(Draw const&) const = default;
    };

    /// Where a client array was pointed to: into the buffer then bound, or into memory.
    struct ArraySource {
        GLuint buffer = 0;
        void const* pointer = nullptr;
    };

    RecordingGL();
    RecordingGL(RecordingGL const&) = delete;
    RecordingGL& operator=(RecordingGL const&) = delete;
    ~RecordingGL();

    /// The one that lives.
    [[nodiscard]] static RecordingGL& current();

    /// Keeps neither calls nor draws from now on, only how many calls there were: for scenes too large to
    /// keep. Indices and the contents of buffers are not printed then.
    void keepCountsOnly() { keepsCalls_ = false; }
    [[nodiscard]] bool keepsCalls() const { return keepsCalls_; }
    /// Is shown each call before it answers.
    void setWatcher(std::function<void(std::string_view call)> watcher) { watcher_ = std::move(watcher); }

    [[nodiscard]] std::vector<std::string> const& calls() const { return calls_; }
    /// The calls so far; starts the record anew.
    [[nodiscard]] std::vector<std::string> takeCalls();
    /// How many calls there were of one entry point, or of all, since the record was started.
    [[nodiscard]] int count(std::string_view entryPoint) const;
    [[nodiscard]] int count() const;

    void setString(GLenum name, std::optional<std::string> text) { strings_[name] = std::move(text); }
    /// A limit that is not set is left as the caller had it, as an OpenGL does that does not know it.
    void setIntegers(GLenum name, std::vector<GLint> values) { integers_[name] = std::move(values); }
    void setDoubles(GLenum name, std::vector<GLdouble> values) { doubles_[name] = std::move(values); }
    void setProgramLimit(GLenum name, GLint value) { programLimits_[name] = value; }
    /// What a program's uniform is found under; -1 for one that is not set.
    void setUniformLocation(std::string name, GLint location) { locations_[std::move(name)] = location; }
    /// What glGetInfoLogARB says of every object.
    void setInfoLog(std::string text) { infoLog_ = std::move(text); }
    /// What glGetError answers next, after those already waiting.
    void queueError(GLenum error) { errors_.push_back(error); }
    /// What glReadPixels writes.
    void setPixels(std::vector<unsigned char> pixels) { pixels_ = std::move(pixels); }
    /// Prints this pointer as `label`.
    void namePointer(void const* pointer, std::string label) { labels_[pointer] = std::move(label); }

    [[nodiscard]] Names const& buffers() const { return buffers_; }
    [[nodiscard]] Names const& programs() const { return programs_; }
    [[nodiscard]] Names const& shaderObjects() const { return shaderObjects_; } ///< shaders and programs
    [[nodiscard]] Names const& textures() const { return textures_; }
    [[nodiscard]] std::vector<Draw> const& draws() const { return draws_; }
    /// Handles entry points that cannot be found, as epoxy would.
    [[nodiscard]] static epoxy_resolver_failure_handler_t& resolverFailureHandler();

    // For the entry points.
    void record(std::string_view entryPoint, std::initializer_list<std::string> arguments);
    [[nodiscard]] std::string pointerText(void const* pointer) const;
    [[nodiscard]] GLubyte const* string(GLenum name) const;
    void answerIntegers(GLenum name, GLint* values) const;
    void answerDoubles(GLenum name, GLdouble* values) const;
    [[nodiscard]] GLenum takeError();
    void answerPixels(void* data, std::size_t size) const;
    [[nodiscard]] GLint programLimit(GLenum name, GLint unknown) const;
    [[nodiscard]] GLint uniformLocation(std::string const& name) const;
    [[nodiscard]] std::string const& infoLog() const { return infoLog_; }
    static void generate(Names& names, GLsizei count, GLuint* result);
    static void remove(Names& names, GLsizei count, GLuint const* removed);
    void draw(std::vector<GLuint> const& vertices);

    /// Where an array pointed to now would be read.
    [[nodiscard]] ArraySource arraySource(void const* pointer)
    {
        return {boundBuffers[GL_ARRAY_BUFFER_ARB], pointer};
    }
    [[nodiscard]] std::string sourceText(ArraySource const& source) const;
    /// What a source holds. Ends the process where that is nothing: OpenGL would read anywhere.
    [[nodiscard]] void const* read(ArraySource const& source) const;

    Names& editBuffers() { return buffers_; }
    Names& editPrograms() { return programs_; }
    Names& editShaderObjects() { return shaderObjects_; }
    Names& editTextures() { return textures_; }
    std::map<GLenum, GLuint> boundBuffers; ///< by target
    std::map<GLuint, std::vector<unsigned char>> bufferContents;
    GLenum clientUnit = GL_TEXTURE0_ARB;
    ArraySource positionSource;
    ArraySource normalSource;
    std::map<GLenum, ArraySource> textureCoordinateSources;
    std::map<GLuint, ArraySource> attributeSources;
    std::set<GLenum> enabledArrays; ///< GL_VERTEX_ARRAY, GL_NORMAL_ARRAY
    std::set<GLenum> enabledTextureCoordinates;
    std::set<GLuint> enabledAttributes;

private:
    bool keepsCalls_ = true;
    std::function<void(std::string_view)> watcher_;
    std::vector<std::string> calls_;
    std::map<std::string, int, std::less<>> counts_; ///< by entry point
    std::map<GLenum, std::optional<std::string>> strings_;
    std::map<GLenum, std::vector<GLint>> integers_;
    std::map<GLenum, std::vector<GLdouble>> doubles_;
    std::map<GLenum, GLint> programLimits_;
    std::map<std::string, GLint> locations_;
    std::string infoLog_;
    std::deque<GLenum> errors_;
    std::vector<unsigned char> pixels_;
    std::map<void const*, std::string> labels_;
    Names buffers_;
    Names programs_;
    Names shaderObjects_;
    Names textures_;
    std::vector<Draw> draws_;
};
