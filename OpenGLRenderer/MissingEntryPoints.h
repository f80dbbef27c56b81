#pragma once

#include <epoxy/gl.h>

/// While it lives, an OpenGL entry point that the driver lacks does nothing and returns 0: its first call is
/// logged on the "error" channel. Without it, such a call ends the process.
class MissingEntryPoints {
public:
    MissingEntryPoints();
    MissingEntryPoints(MissingEntryPoints const&) = delete;
    MissingEntryPoints& operator=(MissingEntryPoints const&) = delete;
    ~MissingEntryPoints();

private:
    epoxy_resolver_failure_handler_t previous_;
};
