#include "serve/picture_cache.h"

namespace tools::serve {

std::optional<std::string> PictureCache::find(const std::string& question) {
  const std::scoped_lock lock(mutex_);
  const auto place = places_.find(question);
  if (place == places_.end()) return std::nullopt;
  entries_.splice(entries_.begin(), entries_, place->second);
  return place->second->second;
}

void PictureCache::keep(const std::string& question, std::string answer) {
  const std::scoped_lock lock(mutex_);
  if (answer.size() > mostBytes_ || places_.contains(question)) return;
  bytes_ += answer.size();
  entries_.emplace_front(question, std::move(answer));
  places_[question] = entries_.begin();
  while (bytes_ > mostBytes_) dropOldest();
}

void PictureCache::dropOldest() {
  bytes_ -= entries_.back().second.size();
  places_.erase(entries_.back().first);
  entries_.pop_back();
}

}  // namespace tools::serve
