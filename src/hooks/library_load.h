#pragma once

/// The library's one entry: runs once, on the thread that loads the library, before the host uses
/// its keyboard. Decides by the host's bundle identifier whether to act at all; then empties the
/// keyboard's cache (on the home screen: once it has launched) and installs the hooks. Reads no
/// file and lets nothing be thrown.
extern "C" __attribute__((constructor, visibility("default"))) void PMLibraryLoad();
