#pragma once

#include <string>
#include <vector>

namespace host::files {

// Trees below an open directory, which may be an O_PATH descriptor. Symbolic links are entries like
// files: they are never followed. Errors are errno values, 0 for none. Any thread.

/// Removes the entry `name` of `directory` with all that lies below it; one that isn't there is no
/// error. Goes on after an error and returns the first.
int removeEntry(int directory, const char* name);

/// Empties `directory`, as removeEntry does.
int removeContents(int directory);

/// Appends to `names` the name of everything in `directory` itself, in no order.
int listNames(int directory, std::vector<std::string>& names);

/// Appends to `files` the path, beginning with `prefix` and a slash, of everything below
/// `directory` that is no directory, in no order.
int listFiles(int directory, const std::string& prefix, std::vector<std::string>& files);

}  // namespace host::files
