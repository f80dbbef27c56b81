#pragma once

#include <cstdint>

/// Which entry point a call in a recording is of.
enum class CallKind : std::uint64_t {
// Not named by the entry point alone: epoxy's macros would rename that.
#define SG_GL_CALL(name, ...) of_##name,
#define SG_ARRAY_CALL(name, ...) of_##name,
#define SG_QUERY_CALL(name, ...) of_##name,
#define SG_NAMING_CALL(name) of_##name,
#define SG_ANSWER_CALL(name, ...) of_##name,
#include "Benchmarks/Replay/Calls.def"
#include "Tests/RecordingGL/GLCalls.def"
#undef SG_GL_CALL
#undef SG_ARRAY_CALL
#undef SG_QUERY_CALL
#undef SG_NAMING_CALL
#undef SG_ANSWER_CALL
    of_glShaderSourceARB,
    of_gluBuild2DMipmaps,
};
