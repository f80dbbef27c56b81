#pragma once

/// Whether one of the functions that stand in for OpenGL is at work. A driver has memory of its own: tests in
/// which that of a program runs out spare it.
class StandInAtWork {
public:
    StandInAtWork() { ++depth_; }
    StandInAtWork(StandInAtWork const&) = delete;
    StandInAtWork& operator=(StandInAtWork const&) = delete;
    ~StandInAtWork() { --depth_; }

    [[nodiscard]] static bool any() { return depth_ > 0; }

private:
    static inline int depth_ = 0;
};

template <auto body>
struct StandIn;
template <typename Result, typename... Parameters, Result (*body)(Parameters...)>
struct StandIn<body> {
    static Result call(Parameters... arguments)
    {
        StandInAtWork const atWork;
        return body(arguments...);
    }
};

/// Defines epoxy's function pointer `epoxy_<name>`; the stand-in's body follows.
#define SG_STAND_IN(result, name, parameters)                                                                \
    static result standIn_##name parameters;                                                                 \
    decltype(epoxy_##name) epoxy_##name = StandIn<&standIn_##name>::call;                                    \
    static result standIn_##name parameters
