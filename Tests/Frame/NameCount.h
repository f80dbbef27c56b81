#pragma once

#include <memory>

/// Counts the OpenGL names that are made and freed while it lives. There is one at a time.
class NameCount {
public:
    /// Names of one kind.
    struct Kind {
        long made = 0;
        long left = 0;       ///< of these, not freed
        long wrongFrees = 0; ///< of what was freed before, or made by nobody
    };

    NameCount();
    ~NameCount();
    NameCount(NameCount const&) = delete;
    NameCount& operator=(NameCount const&) = delete;

    [[nodiscard]] Kind buffers() const;
    [[nodiscard]] Kind textures() const;
    [[nodiscard]] Kind programs() const;
    [[nodiscard]] Kind shaderObjects() const; ///< shaders and what they are linked to

private:
    struct Detours;
    std::unique_ptr<Detours> detours_;
};
