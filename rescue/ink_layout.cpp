#include "rescue/ink_layout.h"

#include <algorithm>

#include "inkml/characters.h"

namespace rescue {
namespace {

using Kind = InkPart::Kind;
using std::size_t;
using std::string_view;

// Where a layer's tags have left something: parts of words that stand in no other tag.
size_t findLayerMark(string_view text, size_t from) {
  size_t first = string_view::npos;
  for (const string_view part : {"group", "layer", "grou", "roup", "laye", "ayer", "ceg"})
    first = std::min(first, text.find(part, from));
  return first;
}

bool isBlankText(string_view text) {
  return text.find_first_not_of(Orvo::kBlanks) == string_view::npos;
}

class Walker {
 public:
  Walker(string_view bytes, std::span<const InkPiece> pieces, const InkDefinitions& definitions)
      : bytes_(bytes), pieces_(pieces), definitions_(definitions) {}

  InkLayout run() {
    for (size_t i = 0; i < pieces_.size();)
      i = walk(i);
    endRegion(InkLayout::kNone);
    layout_.hasOtherGroups = otherGroups_ > 0 && groups_ == 0;
    return std::move(layout_);
  }

 private:
  string_view textOf(size_t i) const {
    return bytes_.substr(pieces_[i].begin, pieces_[i].end - pieces_[i].begin);
  }

  void add(Kind kind, size_t i, size_t end) {
    layout_.parts.push_back({kind, pieces_[i].begin, end, i, 0});
  }

  // Handles the piece and those that belong to it; the result is the next one.
  size_t walk(size_t i) {
    const InkPiece& piece = pieces_[i];
    if (definitions_.isTaken[i]) return walkDefinition(i);
    if (piece.kind == InkPiece::Kind::text) return extendRegion(i);
    if (piece.kind == InkPiece::Kind::broken) {
      ++layout_.brokenPieces;
      isTouched_ = true;
      return extendRegion(i);
    }
    endRegion(i);
    previousTag_ = i;
    isTouched_ = piece.kind == InkPiece::Kind::declaration || piece.kind == InkPiece::Kind::comment;
    return walkMarkup(i);
  }

  size_t walkDefinition(size_t i) {
    if (!regionIsEmpty_) endRegion(i);
    previousTag_ = i;
    isTouched_ = false;
    layout_.hasOwnTags =
        layout_.hasOwnTags || pieces_[i].name == "traceFormat" || pieces_[i].name == "definitions";
    return i + 1;
  }

  size_t walkMarkup(size_t i) {
    const InkPiece& piece = pieces_[i];
    if (piece.kind == InkPiece::Kind::declaration) return add(Kind::document, i, piece.end), i + 1;
    if (piece.kind == InkPiece::Kind::comment) return add(Kind::comment, i, piece.end), i + 1;
    if (piece.name == "ink") {
      layout_.hasOwnTags = true;
      add(piece.kind == InkPiece::Kind::end ? Kind::documentEnd : Kind::document, i, piece.end);
    } else if (isGroup(i)) {
      add(piece.kind == InkPiece::Kind::end ? Kind::layerEnd : Kind::layer, i, piece.end);
    } else if (piece.opens("annotation")) {
      return walkAnnotation(i);
    }
    return i + 1;
  }

  bool isGroup(size_t i) {
    const InkPiece& piece = pieces_[i];
    if (piece.name == "tracegroup") {
      ++groups_;
      layout_.hasOwnTags = true;
      return true;
    }
    if (piece.name == "traceGroup") {
      ++otherGroups_;
      return true;
    }
    if (piece.kind == InkPiece::Kind::end) return findLayerMark(piece.name, 0) != string_view::npos;
    return attributeOf(textOf(i), "id").value_or("").starts_with("layer");
  }

  size_t walkAnnotation(size_t i) {
    const bool hasText = i + 1 < pieces_.size() && pieces_[i + 1].kind == InkPiece::Kind::text;
    // Where its end is lost, what follows may hold points.
    if (!hasText || textOf(i + 1).find(',') != string_view::npos) {
      const bool isClosed = i + 2 < pieces_.size() && pieces_[i + 2].closes("annotation");
      if (!hasText || !isClosed) return i + 1;
    }
    const bool isClosed = i + 2 < pieces_.size() && pieces_[i + 2].closes("annotation");
    add(Kind::annotation, i, pieces_[i + (isClosed ? 2 : 1)].end);
    return i + (isClosed ? 3 : 2);
  }

  size_t extendRegion(size_t i) {
    if (regionIsEmpty_) regionBegin_ = pieces_[i].begin;
    regionIsEmpty_ = false;
    return i + 1;
  }

  static bool isTraceTag(const InkPiece& piece) {
    return piece.name == "trace" || piece.name.starts_with("trac");
  }

  // Ends the region in front of the piece `next`, and divides it where a layer may have begun.
  void endRegion(size_t next) {
    if (regionIsEmpty_) return;
    regionIsEmpty_ = true;
    const size_t end = next == InkLayout::kNone ? bytes_.size() : pieces_[next].begin;
    const string_view text = bytes_.substr(0, end);
    const size_t start = previousTag_;
    const bool startsAtTag = start != InkLayout::kNone && pieces_[start].end == regionBegin_;
    const bool isContent =
        startsAtTag && pieces_[start].kind == InkPiece::Kind::start && isTrace(start);
    // Text between other tags, such as a brush's properties, holds no points.
    const bool isOther = startsAtTag && !isTouched_ && isDefinition(start) &&
                         text.find(',', regionBegin_) == string_view::npos;
    if (!isContent && (isOther || isBlankText(text.substr(regionBegin_)))) return;
    const size_t first = layout_.regions.size();
    size_t begin = regionBegin_;
    while (true) {
      const size_t mark = findLayerMark(text, begin);
      addRegion(begin, std::min(mark, end));
      if (mark >= end) break;
      layout_.parts.push_back({Kind::layerMark, mark, mark, 0, 0});
      begin = mark + 3;
    }
    if (startsAtTag) layout_.regions[first].isSureAtStart = true;
    if (isContent) layout_.tags[first].start = start;
    if (next == InkLayout::kNone) return;
    const bool isClosed = pieces_[next].closes("trace");
    if (isClosed) layout_.tags.back().end = next;
    // Where something else follows the points, the last may be cut.
    layout_.regions.back().isSureAtEnd = isClosed || !isContent;
  }

  bool isDefinition(size_t i) const { return definitions_.isTaken[i]; }

  bool isTrace(size_t i) {
    const bool hasContext = attributeOf(textOf(i), "contextRef").has_value();
    layout_.hasOwnTags = layout_.hasOwnTags || hasContext;
    return pieces_[i].name == "trace" || hasContext;
  }

  void addRegion(size_t begin, size_t end) {
    layout_.parts.push_back({Kind::region, begin, end, 0, layout_.regions.size()});
    layout_.regions.push_back({.begin = begin, .end = end});
    layout_.tags.emplace_back();
  }

  string_view bytes_;
  std::span<const InkPiece> pieces_;
  const InkDefinitions& definitions_;
  InkLayout layout_;
  size_t previousTag_ = InkLayout::kNone;
  size_t regionBegin_ = 0;
  bool regionIsEmpty_ = true;
  bool isTouched_ = true;
  size_t groups_ = 0;
  size_t otherGroups_ = 0;
};

}  // namespace

InkLayout layOut(string_view bytes, std::span<const InkPiece> pieces,
                 const InkDefinitions& definitions) {
  return Walker(bytes, pieces, definitions).run();
}

}  // namespace rescue
