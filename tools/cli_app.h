#pragma once

// What a header needs to know of the library that parses command lines. All of it takes a compiler
// ten seconds, in every file that includes it.

namespace CLI {
class App;
class Error;
}  // namespace CLI
