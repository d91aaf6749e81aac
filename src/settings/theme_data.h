#pragma once

#include "platform/property_list.h"

namespace prismal {

/// The merged theme: read from its file on the first call, and again on every call once a reload
/// has been requested. Each successful read rebuilds the named colours, then the gradients, from
/// the sections that the file has. Never null: a file that can't be read is an empty theme. The
/// store owns the theme; keep what you need of it (PropertyList::retained).
const platform::PropertyList& PMGetThemeData();

}  // namespace prismal
