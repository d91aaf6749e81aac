#pragma once

// For programs that remove what a device path names, `/` included, and test that it stays inside
// the device root: should it not, the kernel must stand between them and the machine.

namespace tests {

/// From here on this process and its children write only below `directory`, for good. False where
/// the kernel offers no confinement.
bool confineWritingTo(const char* directory);

/// Where the kernel offers no confinement, nobody's rights are the next best; but for root, who
/// has rights to lose, there is nothing to do. False when root's can't be given up.
bool becomeNobody();

}  // namespace tests
