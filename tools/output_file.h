#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/files/descriptor.h"
#include "host/files/result.h"

namespace tools {

/// What becomes of a link in the place of a result. Where somebody else may have left one, only a
/// name that the user has typed is known to be meant.
enum class Links : std::uint8_t { kFollowed, kReplaced };

/// A result of this program while it is made: the file `path`, which a reader sees whole or not at
/// all, or standard output for "-". What is not finished leaves no trace.
class OutputFile {
 public:
  /// Opens the place for the result, so that another process can be let write there and nowhere
  /// else. What is replaced by its name alone, be it no file, is never opened.
  static host::files::Result<OutputFile> open(const std::filesystem::path& path,
                                              Links links = Links::kFollowed);

  OutputFile(OutputFile&&) = default;
  OutputFile& operator=(OutputFile&&) = delete;
  ~OutputFile();

  /// To be written to from the start to the end.
  int descriptor() const { return file_.get(); }
  /// Puts what has been written in its place.
  host::files::Result<host::files::Done> finish();

 private:
  OutputFile() = default;
  bool openNew();
  std::filesystem::path partName() const;
  bool nameIt();

  host::files::Descriptor file_;
  /// What is replaced; empty for what is no file, such as a pipe, and needs no care.
  std::filesystem::path place_;
  std::filesystem::path part_;  ///< the name that the file has until then, if any
  std::optional<std::filesystem::perms> permissions_;
};

/// Writes a whole result, as an OutputFile.
host::files::Result<host::files::Done> writeOutput(const std::filesystem::path& path,
                                                   std::string_view bytes,
                                                   Links links = Links::kFollowed);

/// Whether writeOutput would write to a terminal, where a picture is of no use.
bool isTerminal(const std::filesystem::path& path);

/// Why nothing can be written to `output`, in a line: it is one of `inputs`, under whatever name,
/// be they there or not, and what is made of them would take its place. None otherwise.
std::optional<std::string> refusalToReplace(const std::filesystem::path& output,
                                            std::span<const std::filesystem::path> inputs);

/// Writes text to standard output.
host::files::Result<host::files::Done> printResult(std::string_view text);

}  // namespace tools
