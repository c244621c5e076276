#include "stylelib/library_parts.h"

#include <optional>

#include "stylelib/tokens.h"

namespace stylelib {

namespace {

/// The text between the first mark of one kind and the next mark of another.
class Section {
 public:
  Section(std::string_view begin, std::string_view end) : begin_(begin), end_(end) {}

  /// `end` is where the mark ends in the text.
  void meet(const Token& mark, std::string_view text, std::size_t end) {
    if (!start_) {
      if (mark.isMark(begin_)) start_ = end;
    } else if (!inside_ && mark.isMark(end_)) {
      inside_ = text.substr(*start_, end - mark.text.size() - *start_);
    }
  }

  std::string_view inside() const { return inside_.value_or(""); }

 private:
  std::string_view begin_;
  std::string_view end_;
  std::optional<std::size_t> start_;
  std::optional<std::string_view> inside_;
};

class PartsFinder {
 public:
  explicit PartsFinder(std::string_view text) : text_(text), reader_(text) {}

  LibraryParts find() {
    while (const std::optional<Token> token = reader_.next()) {
      if (token->kind == Token::Kind::mark) {
        meetMark(*token);
      } else {
        if (opensObject_ && token->isString(kBrushTool)) brush_ = reader_.position();
        opensObject_ = false;
      }
    }
    endBrush(text_.size());
    parts_.styles = styles_.inside();
    parts_.list = list_.inside();
    return std::move(parts_);
  }

 private:
  void meetMark(const Token& mark) {
    endBrush(reader_.position() - mark.text.size());
    styles_.meet(mark, text_, reader_.position());
    list_.meet(mark, text_, reader_.position());
    opensObject_ = mark.isMark("%AI8_BeginPluginObject");
  }

  void endBrush(std::size_t end) {
    if (brush_) parts_.brushes.push_back(text_.substr(*brush_, end - *brush_));
    brush_.reset();
  }

  std::string_view text_;
  TokenReader reader_;
  Section styles_{"%AI9_BeginArtStyles", "%AI9_EndArtStyles"};
  Section list_{"%AI9_BeginArtStyleList", "%AI9_EndArtStyleList"};
  LibraryParts parts_;
  std::optional<std::size_t> brush_;  // where the brush that is being read starts
  bool opensObject_ = false;          // the last token was the mark before a plug-in object
};

}  // namespace

std::size_t LibraryParts::size() const {
  std::size_t size = styles.size() + list.size();
  for (const std::string_view brush : brushes)
    size += brush.size();
  return size;
}

LibraryParts findParts(std::string_view text) {
  return PartsFinder(text).find();
}

}  // namespace stylelib
