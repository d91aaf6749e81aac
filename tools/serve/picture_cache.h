#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace tools::serve {

/// Keeps what was answered lately by what was asked, up to some bytes; what has not been asked for
/// longest goes first. Any thread.
class PictureCache {
 public:
  explicit PictureCache(std::size_t mostBytes) : mostBytes_(mostBytes) {}

  std::optional<std::string> find(const std::string& question);
  void keep(const std::string& question, std::string answer);

 private:
  using Entries = std::list<std::pair<std::string, std::string>>;  // the latest first

  void dropOldest();

  std::mutex mutex_;
  std::size_t mostBytes_;
  std::size_t bytes_ = 0;
  Entries entries_;
  std::map<std::string, Entries::iterator> places_;
};

}  // namespace tools::serve
