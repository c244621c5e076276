// The markup of a damaged ink document: which bytes are tags, and which are not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rescue {

/// A run of bytes of an ink document.
struct InkPiece {
  enum class Kind : std::uint8_t {
    text,
    start,        ///< A start tag.
    end,          ///< An end tag.
    empty,        ///< A tag of an element without content.
    comment,      ///< Whole, from "<!--" to "-->".
    declaration,  ///< "<?xml ... ?>"
    broken,       ///< Begins with "<", but is none of these.
  };

  Kind kind = Kind::text;
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string_view name;  ///< Of a tag.
  /// Nothing in it would change or stop the XML library: its characters and references are whole.
  bool isClean = true;

  bool isTag() const { return kind == Kind::start || kind == Kind::end || kind == Kind::empty; }
  bool opens(std::string_view wanted) const { return kind == Kind::start && name == wanted; }
  bool closes(std::string_view wanted) const { return kind == Kind::end && name == wanted; }
};

/// Divides the bytes into pieces, without a gap. Takes any bytes, in linear time. The names are
/// views into `bytes`.
std::vector<InkPiece> scanInk(std::string_view bytes);

/// The value of a tag's attribute, as it stands between its quotes.
std::optional<std::string_view> attributeOf(std::string_view tag, std::string_view name);

/// Whether the text can stand in a document, outside of tags, and reads back as it is.
bool isCleanText(std::string_view text);

/// The text without the bytes that cannot stand in a document. A lone "&" becomes "&amp;".
std::string cleanText(std::string_view text);

}  // namespace rescue
