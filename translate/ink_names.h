// Tells InkML's own elements and attributes from those of others, as programs really write them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace translate {

/// `text` in lower case (ASCII).
std::string lowerCase(std::string_view text);

/// A name without its prefix.
std::string_view localName(std::string_view name);

/// Follows the namespaces of a document. InkML's are the names in its namespace under any prefix,
/// those in none, and those with the prefix of the root where nothing declares it.
class InkNames {
 public:
  /// Enters an element, the root first. The name without prefix, in lower case, if it is InkML's,
  /// else empty. It lives until the next call.
  std::string_view enter(std::string_view name, const char* const* attributes);

  /// Leaves the element that was entered last.
  void leave();

  /// The name of an attribute of the element that was entered last, likewise; "id" for "xml:id".
  std::string_view attribute(std::string_view name);

 private:
  struct Binding {
    std::string prefix;
    bool isInk;
    int depth;
  };

  void declare(std::string_view prefix, std::string_view uri);
  bool isInk(std::string_view prefix) const;
  std::string_view lowered(std::string_view name);

  std::vector<Binding> bindings_;
  std::string rootPrefix_;
  std::string buffer_;
  int depth_ = 0;
};

}  // namespace translate
