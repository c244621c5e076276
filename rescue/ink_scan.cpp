#include "rescue/ink_scan.h"

#include <algorithm>

#include "inkml/characters.h"

namespace rescue {
namespace {

using Kind = InkPiece::Kind;
using std::size_t;
using std::string_view;

constexpr bool startsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

constexpr bool continuesName(char c) {
  return startsName(c) || Orvo::isDigit(c) || c == '-' || c == '.' || c == ':';
}

size_t skipBlanks(string_view text, size_t i) {
  while (i < text.size() && Orvo::isBlank(text[i]))
    ++i;
  return i;
}

size_t skipName(string_view text, size_t i) {
  if (i >= text.size() || !startsName(text[i])) return i;
  while (i < text.size() && continuesName(text[i]))
    ++i;
  return i;
}

// An attribute `name="value"`; `end` is behind it, or 0 where there is none.
struct Attribute {
  string_view name;
  string_view value;
  size_t end = 0;
};

Attribute readAttribute(string_view tag, size_t i) {
  const size_t nameEnd = skipName(tag, i);
  if (nameEnd == i) return {};
  size_t next = skipBlanks(tag, nameEnd);
  if (next >= tag.size() || tag[next] != '=') return {};
  next = skipBlanks(tag, next + 1);
  if (next >= tag.size() || (tag[next] != '"' && tag[next] != '\'')) return {};
  const size_t close = tag.find(tag[next], next + 1);
  if (close == string_view::npos) return {};
  const string_view value = tag.substr(next + 1, close - next - 1);
  return {tag.substr(i, nameEnd - i), value, close + 1};
}

// Whether the tag from "<" to ">" consists of a name and of attributes with names of their own.
bool readTag(string_view tag, InkPiece& piece) {
  const bool closes = tag[1] == '/';
  const size_t nameBegin = closes ? 2 : 1;
  const size_t nameEnd = skipName(tag, nameBegin);
  if (nameEnd == nameBegin) return false;
  piece.name = tag.substr(nameBegin, nameEnd - nameBegin);
  std::vector<string_view> names;
  size_t i = nameEnd;
  while (true) {
    const size_t next = skipBlanks(tag, i);
    if (tag.substr(next) == ">") {
      piece.kind = closes ? Kind::end : Kind::start;
      return true;
    }
    if (closes) return false;
    if (tag.substr(next) == "/>") {
      piece.kind = Kind::empty;
      return true;
    }
    const Attribute attribute = readAttribute(tag, next);
    constexpr size_t kMostAttributes = 32;
    if (next == i || attribute.end == 0 || names.size() == kMostAttributes) return false;
    if (std::find(names.begin(), names.end(), attribute.name) != names.end()) return false;
    names.push_back(attribute.name);
    i = attribute.end;
  }
}

// How many bytes the character at `i` has, and 0 where there is none that can stand in a text.
size_t characterAt(string_view text, size_t i) {
  const auto byte = static_cast<unsigned char>(text[i]);
  if (byte < 0x80) {
    const bool isControl = byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
    return isControl || byte == 0x7F ? 0 : 1;
  }
  if (byte < 0xC2 || byte > 0xF4) return 0;
  const size_t length = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
  if (i + length > text.size()) return 0;
  for (size_t k = 1; k < length; ++k)
    if ((static_cast<unsigned char>(text[i + k]) & 0xC0U) != 0x80U) return 0;
  // The XML library drops what could be a byte order mark at the start of a text.
  const string_view character = text.substr(i, length);
  if (character == "\xEF\xBB\xBF" || character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF") {
    return 0;
  }
  return length;
}

// The length of the reference at `i`, and 0 where there is none.
size_t referenceAt(string_view text, size_t i) {
  for (const string_view known : {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"})
    if (text.substr(i).starts_with(known)) return known.size();
  if (!text.substr(i).starts_with("&#")) return 0;
  const bool isHexadecimal = i + 2 < text.size() && text[i + 2] == 'x';
  const size_t begin = i + (isHexadecimal ? 3 : 2);
  unsigned long value = 0;
  constexpr unsigned long kLargest = 0x10FFFF;
  size_t end = begin;
  for (; end < text.size() && value <= kLargest; ++end) {
    const char c = text[end];
    if (Orvo::isDigit(c)) {
      value = value * (isHexadecimal ? 16 : 10) + static_cast<unsigned long>(c - '0');
    } else if (isHexadecimal && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'))) {
      value = value * 16 + static_cast<unsigned long>((c | 0x20) - 'a') + 10;
    } else {
      break;
    }
  }
  const bool isWhole = end > begin && end < text.size() && text[end] == ';';
  return isWhole && value != 0 && value <= kLargest ? end + 1 - i : 0;
}

// Calls `keep` with each whole character or reference, and `mend` with each byte that is neither.
template <class Keep, class Mend>
void visitText(string_view text, Keep keep, Mend mend) {
  for (size_t i = 0; i < text.size();) {
    const char c = text[i];
    const size_t length = c == '&' ? referenceAt(text, i) : c == '<' ? 0 : characterAt(text, i);
    if (length == 0) {
      mend(c);
      ++i;
    } else {
      keep(text.substr(i, length));
      i += length;
    }
  }
}

class Scanner {
 public:
  explicit Scanner(string_view bytes) : bytes_(bytes) {}

  std::vector<InkPiece> run() {
    size_t textBegin = 0;
    for (size_t i = bytes_.find('<'); i != string_view::npos; i = bytes_.find('<', i)) {
      const InkPiece piece = pieceAt(i);
      if (i > textBegin) add({Kind::text, textBegin, i, {}, true});
      add(piece);
      i = textBegin = piece.end;
    }
    if (textBegin < bytes_.size()) add({Kind::text, textBegin, bytes_.size(), {}, true});
    return std::move(pieces_);
  }

 private:
  void add(const InkPiece& piece) { pieces_.push_back(piece); }

  InkPiece pieceAt(size_t begin) {
    const string_view rest = bytes_.substr(begin);
    if (rest.starts_with("<!--")) return commentAt(begin);
    // Tags of this format are short.
    constexpr size_t kLongest = 2000;
    const size_t length = rest.substr(0, kLongest).find_first_of("<>", 1);
    if (length == string_view::npos || rest[length] == '<') return brokenAt(begin);
    const string_view tag = rest.substr(0, length + 1);
    InkPiece piece{Kind::broken, begin, begin + tag.size(), {}, isCleanText(tag.substr(1))};
    if (tag.starts_with("<?xml ") && tag.ends_with("?>")) {
      piece.kind = Kind::declaration;
      return piece;
    }
    return readTag(tag, piece) ? piece : brokenAt(begin);
  }

  InkPiece commentAt(size_t begin) {
    if (begin >= noCommentEndFrom_) return brokenAt(begin);
    const size_t end = bytes_.find("-->", begin + 4);
    if (end == string_view::npos) {
      noCommentEndFrom_ = begin;
      return brokenAt(begin);
    }
    const string_view inside = bytes_.substr(begin + 4, end - begin - 4);
    const bool isClean = inside.find_first_of("<&") == string_view::npos && isCleanText(inside);
    return {Kind::comment, begin, end + 3, {}, isClean};
  }

  // What is left of a tag ends at its ">", unless points come before that.
  InkPiece brokenAt(size_t begin) const {
    constexpr size_t kLongest = 200;
    const string_view rest = bytes_.substr(begin, kLongest);
    const size_t end = rest.find_first_of("<>,", 1);
    const bool hasEnd = end != string_view::npos && rest[end] == '>';
    return {Kind::broken, begin, begin + (hasEnd ? end + 1 : 1), {}, false};
  }

  string_view bytes_;
  std::vector<InkPiece> pieces_;
  size_t noCommentEndFrom_ = string_view::npos;
};

}  // namespace

std::vector<InkPiece> scanInk(string_view bytes) {
  return Scanner(bytes).run();
}

std::optional<string_view> attributeOf(string_view tag, string_view name) {
  size_t i = skipName(tag, tag.substr(1).starts_with('/') ? 2 : 1);
  while (true) {
    const Attribute attribute = readAttribute(tag, skipBlanks(tag, i));
    if (attribute.end == 0) return std::nullopt;
    if (attribute.name == name) return attribute.value;
    i = attribute.end;
  }
}

bool isCleanText(string_view text) {
  bool isClean = true;
  visitText(
      text, [](string_view) {}, [&](char) { isClean = false; });
  return isClean;
}

std::string cleanText(string_view text) {
  std::string clean;
  visitText(
      text, [&](string_view whole) { clean += whole; },
      [&](char c) {
        if (c == '&') clean += "&amp;";
      });
  return clean;
}

}  // namespace rescue
