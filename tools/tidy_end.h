#pragma once

namespace tools {

/// From now on a signal that asks the program to end (SIGINT, SIGTERM, SIGHUP) ends it as before,
/// but not before what it has noted as a leftover is gone. Signals that are ignored stay so.
void endTidily();

}  // namespace tools
