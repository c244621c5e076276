#include "rescue/ink_writer.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "inkml/characters.h"

namespace rescue {
namespace {

using Kind = InkPart::Kind;
using std::size_t;
using std::string_view;

constexpr string_view kUsualContext = "default-context";

// The contexts that traces refer to.
class References {
 public:
  explicit References(const InkFindings& in) : in_(in) {
    for (const InkRegion& region : in.layout.regions) {
      const auto index = static_cast<size_t>(&region - in.layout.regions.data());
      const size_t start = in.layout.tags[index].start;
      if (start == InkLayout::kNone || !in.pieces[start].isClean) continue;
      if (const auto id = idAt(start)) ++counts_[*id];
    }
    mergeDamaged();
    const auto most =
        std::max_element(counts_.begin(), counts_.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    if (most != counts_.end()) {
      usual_ = most->first;
    } else if (!in.definitions.contexts.empty() && !in.definitions.contexts.front().id.empty()) {
      usual_ = in.definitions.contexts.front().id;
    }
  }

  const std::map<std::string, size_t>& counts() const { return counts_; }

  /// The value of "contextRef" for a trace whose start tag is this piece, or is lost.
  std::string of(size_t start) const {
    if (start != InkLayout::kNone && in_.pieces[start].isClean) {
      if (const auto id = idAt(start)) {
        const auto meant = meant_.find(*id);
        return "#" + (meant == meant_.end() ? *id : meant->second);
      }
    }
    return "#" + usual_;
  }

 private:
  string_view tag(size_t i) const {
    return in_.bytes.substr(in_.pieces[i].begin, in_.pieces[i].end - in_.pieces[i].begin);
  }

  // The context that a trace's start tag refers to.
  std::optional<std::string> idAt(size_t start) const {
    const auto value = attributeOf(tag(start), "contextRef").value_or("");
    if (value.size() < 2 || !value.starts_with('#')) return std::nullopt;
    return in_.definitions.contextAt(in_.pieces[start].begin, value.substr(1));
  }

  // A reference that few traces have and that nearly equals another one is that one, damaged.
  void mergeDamaged() {
    constexpr size_t kMostKinds = 64;
    if (counts_.size() > kMostKinds) return;
    for (const auto& [reference, count] : std::map<std::string, size_t>(counts_)) {
      constexpr size_t kFew = 2;
      if (count > kFew) continue;
      const std::string known = in_.definitions.contextFor(reference);
      for (const auto& [other, otherCount] : counts_) {
        const bool isMeant = known == reference
                                 ? otherCount > 2 * count && isDamagedForm(reference, other)
                                 : other == known;
        if (!isMeant || other == reference) continue;
        meant_[reference] = other;
        break;
      }
      if (meant_.count(reference) == 0 && known != reference) meant_[reference] = known;
    }
    for (const auto& [damaged, sound] : meant_)
      counts_.erase(damaged);
  }

  const InkFindings& in_;
  std::map<std::string, size_t> counts_;
  std::map<std::string, std::string, std::less<>> meant_;
  std::string usual_{kUsualContext};
};

class Writer {
 public:
  Writer(const InkFindings& in, InkRescue& result) : in_(in), result_(result), references_(in) {}

  void write() {
    for (const InkPart& part : in_.layout.parts)
      writePart(part);
    closeLayer();
    in_.definitions.complete(references_.counts());
    result_.definitionsPutIn = in_.definitions.putIn;
    result_.definitionsMended = in_.definitions.mended;
    result_.definitionsRenamed = in_.definitions.renamed;
    result_.bytes = std::move(declaration_) + '\n' + std::move(ink_) + '\n' +
                    in_.definitions.text() + body_ + "</ink>\n";
    for (size_t i = 0; i < in_.pieces.size(); ++i)
      if (in_.definitions.isKept[i]) keep(in_.pieces[i].begin, in_.pieces[i].end);
    leaveOutTheRest();
  }

 private:
  string_view textOf(size_t begin, size_t end) const {
    return in_.bytes.substr(begin, end - begin);
  }
  string_view textOf(const InkPiece& piece) const { return textOf(piece.begin, piece.end); }

  void keep(size_t begin, size_t end) { kept_.push_back({begin, end}); }

  void writePart(const InkPart& part) {
    switch (part.kind) {
      case Kind::document:
        return startDocument(part);
      case Kind::documentEnd:
        keep(part.begin, part.end);
        return closeLayer();
      case Kind::layer:
        return startLayer(part);
      case Kind::layerEnd:
        keep(part.begin, part.end);
        return closeLayer();
      case Kind::layerMark:
        layerMayEnd_ = true;
        return;
      case Kind::annotation:
        return writeAnnotation(part);
      case Kind::comment:
        return writeComment(part);
      case Kind::region:
        return writeRegion(part.region);
    }
  }

  void startDocument(const InkPart& part) {
    const InkPiece& piece = in_.pieces[part.piece];
    const bool isDeclaration = piece.kind == InkPiece::Kind::declaration;
    if (hasContent_) {
      closeLayer();
      if (!isDeclaration) ++result_.furtherDocuments;
      headers_.push_back({part.begin, part.end});
      return;
    }
    // An encoding other than that of the result must not stand there.
    if (isDeclaration) {
      const bool isUsual = piece.isClean && textOf(piece).find("encoding") == string_view::npos &&
                           textOf(piece).find("version=\"1.") != string_view::npos;
      if (isUsual || textOf(piece).find("UTF-8") != string_view::npos) {
        if (piece.isClean) declaration_ = textOf(piece);
      }
    } else if (piece.kind == InkPiece::Kind::start && piece.isClean) {
      ink_ = textOf(piece);
    }
    keep(part.begin, part.end);
  }

  void startLayer(const InkPart& part) {
    const InkPiece& piece = in_.pieces[part.piece];
    closeLayer();
    hasContent_ = true;
    const std::string id(attributeOf(textOf(piece), "id").value_or(""));
    const bool isSound = piece.isClean && piece.name == "tracegroup" && id.starts_with("layer") &&
                         layerIds_.insert(id).second;
    keep(part.begin, part.end);
    if (!isSound) {
      openLayer();
      if (piece.kind == InkPiece::Kind::empty) closeLayer();
      return;
    }
    body_.append("    ").append(textOf(piece)).append("\n");
    layerIsOpen_ = piece.kind == InkPiece::Kind::start;
    layerMayEnd_ = false;
    layerHasTraces_ = false;
  }

  void openLayer() {
    std::string id;
    do {
      id = "layer" + std::to_string(nextLayer_++);
    } while (!layerIds_.insert(id).second);
    body_ += "    <tracegroup id=\"" + id + "\">\n";
    layerIsOpen_ = true;
    layerMayEnd_ = false;
    layerHasTraces_ = false;
  }

  void closeLayer() {
    if (layerIsOpen_) body_ += "    </tracegroup>\n";
    layerIsOpen_ = false;
  }

  void readyLayer() {
    if (layerIsOpen_ && layerMayEnd_ && layerHasTraces_) closeLayer();
    if (!layerIsOpen_) openLayer();
    layerMayEnd_ = false;
    layerHasTraces_ = true;
    hasContent_ = true;
  }

  void indent() { body_ += layerIsOpen_ ? "        " : "    "; }

  void writeAnnotation(const InkPart& part) {
    const bool isOfFurtherDocument = !layerIsOpen_ && result_.furtherDocuments > 0;
    if (isOfFurtherDocument) return headers_.push_back({part.begin, part.end});
    const InkPiece& start = in_.pieces[part.piece];
    const InkPiece& text = in_.pieces[part.piece + 1];
    const std::string type = cleanText(attributeOf(textOf(start), "type").value_or(""));
    const std::string value = cleanText(textOf(text));
    if (type.empty() || value.find_first_not_of(Orvo::kBlanks) == value.npos) return;
    hasContent_ = true;
    indent();
    const bool isWhole = start.isClean && value == textOf(text) && part.end > text.end;
    if (isWhole) {
      body_.append(textOf(part.begin, part.end));
    } else {
      std::string quoted = type;
      for (size_t i = quoted.find('"'); i != quoted.npos; i = quoted.find('"', i))
        quoted.replace(i, 1, "&quot;");
      body_ += "<annotation type=\"" + quoted + "\">" + value + "</annotation>";
    }
    body_ += '\n';
    keep(part.begin, part.end);
  }

  void writeComment(const InkPart& part) {
    if (!in_.pieces[part.piece].isClean) return;
    // The reader takes a comment for the element whose name it consists of.
    const string_view inside = textOf(part.begin + 4, part.end - 3);
    if (inside == "definitions" || inside == "ink") return;
    indent();
    body_.append(textOf(part.begin, part.end)).append("\n");
    keep(part.begin, part.end);
  }

  void writeRegion(size_t index) {
    const InkRegion& region = in_.layout.regions[index];
    const InkLayout::Tags& tags = in_.layout.tags[index];
    if (tags.start != InkLayout::kNone) keep(in_.pieces[tags.start]);
    if (tags.end != InkLayout::kNone) keep(in_.pieces[tags.end]);
    size_t kept = 0;
    size_t starts = 0;
    for (size_t i = region.firstPoint; i < region.lastPoint; ++i) {
      if (!in_.fates[i].isKept) {
        ++result_.pointsDropped;
        continue;
      }
      ++kept;
      if (in_.fates[i].startsStroke) ++starts;
    }
    if (kept == 0) return;
    readyLayer();
    result_.pointsKept += kept;
    result_.strokesBroken += starts - 1;
    if (canStay(index, kept, starts)) return writeAsItStands(tags);
    for (size_t i = region.firstPoint; i < region.lastPoint;)
      i = writeTrace(i, region.lastPoint, references_.of(tags.start));
  }

  void keep(const InkPiece& piece) { keep(piece.begin, piece.end); }

  bool canStay(size_t index, size_t kept, size_t starts) const {
    const InkRegion& region = in_.layout.regions[index];
    const InkLayout::Tags& tags = in_.layout.tags[index];
    if (!region.isWhole || kept < region.lastPoint - region.firstPoint || starts > 1) return false;
    if (tags.start == InkLayout::kNone || tags.end == InkLayout::kNone) return false;
    const InkPiece& start = in_.pieces[tags.start];
    if (!start.isClean || start.name != "trace" || in_.form.hasFractions) return false;
    const string_view tag = textOf(start);
    return !attributeOf(tag, "type") &&
           attributeOf(tag, "contextRef").value_or("") == references_.of(tags.start);
  }

  void writeAsItStands(const InkLayout::Tags& tags) {
    const size_t begin = in_.pieces[tags.start].begin;
    const size_t end = in_.pieces[tags.end].end;
    body_.append("        ").append(textOf(begin, end)).append("\n");
    keep(begin, end);
  }

  // Writes the stroke that the point begins; the result is the first point of the next.
  size_t writeTrace(size_t first, size_t last, const std::string& reference) {
    while (first < last && !in_.fates[first].isKept)
      ++first;
    if (first == last) return last;
    body_ += "        <trace contextRef=\"" + reference + "\">";
    size_t i = first;
    do {
      if (in_.fates[i].isKept) writePoint(i);
      ++i;
    } while (i < last && !(in_.fates[i].isKept && in_.fates[i].startsStroke));
    body_.back() = '<';
    body_ += "/trace>\n";
    return i;
  }

  void writePoint(size_t i) {
    const InkPoint& point = in_.points[i];
    if (point.isExact) {
      body_.append(textOf(point.begin, point.end));
    } else {
      body_ += rescue::textOf(point, in_.form);
      ++result_.pointsRounded;
    }
    body_ += ',';
    // The comma behind it is as good as kept.
    const bool hasComma = point.end < in_.bytes.size() && in_.bytes[point.end] == ',';
    keep(point.begin, point.end + (hasComma ? 1 : 0));
  }

  void leaveOutTheRest() {
    std::sort(kept_.begin(), kept_.end());
    const size_t first = kept_.empty() ? in_.bytes.size() : kept_.front().first;
    size_t last = 0;
    for (const auto& [begin, end] : kept_)
      last = std::max(last, end);
    size_t done = 0;
    size_t lost = 0;
    auto header = headers_.begin();
    const auto leaveOut = [&](size_t begin, size_t end, LeftOut reason) {
      const string_view text = textOf(begin, end);
      const size_t from = text.find_first_not_of(Orvo::kBlanks);
      if (from == string_view::npos) return;
      const size_t to = begin + text.find_last_not_of(Orvo::kBlanks) + 1;
      result_.leftOut.push_back({begin + from, to, reason});
      if (reason == LeftOut::unreadable || reason == LeftOut::junkBehind) lost += to - begin - from;
    };
    const auto leaveOutUpTo = [&](size_t end) {
      const LeftOut reason = done < first   ? LeftOut::junkInFront
                             : done >= last ? LeftOut::junkBehind
                                            : LeftOut::unreadable;
      for (; header != headers_.end() && header->first < end; ++header) {
        if (header->first < done) continue;
        leaveOut(done, header->first, reason);
        leaveOut(header->first, header->second, LeftOut::headerPacket);
        done = header->second;
      }
      if (done < end) leaveOut(done, end, reason);
    };
    for (const auto& [begin, end] : kept_) {
      if (begin > done) leaveOutUpTo(begin);
      done = std::max(done, end);
    }
    if (done < in_.bytes.size()) leaveOutUpTo(in_.bytes.size());
    estimate(lost);
  }

  void estimate(size_t lost) {
    size_t length = 0;
    for (const InkPoint& point : in_.points)
      length += point.end - point.begin + 1;
    const size_t each = in_.points.empty() ? 1 : std::max<size_t>(1, length / in_.points.size());
    result_.pointsAbout = result_.pointsKept + lost / each;
  }

  const InkFindings& in_;
  InkRescue& result_;
  References references_;
  std::string declaration_{"<?xml version=\"1.0\" ?>"};
  std::string ink_{"<ink>"};
  std::string body_;
  std::vector<std::pair<size_t, size_t>> kept_;
  std::vector<std::pair<size_t, size_t>> headers_;
  std::set<std::string> layerIds_;
  size_t nextLayer_ = 0;
  bool layerIsOpen_ = false;
  bool layerMayEnd_ = false;
  bool layerHasTraces_ = false;
  bool hasContent_ = false;
};

}  // namespace

void writeInk(const InkFindings& findings, InkRescue& result) {
  Writer(findings, result).write();
}

}  // namespace rescue
