#pragma once

#include "Utilities/smart_ptr.h"

#include <string>

/// What a host knows of a surface beyond what is drawn; may be shared by the nodes that draw it.
class SGSurfaceData : public weak_base {
public:
    explicit SGSurfaceData(std::string name_) : name(std::move(name_)) {}

    std::string name; ///< for people
};
