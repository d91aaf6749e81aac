#pragma once

namespace tools::explain {

/// Readies the library's code in this program: the same that the loaded library is built of, asked
/// for what can't be seen from outside. It reads the device's files for itself, so that this has to
/// come after the loaded library has done what is to be explained. From here on, nothing that is
/// logged is told on standard error: it has been told. Main thread, in a process with a keyboard.
void readyLinkedLibrary();

}  // namespace tools::explain
