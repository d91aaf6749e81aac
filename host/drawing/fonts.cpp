#include "host/drawing/fonts.h"

#include <map>
#include <string>
#include <utility>

#include "host/drawing/face.h"

namespace host::drawing {

struct Fonts::State {
  FontFiles files;
  FontLibrary library;
  std::map<FontFile, std::unique_ptr<Face>> open;
  std::map<std::string, const Face*, std::less<>> by_name;
  std::map<std::pair<const Face*, char32_t>, const Face*> by_character;

  /// A file that can't be opened is asked for again the next time: what was missing then, memory or
  /// a descriptor, may be there by now.
  const Face* face(const FontFile& file, FontTraits traits) {
    if (const auto known = open.find(file); known != open.end()) return known->second.get();
    if (!library) library = startFontLibrary();
    auto face = Face::open(library, file, traits);
    return face ? open.emplace(file, std::move(face)).first->second.get() : nullptr;
  }
};

Fonts::Fonts() : state_(std::make_unique<State>()) {}
Fonts::~Fonts() = default;

const Face* Fonts::named(std::string_view name) {
  if (const auto known = state_->by_name.find(name); known != state_->by_name.end()) {
    if (known->second->isSound()) return known->second;
    state_ = std::make_unique<State>();
  }
  const FontTraits traits = traitsOf(name);
  for (const auto& file : {state_->files.named(name), state_->files.system(traits)}) {
    if (!file) continue;
    const Face* const face = state_->face(*file, traits);
    if (face) state_->by_name.emplace(name, face);
    return face;
  }
  return nullptr;
}

const Face* Fonts::covering(char32_t character, const Face* preferred) {
  if (!preferred || preferred->has(character)) return preferred;
  const auto known = state_->by_character.find({preferred, character});
  if (known != state_->by_character.end()) return known->second;
  const FontTraits traits = preferred->traits();
  const auto file = state_->files.covering(character, traits);
  const Face* const found = file ? state_->face(*file, traits) : preferred;
  if (!found) return preferred;
  state_->by_character.emplace(std::pair(preferred, character), found);
  return found;
}

}  // namespace host::drawing
