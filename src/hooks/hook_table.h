#pragma once

namespace prismal {

/// Installs the nine hooks in their order; those of classes that the host lacks are left out. The
/// class references must have been looked up.
void installHooks();

}  // namespace prismal
