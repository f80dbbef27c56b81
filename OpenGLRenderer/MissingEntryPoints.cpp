#include "OpenGLRenderer/MissingEntryPoints.h"

#include "Utilities/Log.h"

#include <sched.h>

namespace {

// The entry point stays bound to what comes back, maybe for longer than this module is loaded. So that is a
// function of the C library: one without arguments that returns 0.
epoxy_resolver_stub_t standIn(char const* name)
{
    static LogChannel const channel("error");
    channel.write("OpenGL entry point ", name, " is missing");
    return reinterpret_cast<epoxy_resolver_stub_t>(&sched_yield);
}

} // namespace

MissingEntryPoints::MissingEntryPoints() : previous_(epoxy_set_resolver_failure_handler(&standIn)) {}

MissingEntryPoints::~MissingEntryPoints()
{
    epoxy_set_resolver_failure_handler(previous_);
}
