#include "inkml/file_scan.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "inkml/characters.h"

namespace Orvo {
namespace {

constexpr std::string_view kByteOrderMarks[] = {"\xEF\xBB\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF"};

bool startsName(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 127 || std::isalpha(byte) != 0 || c == '_';
}

bool continuesName(char c) {
  return startsName(c) || isDigit(c) || c == '-' || c == '.' || c == ':';
}

// How many bytes a character has that begins with `c`, for the library.
std::size_t characterLength(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0xC2 || byte > 0xF4) return 1;
  return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
  return std::ranges::equal(text, lowerCase, [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == b;
  });
}

// Goes through the file as the library's parser does. A step that returns false has set the end.
class Scanner {
 public:
  Scanner(const std::string& text, XmlEncoding encoding, ScanLimits limits)
      : text_(text), limits_(limits) {
    if (encoding == XmlEncoding::utf8 || startsWith(kByteOrderMarks[0])) settle(true);
  }

  FileScan run() {
    skipBlanks();
    while (!atEnd() && step())
      skipBlanks();
    if (scan_.end == ScanEnd::wholeFile) endQuietly();
    return scan_;
  }

 private:
  char current() const { return text_[position_]; }  // A NUL after the last byte.
  bool atEnd() const { return current() == '\0'; }

  bool startsWith(std::string_view start) const {
    return text_.compare(position_, start.size(), start) == 0;
  }
  bool startsWithIgnoringCase(std::string_view lowerCase) const {
    return equalsIgnoringCase(std::string_view(text_).substr(position_, lowerCase.size()),
                              lowerCase);
  }

  bool stop(ScanEnd end) { return stopAt(position_, end); }
  bool stopAt(std::size_t offset, ScanEnd end) {
    scan_.end = end;
    scan_.offset = offset;
    return false;
  }

  // At the end of the bytes, or at a NUL where the library looks for more.
  void endQuietly() {
    const bool whole = position_ >= text_.size();
    stop(depth_ > 0 ? ScanEnd::failure : whole ? ScanEnd::wholeFile : ScanEnd::nul);
  }

  void settle(bool utf8) {
    utf8_ = utf8;
    encodingKnown_ = true;
  }

  bool step() {
    if (current() != '<') return depth_ > 0 ? skipText('<') : stop(ScanEnd::text);
    if (depth_ > 0 && startsWith("</")) return closeElement();
    return readNode();
  }

  bool readNode() {
    if (depth_ == 0) {
      scan_.afterDocumentType = startsWith("<!DOCTYPE");
      scan_.afterInstruction = startsWith("<?");
    }
    if (startsWithIgnoringCase("<?xml")) return readDeclaration();
    if (startsWith("<!--")) return skipPast("-->", 4);
    if (startsWith("<![CDATA[")) return skipPast("]]>", 9);
    if (!startsWith("<!") && startsName(text_[position_ + 1])) return openElement();
    return skipPast(">", 1);
  }

  bool skipPast(std::string_view end, std::size_t from) {
    const std::size_t start = std::min(position_ + from, text_.size());
    const std::size_t found = text_.find(end, start);
    const std::size_t nul = findNul(start, found);
    if (nul != std::string::npos) {
      position_ = nul;
    } else {
      position_ = found == std::string::npos ? text_.size() : found + end.size();
    }
    return true;
  }

  // The first NUL from `start` on and before `end`; `npos` when there is none.
  std::size_t findNul(std::size_t start, std::size_t end) const {
    return std::string_view(text_).substr(0, end).find('\0', start);
  }

  bool openElement() {
    scan_.depth = std::max(scan_.depth, depth_ + 1);
    if (scan_.depth > limits_.depth) return stop(ScanEnd::tooDeep);
    const std::size_t start = position_++;
    skipBlanks();
    if (!skipName()) return stop(ScanEnd::failure);
    skipBlanks();
    for (int count = 1; current() != '>' && current() != '/'; ++count) {
      if (count > limits_.attributes) return stopAt(start, ScanEnd::tooManyAttributes);
      if (!readAttribute(nullptr)) return false;
      skipBlanks();
    }
    if (current() == '>') {
      ++position_;
      ++depth_;
      return true;
    }
    ++position_;
    if (current() != '>') return stop(ScanEnd::failure);
    ++position_;
    noteWholeElement();
    return true;
  }

  bool closeElement() {
    skipPast(">", 2);
    --depth_;
    noteWholeElement();
    return true;
  }

  void noteWholeElement() {
    if (depth_ == 0) scan_.afterElement = true;
  }

  // An attribute that cannot be read makes the library stop: with an error inside an element,
  // quietly outside.
  bool readDeclaration() {
    position_ += 5;
    std::string encoding;
    while (!atEnd()) {
      if (current() == '>') {
        ++position_;
        if (depth_ == 0 && !encodingKnown_) settleBy(encoding);
        return true;
      }
      skipBlanks();
      if (startsWithIgnoringCase("encoding")) {
        if (!readAttribute(&encoding)) return stopInDeclaration();
      } else if (startsWithIgnoringCase("version") || startsWithIgnoringCase("standalone")) {
        if (!readAttribute(nullptr)) return stopInDeclaration();
      } else {
        while (!atEnd() && current() != '>' && !isBlank(current()))
          ++position_;
      }
    }
    return stopInDeclaration();
  }

  bool stopInDeclaration() {
    if (scan_.end == ScanEnd::overrun) return false;
    return stop(depth_ > 0 ? ScanEnd::failure : ScanEnd::declaration);
  }

  void settleBy(const std::string& encoding) {
    const std::string_view name(encoding);
    settle(name.empty() || equalsIgnoringCase(name.substr(0, 5), "utf-8") ||
           equalsIgnoringCase(name.substr(0, 4), "utf8"));
  }

  bool readAttribute(std::string* value) {
    if (!skipName()) return stop(ScanEnd::failure);
    skipBlanks();
    if (current() != '=') return stop(ScanEnd::failure);
    ++position_;
    skipBlanks();
    const std::size_t start = position_;
    const char quote = current();
    if (quote == '"' || quote == '\'') {
      ++position_;
      if (!skipText(quote)) return false;
      if (atEnd()) return stop(ScanEnd::failure);
      if (value != nullptr) *value = text_.substr(start + 1, position_ - start - 1);
      ++position_;
    } else {
      while (!atEnd() && !isBlank(current()) && current() != '/' && current() != '>') {
        if (current() == '"' || current() == '\'') return stop(ScanEnd::failure);
        ++position_;
      }
      if (value != nullptr) *value = text_.substr(start, position_ - start);
    }
    return atEnd() ? stop(ScanEnd::failure) : true;
  }

  bool skipName() {
    if (!startsName(current())) return false;
    while (continuesName(current()))
      ++position_;
    return true;
  }

  // Moves to `end`, character by character. A character that lacks its last bytes swallows what
  // comes next, even markup, and so does a reference.
  bool skipText(char end) {
    while (current() != end && !atEnd()) {
      if (current() == '&') {
        if (!skipReference()) return stop(ScanEnd::failure);
        continue;
      }
      position_ += utf8_ ? characterLength(current()) : 1;
      if (position_ > text_.size()) {
        position_ = text_.size();
        return stop(ScanEnd::overrun);
      }
    }
    return true;
  }

  // A number in a reference is read from its end backwards.
  bool skipReference() {
    if (text_[position_ + 1] != '#' || text_[position_ + 2] == '\0') {
      ++position_;
      return true;
    }
    const bool hexadecimal = text_[position_ + 2] == 'x';
    const char mark = hexadecimal ? 'x' : '#';
    const std::size_t start = position_ + (hexadecimal ? 3 : 2);
    const std::size_t end = text_.find(';', start);
    if (end == std::string::npos || findNul(start, end) != std::string::npos) return false;
    for (std::size_t i = end - 1; text_[i] != mark; --i) {
      const auto byte = static_cast<unsigned char>(text_[i]);
      if (hexadecimal ? std::isxdigit(byte) == 0 : std::isdigit(byte) == 0) return false;
    }
    position_ = end + 1;
    return true;
  }

  void skipBlanks() {
    while (true) {
      while (isBlank(current()))
        ++position_;
      if (!utf8_ || current() != '\xEF') return;
      const bool mark = std::ranges::any_of(
          kByteOrderMarks, [this](std::string_view bytes) { return startsWith(bytes); });
      if (!mark) return;
      position_ += 3;
    }
  }

  const std::string& text_;
  const ScanLimits limits_;
  FileScan scan_;
  std::size_t position_ = 0;
  int depth_ = 0;
  bool utf8_ = false;
  bool encodingKnown_ = false;
};

}  // namespace

FileScan scanFile(const std::string& text, XmlEncoding encoding, ScanLimits limits) {
  return Scanner(text, encoding, limits).run();
}

}  // namespace Orvo
