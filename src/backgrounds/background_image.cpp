#include "backgrounds/background_image.h"

#include "backgrounds/background_filenames.h"
#include "backgrounds/hi_res_image.h"

namespace prismal {

platform::Retained<platform::UIImage> loadBackgroundImage(std::string_view key) {
  const auto& filenames = PMGetBackgroundImageFilenames();
  const auto found = filenames.find(key);
  if (found == filenames.end()) return {};
  return HiResAdditions::initWithContentsOfFile2(found->second);
}

}  // namespace prismal
