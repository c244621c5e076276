#include "rescue/ink_definitions.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>

#include "inkml/characters.h"

namespace rescue {
namespace {

using std::size_t;
using std::string_view;

struct ChannelForm {
  string_view name;
  string_view otherName;  // The tilt has two names in use.
  string_view units;
  string_view text;
};

constexpr std::array<ChannelForm, 7> kChannels{{
    {"X", "X", "0.1mm",
     R"(<channel name="X" type="INTEGER" min="-32767" max="32767" units="0.1mm" />)"},
    {"Y", "Y", "0.1mm",
     R"(<channel name="Y" type="INTEGER" min="-32767" max="32767" units="0.1mm" />)"},
    {"Z", "Z", "0.1mm",
     R"(<channel name="Z" type="INTEGER" min="-32767" max="32767" units="0.1mm" />)"},
    {"F", "F", "", R"(<channel name="F" type="INTEGER" min="0" max="32767" units="dev" />)"},
    {"OTx", "Tx", "", R"(<channel name="OTx" type="INTEGER" min="-128" max="127" units="dev" />)"},
    {"OTy", "Ty", "", R"(<channel name="OTy" type="INTEGER" min="-128" max="127" units="dev" />)"},
    {"T", "T", "", R"(<channel name="T" type="INTEGER" min="0" max="2147483647" units="dev" />)"},
}};

constexpr std::array<std::pair<string_view, string_view>, 8> kProperties{{
    {"color", "Black"},
    {"width", "1"},
    {"height", "10"},
    {"transparency", "100"},
    {"antialiased", "False"},
    {"fittocurve", "True"},
    {"ignorePressure", "False"},
    {"pentip", "Ball"},
}};

constexpr string_view kIndent = "        ";

bool isProperty(string_view name) {
  return std::any_of(kProperties.begin(), kProperties.end(),
                     [&](const auto& property) { return property.first == name; });
}

bool isBlankText(string_view text) {
  return text.find_first_not_of(Orvo::kBlanks) == string_view::npos;
}

string_view trimmed(string_view text) {
  const size_t begin = text.find_first_not_of(Orvo::kBlanks);
  if (begin == string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(Orvo::kBlanks) + 1 - begin);
}

// A value between double quotes.
std::string asValue(string_view text) {
  std::string clean = cleanText(text);
  for (size_t i = clean.find('"'); i != clean.npos; i = clean.find('"', i))
    clean.replace(i, 1, "&quot;");
  return clean;
}

bool isChannelOf(const ChannelForm& form, string_view tag) {
  const auto name = attributeOf(tag, "name");
  if (!name || (*name != form.name && *name != form.otherName)) return false;
  const auto units = attributeOf(tag, "units");
  return form.units.empty() || !units || *units == form.units;
}

std::string referredId(string_view tag, string_view attribute) {
  const auto value = attributeOf(tag, attribute);
  return value && value->starts_with('#') ? cleanText(value->substr(1)) : "";
}

std::string contextText(const InkDefinition& context) {
  return "<context id=\"" + asValue(context.id) + "\" brushRef=\"#" + asValue(context.brush) +
         "\" traceFormatRef=\"#" + asValue(context.format) + "\" />";
}

std::string brushText(const InkDefinition& brush, const std::string& properties) {
  std::string text = "<brush id=\"" + asValue(brush.id) + "\">\n            <annotationXML>\n";
  text += properties;
  return text + "            </annotationXML>\n        </brush>";
}

std::string formatText(const InkDefinition& format, const std::string& channels) {
  return "<traceFormat id=\"" + asValue(format.id) + "\">\n" + channels + "        </traceFormat>";
}

// New ids by the number of a document and the old id.
using NewIds = std::map<std::pair<size_t, std::string>, std::string>;

void setId(InkDefinition& definition, const std::string& id) {
  definition.id = id;
  if (!definition.isWhole) return;
  const string_view text = definition.text;
  const string_view tag = text.substr(0, text.find('>') + 1);
  if (const auto value = attributeOf(tag, "id")) {
    definition.text.replace(static_cast<size_t>(value->data() - text.data()), value->size(),
                            asValue(id));
  }
}

bool isAlike(const InkDefinition& a, const InkDefinition& b) {
  return a.text == b.text && a.brush == b.brush && a.format == b.format;
}

// Definitions of one sort from several documents: of those with one id, the first keeps it. One of
// another document that is not the same gets a new one.
class Renaming {
 public:
  explicit Renaming(std::vector<InkDefinition>& list) : list_(list) {
    for (const InkDefinition& item : list)
      if (!item.id.empty()) first_.try_emplace(item.id, &item);
  }

  NewIds run() {
    for (InkDefinition& item : list_) {
      const auto first = first_.find(item.id);
      if (first == first_.end() || first->second->document == item.document) continue;
      if (isAlike(*first->second, item)) continue;
      const auto [newId, isFirstOfDocument] =
          newIds_.try_emplace({item.document, item.id}, freeId(item));
      // Of several in one document the first counts.
      if (isFirstOfDocument) setId(item, newId->second);
    }
    return std::move(newIds_);
  }

 private:
  std::string freeId(const InkDefinition& item) {
    std::string id;
    size_t number = item.document;
    do {
      id = item.id + "-" + std::to_string(++number);
    } while (first_.count(id) > 0 || !used_.insert(id).second);
    return id;
  }

  std::vector<InkDefinition>& list_;
  std::map<std::string, const InkDefinition*> first_;
  std::set<std::string> used_;
  NewIds newIds_;
};

void follow(const NewIds& newIds, size_t document, std::string& reference) {
  const auto found = newIds.find({document, reference});
  if (found != newIds.end()) reference = found->second;
}

void giveNewIds(InkDefinitions& definitions) {
  if (definitions.furtherDocuments.empty()) return;
  const NewIds brushes = Renaming(definitions.brushes).run();
  const NewIds formats = Renaming(definitions.formats).run();
  for (InkDefinition& context : definitions.contexts) {
    follow(brushes, context.document, context.brush);
    follow(formats, context.document, context.format);
  }
  definitions.newContexts = Renaming(definitions.contexts).run();
  definitions.renamed = brushes.size() + formats.size() + definitions.newContexts.size();
}

class Reader {
 public:
  Reader(string_view bytes, std::span<const InkPiece> pieces) : bytes_(bytes), pieces_(pieces) {
    result_.isTaken.resize(pieces.size());
    result_.isKept.resize(pieces.size());
  }

  InkDefinitions run() {
    for (size_t i = 0; i < pieces_.size();)
      i = std::max(i + 1, readAt(i));
    giveNewIds(result_);
    return std::move(result_);
  }

 private:
  string_view textOf(size_t i) const {
    return bytes_.substr(pieces_[i].begin, pieces_[i].end - pieces_[i].begin);
  }

  // Takes what begins at the piece; the result is where to go on.
  size_t readAt(size_t i) {
    const InkPiece& piece = pieces_[i];
    if (!piece.isTag()) return i + 1;
    if (piece.opens("ink")) startDocument(piece.begin);
    if (piece.name == "definitions") take(i, i + 1, true);
    if (piece.name == "traceFormat" || piece.name == "channel") return readFormat(i);
    if (piece.name == "context") return readContext(i);
    const bool isPart = piece.name == "annotationXML" || isProperty(piece.name);
    return piece.name == "brush" || isPart ? readBrush(i) : i + 1;
  }

  void startDocument(size_t place) {
    if (hasDocument_) result_.furtherDocuments.push_back(place);
    hasDocument_ = true;
  }

  void take(size_t begin, size_t end, bool isKept) {
    for (size_t i = begin; i < end; ++i) {
      result_.isTaken[i] = true;
      result_.isKept[i] = isKept;
    }
  }

  // The pieces from `begin` on that belong to an element of this name, which may have lost its
  // tags.
  struct Block {
    size_t end;
    bool isWhole;
  };

  template <class IsInside>
  Block blockAt(size_t begin, string_view name, IsInside isInside) const {
    const InkPiece& first = pieces_[begin];
    const bool hasStart = first.name == name && first.kind != InkPiece::Kind::end;
    bool isWhole = hasStart && first.isClean;
    if (hasStart && first.kind == InkPiece::Kind::empty) return {begin + 1, isWhole};
    std::vector<string_view> open;
    for (size_t i = hasStart ? begin + 1 : begin; i < pieces_.size(); ++i) {
      const InkPiece& piece = pieces_[i];
      if (piece.closes(name)) return {i + 1, isWhole && open.empty()};
      if (piece.kind == InkPiece::Kind::text && textOf(i).find(',') != string_view::npos) {
        return {i, false};
      }
      if (piece.isTag() && !isInside(piece.name)) return {i, false};
      isWhole = isWhole && piece.isClean && piece.kind != InkPiece::Kind::broken &&
                (piece.kind != InkPiece::Kind::text || isCleanText(textOf(i)));
      if (piece.kind == InkPiece::Kind::start) open.push_back(piece.name);
      if (piece.kind != InkPiece::Kind::end) continue;
      isWhole = isWhole && !open.empty() && open.back() == piece.name;
      if (!open.empty()) open.pop_back();
    }
    return {pieces_.size(), false};
  }

  // Adds an element that stands there from `begin` to `end`: as it stands if it is whole.
  void add(std::vector<InkDefinition>& list, InkDefinition definition, size_t begin, size_t end) {
    if (definition.isWhole) {
      const size_t from = pieces_[begin].begin;
      definition.text = bytes_.substr(from, pieces_[end - 1].end - from);
      take(begin, end, true);
    } else {
      ++result_.mended;
    }
    definition.document = result_.furtherDocuments.size();
    list.push_back(std::move(definition));
  }

  size_t readFormat(size_t begin) {
    const Block block =
        blockAt(begin, "traceFormat", [](string_view name) { return name == "channel"; });
    take(begin, block.end, false);
    InkDefinition format;
    format.id = idAt(begin, "traceFormat");
    std::array<size_t, 7> places{};
    size_t count = 0;
    bool areInOrder = true;
    for (size_t i = begin; i < block.end; ++i) {
      if (!pieces_[i].isTag() || pieces_[i].kind == InkPiece::Kind::end) continue;
      if (pieces_[i].name != "channel") continue;
      areInOrder = areInOrder && count < 7 && isChannelOf(kChannels[count], textOf(i));
      ++count;
      for (size_t k = 0; k < 7; ++k)
        if (pieces_[i].isClean && isChannelOf(kChannels[k], textOf(i))) places[k] = i;
    }
    format.isWhole =
        block.isWhole && !format.id.empty() && areInOrder && (count == 0 || count == 7);
    if (!format.isWhole) format.text = channelsOf(places);
    add(result_.formats, std::move(format), begin, block.end);
    return block.end;
  }

  // `places` are the pieces of those channels that are whole; 0 where there is none.
  std::string channelsOf(const std::array<size_t, 7>& places) {
    std::string channels;
    for (size_t k = 0; k < 7; ++k) {
      const bool isThere = places[k] != 0 && pieces_[places[k]].kind == InkPiece::Kind::empty;
      channels += "            ";
      channels += isThere ? textOf(places[k]) : kChannels[k].text;
      channels += '\n';
      if (isThere) result_.isKept[places[k]] = true;
    }
    return channels;
  }

  size_t readBrush(size_t begin) {
    const Block block = blockAt(begin, "brush", [](string_view name) {
      constexpr string_view kOthers[] = {"ink",     "definitions", "traceFormat", "brush",
                                         "context", "annotation",  "tracegroup",  "trace"};
      return std::find(std::begin(kOthers), std::end(kOthers), name) == std::end(kOthers);
    });
    take(begin, block.end, false);
    InkDefinition brush;
    brush.id = idAt(begin, "brush");
    std::map<string_view, string_view> values;
    bool hasProperties = false;
    for (size_t i = begin; i < block.end; ++i) {
      const InkPiece& piece = pieces_[i];
      hasProperties = hasProperties || (piece.name == "annotationXML" && piece.isTag());
      if (piece.kind != InkPiece::Kind::start || !isProperty(piece.name)) continue;
      if (i + 1 >= block.end || pieces_[i + 1].kind != InkPiece::Kind::text) continue;
      if (values.emplace(piece.name, trimmed(textOf(i + 1))).second) {
        take(i, std::min(i + 3, block.end), true);
      }
    }
    brush.isWhole = block.isWhole && !brush.id.empty() && hasProperties;
    if (!brush.isWhole) brush.text = propertiesOf(values);
    add(result_.brushes, std::move(brush), begin, block.end);
    return block.end;
  }

  static std::string propertiesOf(const std::map<string_view, string_view>& values) {
    std::string text;
    for (const auto& [name, usual] : kProperties) {
      const auto found = values.find(name);
      const std::string value = found == values.end() ? "" : cleanText(found->second);
      text += "                <" + std::string(name) + ">";
      text += (value.empty() ? std::string(usual) : value) + "</" + std::string(name) + ">\n";
    }
    return text;
  }

  size_t readContext(size_t begin) {
    size_t end = begin + 1;
    if (pieces_[begin].kind == InkPiece::Kind::end) return take(begin, end, false), end;
    if (pieces_[begin].kind == InkPiece::Kind::start) {
      while (end < pieces_.size() && pieces_[end].kind == InkPiece::Kind::text &&
             isBlankText(textOf(end)))
        ++end;
      if (end < pieces_.size() && pieces_[end].closes("context")) ++end;
    }
    InkDefinition context;
    context.id = idAt(begin, "context");
    context.brush = referredId(textOf(begin), "brushRef");
    context.format = referredId(textOf(begin), "traceFormatRef");
    context.document = result_.furtherDocuments.size();
    take(begin, end, true);
    result_.contexts.push_back(std::move(context));
    return end;
  }

  std::string idAt(size_t i, string_view name) const {
    if (pieces_[i].name != name || pieces_[i].kind == InkPiece::Kind::end) return {};
    return cleanText(attributeOf(textOf(i), "id").value_or(""));
  }

  string_view bytes_;
  std::span<const InkPiece> pieces_;
  InkDefinitions result_;
  bool hasDocument_ = false;
};

// The definitions of one sort by their ids, so that many of them do not take quadratic time.
class ById {
 public:
  explicit ById(const std::vector<InkDefinition>& list) {
    for (const InkDefinition& item : list)
      if (!item.id.empty()) add(item.id);
  }

  bool has(string_view id) const { return ids_.find(id) != ids_.end(); }
  void add(const std::string& id) { ids_.insert(id); }

  // The only id that may be this one, damaged; empty where there is none.
  std::string damagedFormOf(string_view id) const {
    constexpr size_t kMost = 64;
    std::string best;
    if (ids_.size() > kMost) return best;
    for (const std::string& other : ids_) {
      if (!isDamagedForm(other, id)) continue;
      if (!best.empty()) return {};
      best = other;
    }
    return best;
  }

 private:
  std::set<std::string, std::less<>> ids_;
};

// Of several with one id the first counts.
void dropDoubledIds(std::vector<InkDefinition>& list) {
  std::set<std::string> seen;
  std::erase_if(list, [&](const InkDefinition& item) {
    return !item.id.empty() && !seen.insert(item.id).second;
  });
}

// Finds the brush or the format that a context refers to. Where it is missing, one that lost its id
// gets the one that is wanted, or a new one is put in.
class Supply {
 public:
  Supply(std::vector<InkDefinition>& list, std::string usualId, std::string usualText)
      : list_(list), ids_(list), usualId_(std::move(usualId)), usualText_(std::move(usualText)) {
    for (InkDefinition& item : list)
      if (item.id.empty()) unnamed_.push_back(static_cast<size_t>(&item - list.data()));
  }

  // The id to refer to.
  std::string settle(const std::string& wanted) {
    if (!wanted.empty() && ids_.has(wanted)) return wanted;
    std::string damaged = wanted.empty() ? "" : ids_.damagedFormOf(wanted);
    if (!damaged.empty()) return damaged;
    const std::string& id = wanted.empty() ? usualId_ : wanted;
    if (!unnamed_.empty()) {
      list_[unnamed_.back()].id = id;
      unnamed_.pop_back();
      ids_.add(id);
      return id;
    }
    if (wanted.empty() && !list_.empty()) return list_.front().id;
    list_.push_back({id, usualText_, false, {}, {}});
    ids_.add(id);
    ++putIn;
    return id;
  }

  size_t putIn = 0;

 private:
  std::vector<InkDefinition>& list_;
  ById ids_;
  std::vector<size_t> unnamed_;
  std::string usualId_;
  std::string usualText_;
};

std::string allChannels() {
  std::string channels;
  for (const ChannelForm& form : kChannels)
    channels += "            " + std::string(form.text) + '\n';
  return channels;
}

std::string allProperties() {
  std::string text;
  for (const auto& [name, usual] : kProperties)
    text += "                <" + std::string(name) + ">" + std::string(usual) + "</" +
            std::string(name) + ">\n";
  return text;
}

}  // namespace

bool isDamagedForm(string_view id, string_view sound) {
  if (id.size() != sound.size() || id.size() < 4) return false;
  size_t differing = 0;
  for (size_t i = 0; i < id.size(); ++i)
    if (id[i] != sound[i]) ++differing;
  return differing > 0 && differing <= 2;
}

std::string InkDefinitions::contextAt(size_t place, string_view reference) const {
  const auto next = std::upper_bound(furtherDocuments.begin(), furtherDocuments.end(), place);
  std::string id(reference);
  follow(newContexts, static_cast<size_t>(next - furtherDocuments.begin()), id);
  return id;
}

std::string InkDefinitions::contextFor(string_view reference) const {
  const ById ids(contexts);
  const std::string meant = ids.has(reference) ? "" : ids.damagedFormOf(reference);
  return meant.empty() ? std::string(reference) : meant;
}

void InkDefinitions::complete(const std::map<std::string, size_t>& references) {
  for (auto* list : {&formats, &brushes, &contexts})
    dropDoubledIds(*list);
  Supply supplyOfContexts(contexts, "default-context", "");
  const size_t before = contexts.size();
  for (const auto& [reference, count] : references)
    supplyOfContexts.settle(reference);
  putIn += contexts.size() - before;
  std::erase_if(contexts, [](const InkDefinition& context) { return context.id.empty(); });
  Supply supplyOfBrushes(brushes, "default-brush", allProperties());
  Supply supplyOfFormats(formats, "default-format", allChannels());
  for (InkDefinition& context : contexts) {
    context.brush = supplyOfBrushes.settle(context.brush);
    context.format = supplyOfFormats.settle(context.format);
  }
  putIn += supplyOfBrushes.putIn + supplyOfFormats.putIn;
}

std::string InkDefinitions::text() const {
  std::string all = "    <definitions>\n";
  const auto add = [&](const std::string& element) {
    all.append(kIndent).append(element).append("\n");
  };
  for (const InkDefinition& format : formats) {
    if (!format.id.empty()) add(format.isWhole ? format.text : formatText(format, format.text));
  }
  for (const InkDefinition& brush : brushes) {
    if (!brush.id.empty()) add(brush.isWhole ? brush.text : brushText(brush, brush.text));
  }
  for (const InkDefinition& context : contexts)
    add(contextText(context));
  return all + "    </definitions>\n";
}

InkDefinitions readDefinitions(string_view bytes, std::span<const InkPiece> pieces) {
  return Reader(bytes, pieces).run();
}

bool declaresOtherPoints(string_view bytes, std::span<const InkPiece> pieces) {
  size_t channels = 0;
  size_t ofPoints = 0;
  size_t coordinatesElsewhere = 0;
  for (const InkPiece& piece : pieces) {
    if (piece.name != "channel" || piece.kind == InkPiece::Kind::end) continue;
    const string_view tag = bytes.substr(piece.begin, piece.end - piece.begin);
    ++channels;
    const auto name = attributeOf(tag, "name").value_or("");
    const auto units = attributeOf(tag, "units").value_or("");
    const bool isCoordinate = name == "X" || name == "Y" || name == "Z";
    if (isCoordinate && !units.empty() && units != "0.1mm") ++coordinatesElsewhere;
    for (const ChannelForm& form : kChannels)
      if (isChannelOf(form, tag)) ++ofPoints;
  }
  return coordinatesElsewhere >= 2 || (channels > 0 && ofPoints == 0);
}

}  // namespace rescue
