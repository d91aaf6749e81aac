#include "host/keyboard/key_picture_file.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>

#include "host/keyboard/checksum.h"

namespace host::keyboard {

using images::Pixel;
using images::PlacedBitmap;

namespace {

// In the other byte order it is no magic.
constexpr std::uint64_t kMagic = 0x504d4b4559504943;
constexpr std::uint32_t kVersion = 1;

/// No picture has a longer side, nor does any lie farther from its board's corner.
constexpr std::int32_t kFarthest = 1 << 15;

struct Header {
  std::uint64_t magic = kMagic;
  std::uint32_t version = kVersion;
  std::uint32_t count = 0;
  std::uint64_t checksum = 0;
};
static_assert(sizeof(Header) == 24);

struct Place {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;

  bool isSound() const { return isNear(left) && isNear(top) && isNear(width) && isNear(height); }

 private:
  static bool isNear(std::int32_t pixels) { return pixels >= 0 && pixels <= kFarthest; }
};
static_assert(sizeof(Place) == 16);

template <class Value>
std::string_view bytesOf(const Value& value) {
  return {reinterpret_cast<const char*>(&value), sizeof value};
}

void append(std::string& bytes, std::string_view text) {
  bytes.append(bytesOf(static_cast<std::uint32_t>(text.size()))).append(text);
}

void append(std::string& bytes, const PlacedBitmap& picture) {
  const images::Bitmap& bitmap = picture.bitmap;
  bytes.append(bytesOf(Place{picture.left, picture.top, bitmap.width, bitmap.height}));
  bytes.append(reinterpret_cast<const char*>(bitmap.pixels.data()),
               bitmap.pixels.size() * sizeof(Pixel));
}

/// Takes values off the front of bytes. After one that isn't there nothing is any more.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  std::string_view rest() const { return rest_; }

  std::optional<std::string_view> take(std::size_t size) {
    if (size > rest_.size()) return std::nullopt;
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return taken;
  }

  template <class Value>
  std::optional<Value> take() {
    const auto taken = take(sizeof(Value));
    if (!taken) return std::nullopt;
    Value value;
    std::memcpy(&value, taken->data(), sizeof value);
    return value;
  }

  std::optional<std::string_view> takeText() {
    const auto size = take<std::uint32_t>();
    return size ? take(*size) : std::nullopt;
  }

 private:
  std::string_view rest_;
};

images::SharedBitmap readPicture(Reader& reader) {
  const auto place = reader.take<Place>();
  if (!place || !place->isSound()) return nullptr;
  const std::size_t count =
      static_cast<std::size_t>(place->width) * static_cast<std::size_t>(place->height);
  const auto bytes = reader.take(count * sizeof(Pixel));
  if (!bytes) return nullptr;
  auto picture = std::make_shared<PlacedBitmap>(
      PlacedBitmap{place->left, place->top, {place->width, place->height, false, {}}});
  picture->bitmap.pixels.resize(count);
  if (count > 0) std::memcpy(picture->bitmap.pixels.data(), bytes->data(), bytes->size());
  return picture;
}

bool readEntry(Reader& reader, KeyPictureGroup& group) {
  const auto identity = reader.takeText();
  if (!identity) return false;
  auto& pictures = group.pictures;
  // They are written in order; in another, or twice, nobody has written them.
  if (!pictures.empty() && pictures.rbegin()->first >= *identity) return false;
  auto picture = readPicture(reader);
  if (!picture) return false;
  pictures.emplace_hint(pictures.end(), *identity, std::move(picture));
  return true;
}

bool isSound(const Header& header, std::string_view body) {
  return header.magic == kMagic && header.version == kVersion && header.checksum == checksum(body);
}

}  // namespace

std::string encodeGroup(const KeyPictureGroup& group) {
  Header header;
  std::string bytes(bytesOf(header));
  append(bytes, group.stamp);
  for (const auto& [identity, picture] : group.pictures) {
    append(bytes, identity);
    append(bytes, *picture);
  }
  header.count = static_cast<std::uint32_t>(group.pictures.size());
  header.checksum = checksum(std::string_view(bytes).substr(sizeof header));
  bytes.replace(0, sizeof header, bytesOf(header));
  return bytes;
}

std::optional<KeyPictureGroup> decodeGroup(std::string_view bytes) {
  Reader reader(bytes);
  const auto header = reader.take<Header>();
  if (!header || !isSound(*header, reader.rest())) return std::nullopt;
  const auto stamp = reader.takeText();
  if (!stamp) return std::nullopt;
  KeyPictureGroup group{std::string(*stamp), {}};
  for (std::uint32_t i = 0; i < header->count; ++i) {
    if (!readEntry(reader, group)) return std::nullopt;
  }
  if (!reader.rest().empty()) return std::nullopt;
  return group;
}

}  // namespace host::keyboard
