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

  const Face* face(const std::optional<FontFile>& file, FontTraits traits) {
    if (!file) return nullptr;
    if (!library) library = startFontLibrary();
    auto [found, is_new] = open.try_emplace(*file);
    if (is_new) found->second = Face::open(library, *file, traits);
    return found->second.get();
  }
};

Fonts::Fonts() : state_(std::make_unique<State>()) {}
Fonts::~Fonts() = default;

const Face* Fonts::named(std::string_view name) {
  if (const auto known = state_->by_name.find(name); known != state_->by_name.end()) {
    return known->second;
  }
  const FontTraits traits = traitsOf(name);
  const Face* face = state_->face(state_->files.named(name), traits);
  if (!face) face = state_->face(state_->files.system(traits), traits);
  state_->by_name.emplace(name, face);
  return face;
}

const Face* Fonts::covering(char32_t character, const Face* preferred) {
  if (!preferred || preferred->has(character)) return preferred;
  auto [known, is_new] = state_->by_character.try_emplace({preferred, character}, preferred);
  if (is_new) {
    const FontTraits traits = preferred->traits();
    const Face* found = state_->face(state_->files.covering(character, traits), traits);
    if (found) known->second = found;
  }
  return known->second;
}

}  // namespace host::drawing
