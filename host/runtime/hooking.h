#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "host/runtime/object.h"
#include "host/runtime/trace.h"

// The hooking engine: what stands in a method table or behind a C function can be swapped.

namespace host::runtime {

/// Lets `MSHookFunction` find what runs behind the function at `symbol`. `implementation` must stay
/// where it is until the process ends.
void registerHookableFunction(std::string_view name, platform::IMP symbol,
                              platform::IMP* implementation);

/// Notes that the platform's own code of that name runs, once that is hooked.
void recordIfHooked(std::string_view name);

/// The platform's own code of a hookable function or method calls this first: once the function or
/// method is hooked, that it runs is noted.
inline void platformImplementationRuns(std::string_view name) {
  if (recording()) recordIfHooked(name);
}

/// A C function whose implementation can be swapped: the exported function calls this object.
template <class Signature>
class HookableFunction;

template <class Result, class... Arguments>
class HookableFunction<Result(Arguments...)> {
 public:
  using Function = Result (*)(Arguments...);

  HookableFunction(std::string_view name, Function symbol, Function implementation)
      : implementation_(reinterpret_cast<platform::IMP>(implementation)) {
    registerHookableFunction(name, reinterpret_cast<platform::IMP>(symbol), &implementation_);
  }
  HookableFunction(const HookableFunction&) = delete;
  HookableFunction& operator=(const HookableFunction&) = delete;

  Result operator()(std::type_identity_t<Arguments>... arguments) const {
    return reinterpret_cast<Function>(implementation_)(arguments...);
  }

 private:
  platform::IMP implementation_;
};

}  // namespace host::runtime
