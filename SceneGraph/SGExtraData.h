#pragma once

#include "Utilities/smart_ptr.h"

/// Base of every record that a pass or a host hangs on an SGObject under a key.
class SGExtraData : public smart_base {};
