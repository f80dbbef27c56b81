#pragma once

#include "Viewer/Platform/Technique.h"

/// The registered renderer draws by a technique from now on. It is told as by any host, through a stored
/// verdict; what it has derived from scenes stays with them.
void switchTo(sgview::Technique technique);
