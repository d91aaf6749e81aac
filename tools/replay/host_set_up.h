#pragma once

#include "replay/made_objects.h"
#include "scenario/model.h"

namespace tools::replay {

/// Makes this process's device and keyboard as the given members say; those that are not given
/// stay as they are. `views` makes the views of the whole scenario.
void applyHost(const scenario::Host& host, ViewMaker& views);

}  // namespace tools::replay
