#pragma once

/// Defines epoxy's function pointer `epoxy_<name>`; the stand-in's body follows.
#define SG_STAND_IN(result, name, parameters)                                                                \
    static result standIn_##name parameters;                                                                 \
    decltype(epoxy_##name) epoxy_##name = standIn_##name;                                                    \
    static result standIn_##name parameters
