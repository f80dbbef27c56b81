#include "Tests/RecordingGL/ArgumentText.h"
#include "Tests/RecordingGL/RecordingGL.h"
#include "Tests/RecordingGL/StandIn.h"

#include <algorithm>

SG_STAND_IN(void, glGenProgramsARB, (GLsizei count, GLuint* names))
{
    RecordingGL& gl = RecordingGL::current();
    RecordingGL::generate(gl.editPrograms(), count, names);
    gl.record("glGenProgramsARB", {numberText(count), listText(names, static_cast<std::size_t>(count))});
}

SG_STAND_IN(void, glDeleteProgramsARB, (GLsizei count, GLuint const* names))
{
    RecordingGL& gl = RecordingGL::current();
    RecordingGL::remove(gl.editPrograms(), count, names);
    gl.record("glDeleteProgramsARB", {numberText(count), listText(names, static_cast<std::size_t>(count))});
}

SG_STAND_IN(void, glProgramStringARB, (GLenum target, GLenum format, GLsizei length, void const* text))
{
    std::string_view const program(static_cast<char const*>(text), static_cast<std::size_t>(length));
    RecordingGL::current().record(
        "glProgramStringARB", {enumText(target), enumText(format), numberText(length), quotedText(program)});
}

SG_STAND_IN(void, glGetProgramivARB, (GLenum target, GLenum name, GLint* value))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glGetProgramivARB", {enumText(target), enumText(name)});
    *value = gl.programLimit(name, *value);
}

SG_STAND_IN(void, glVertexAttribPointerARB,
            (GLuint index, GLint size, GLenum type, GLboolean normalized, GLsizei stride,
             void const* pointer))
{
    RecordingGL& gl = RecordingGL::current();
    gl.attributeSources[index] = gl.arraySource(pointer);
    gl.record("glVertexAttribPointerARB",
              {numberText(index), numberText(size), enumText(type), booleanText(normalized),
               numberText(stride), gl.sourceText(gl.arraySource(pointer))});
}

SG_STAND_IN(void, glEnableVertexAttribArrayARB, (GLuint index))
{
    RecordingGL& gl = RecordingGL::current();
    gl.enabledAttributes.insert(index);
    gl.record("glEnableVertexAttribArrayARB", {numberText(index)});
}

SG_STAND_IN(void, glDisableVertexAttribArrayARB, (GLuint index))
{
    RecordingGL& gl = RecordingGL::current();
    gl.enabledAttributes.erase(index);
    gl.record("glDisableVertexAttribArrayARB", {numberText(index)});
}

SG_STAND_IN(GLhandleARB, glCreateShaderObjectARB, (GLenum type))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glCreateShaderObjectARB", {enumText(type)});
    GLuint name = 0;
    RecordingGL::generate(gl.editShaderObjects(), 1, &name);
    return name;
}

SG_STAND_IN(GLhandleARB, glCreateProgramObjectARB, (void))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glCreateProgramObjectARB", {});
    GLuint name = 0;
    RecordingGL::generate(gl.editShaderObjects(), 1, &name);
    return name;
}

SG_STAND_IN(void, glDeleteObjectARB, (GLhandleARB object))
{
    RecordingGL& gl = RecordingGL::current();
    RecordingGL::remove(gl.editShaderObjects(), 1, &object);
    gl.record("glDeleteObjectARB", {numberText(object)});
}

SG_STAND_IN(void, glShaderSourceARB,
            (GLhandleARB shader, GLsizei count, GLcharARB const** texts, GLint const* lengths))
{
    std::string sources;
    for (GLsizei i = 0; i < count; ++i)
        sources += (i == 0 ? "" : ", ") +
                   quotedText(std::string_view(texts[i], static_cast<std::size_t>(lengths[i])));
    RecordingGL::current().record("glShaderSourceARB",
                                  {numberText(shader), numberText(count), '{' + sources + '}'});
}

SG_STAND_IN(void, glGetInfoLogARB, (GLhandleARB object, GLsizei maxLength, GLsizei* length, GLcharARB* info))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glGetInfoLogARB",
              {numberText(object), numberText(maxLength), gl.pointerText(length), gl.pointerText(info)});
    std::string const text = gl.infoLog().substr(0, static_cast<std::size_t>(maxLength) - 1);
    std::copy_n(text.c_str(), text.size() + 1, info);
}

SG_STAND_IN(GLint, glGetUniformLocationARB, (GLhandleARB program, GLcharARB const* name))
{
    RecordingGL& gl = RecordingGL::current();
    gl.record("glGetUniformLocationARB", {numberText(program), quotedText(name)});
    return gl.uniformLocation(name);
}
