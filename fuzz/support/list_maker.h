#pragma once

#include "host/plist/builder.h"
#include "support/byte_source.h"

namespace fuzz {

/// Makes property lists that are mostly what a theme or the settings look like, and here and there
/// are not: a value of another type, an item too many, a name that nobody knows.
class ListMaker {
 public:
  explicit ListMaker(ByteSource& source) : source_(source) {}

  platform::PropertyList theme() &&;
  platform::PropertyList settings() &&;

 private:
  using View = host::plist::Builder::View;

  View anything(int depth = 0);
  View text(std::string_view usual);
  View colors();
  View gradients();
  View styles();
  View rules();
  View rule();
  View style();
  View images();
  View userImages();
  template <class Make>
  View list(Make make);
  template <class Table, class Make>
  View dictionary(const Table& keys, Make make);
  template <class Make>
  View usually(Make make);

  ByteSource& source_;
  host::plist::Builder builder_;
};

}  // namespace fuzz
