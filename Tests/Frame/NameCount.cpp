#include "Tests/Frame/NameCount.h"

#include "Tests/Frame/Detour.h"

#include <epoxy/gl.h>

#include <set>

namespace {

using Generate = void (*)(GLsizei, GLuint*);
using Delete = void (*)(GLsizei, GLuint const*);

class Names {
public:
    void add(GLuint name)
    {
        ++made_;
        living_.insert(name);
    }

    void remove(GLuint name) { wrongFrees_ += living_.erase(name) == 0 ? 1 : 0; }

    [[nodiscard]] NameCount::Kind count() const
    {
        return {made_, static_cast<long>(living_.size()), wrongFrees_};
    }

private:
    std::set<GLuint> living_;
    long made_ = 0;
    long wrongFrees_ = 0;
};

enum KindOfName { BUFFERS, TEXTURES, PROGRAMS };

/// A pair of entry points that make and free names in arrays.
template <KindOfName>
class ArrayDetours {
public:
    ArrayDetours(char const* generateName, Generate& generate, char const* deleteName, Delete& remove)
        : generate_(generateName, generate, &makeNames), delete_(deleteName, remove, &freeNames)
    {
        current = this;
    }

    Names names;

private:
    static void makeNames(GLsizei count, GLuint* made)
    {
        current->generate_.real()(count, made);
        for (GLsizei i = 0; i < count; ++i)
            current->names.add(made[i]);
    }

    static void freeNames(GLsizei count, GLuint const* freed)
    {
        for (GLsizei i = 0; i < count; ++i)
            current->names.remove(freed[i]);
        current->delete_.real()(count, freed);
    }

    static inline ArrayDetours* current = nullptr;

    Detour<Generate> generate_;
    Detour<Delete> delete_;
};

/// The entry points that make and free shaders and what they are linked to.
class ObjectDetours {
public:
    ObjectDetours() { current = this; }

    Names names;

private:
    static GLhandleARB makeShader(GLenum kind) { return added(current->shader_.real()(kind)); }
    static GLhandleARB makeProgram() { return added(current->program_.real()()); }

    static void freeObject(GLhandleARB object)
    {
        current->names.remove(object);
        current->delete_.real()(object);
    }

    static GLhandleARB added(GLhandleARB object)
    {
        current->names.add(object);
        return object;
    }

    static inline ObjectDetours* current = nullptr;

    Detour<GLhandleARB (*)(GLenum)> shader_{"glCreateShaderObjectARB", epoxy_glCreateShaderObjectARB,
                                            &makeShader};
    Detour<GLhandleARB (*)()> program_{"glCreateProgramObjectARB", epoxy_glCreateProgramObjectARB,
                                       &makeProgram};
    Detour<void (*)(GLhandleARB)> delete_{"glDeleteObjectARB", epoxy_glDeleteObjectARB, &freeObject};
};

} // namespace

struct NameCount::Detours {
    ArrayDetours<BUFFERS> buffers{"glGenBuffersARB", epoxy_glGenBuffersARB, "glDeleteBuffersARB",
                                  epoxy_glDeleteBuffersARB};
    ArrayDetours<TEXTURES> textures{"glGenTextures", epoxy_glGenTextures, "glDeleteTextures",
                                    epoxy_glDeleteTextures};
    ArrayDetours<PROGRAMS> programs{"glGenProgramsARB", epoxy_glGenProgramsARB, "glDeleteProgramsARB",
                                    epoxy_glDeleteProgramsARB};
    ObjectDetours shaderObjects;
};

NameCount::NameCount() : detours_(std::make_unique<Detours>()) {}

NameCount::~NameCount() = default;

NameCount::Kind NameCount::buffers() const
{
    return detours_->buffers.names.count();
}

NameCount::Kind NameCount::textures() const
{
    return detours_->textures.names.count();
}

NameCount::Kind NameCount::programs() const
{
    return detours_->programs.names.count();
}

NameCount::Kind NameCount::shaderObjects() const
{
    return detours_->shaderObjects.names.count();
}
