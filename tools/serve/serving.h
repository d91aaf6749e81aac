#pragma once

#include "serve/supervisor.h"

namespace tools::serve {

/// The server's process: answers pages until the supervisor is gone. Throws when it can't begin.
void serve(const ServerPlace& place);

}  // namespace tools::serve
