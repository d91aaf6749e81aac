#pragma once

// What a header needs to know of the library that parses command lines. All of it takes a compiler
// ten seconds, in every file that includes it; its <CLI/App.hpp> takes half of that.

namespace CLI {
class App;
class Error;
}  // namespace CLI
