#include "hooks/previous_implementations.h"

namespace prismal {

constinit PreviousImplementations previous;

}  // namespace prismal
