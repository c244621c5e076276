#include "translate/ink_tree.h"

#include <algorithm>
#include <array>
#include <limits>

#include "translate/ink_names.h"
#include "translate/xml_source.h"

namespace translate {
namespace {

constexpr std::array<std::pair<std::string_view, Tag>, 22> kTags = {{
    {"activearea", Tag::activeArea},
    {"affine", Tag::affine},
    {"annotation", Tag::annotation},
    {"bind", Tag::bind},
    {"brush", Tag::brush},
    {"brushproperty", Tag::brushProperty},
    {"canvas", Tag::canvas},
    {"canvastransform", Tag::canvasTransform},
    {"channel", Tag::channel},
    {"channelproperty", Tag::channelProperty},
    {"context", Tag::context},
    {"definitions", Tag::definitions},
    {"ink", Tag::ink},
    {"inksource", Tag::inkSource},
    {"intermittentchannels", Tag::intermittentChannels},
    {"mapping", Tag::mapping},
    {"samplerate", Tag::sampleRate},
    {"timestamp", Tag::timestamp},
    {"trace", Tag::trace},
    {"traceformat", Tag::traceFormat},
    {"tracegroup", Tag::traceGroup},
    {"traceview", Tag::traceView},
}};

// Elements of InkML from which nothing is needed but, in some, what they surround.
constexpr std::array<std::string_view, 6> kSilent = {"channelproperties", "ink",         "latency",
                                                     "regularchannels",   "srcproperty", "table"};

// In the order of `Attribute`.
constexpr std::array<std::string_view, 35> kAttributes = {
    "brushref",     "canvasref",    "canvastransformref",
    "channel",      "column",       "contextref",
    "continuation", "default",      "duration",
    "from",         "height",       "id",
    "inksourceref", "mappingref",   "max",
    "min",          "name",         "orientation",
    "priorref",     "respectto",    "row",
    "source",       "target",       "time",
    "timeoffset",   "timestampref", "timestring",
    "to",           "tracedataref", "traceformatref",
    "type",         "uniform",      "units",
    "value",        "width"};
static_assert(std::ranges::is_sorted(kAttributes));

std::optional<Tag> tagOf(std::string_view name) {
  const auto found =
      std::ranges::lower_bound(kTags, name, {}, &std::pair<std::string_view, Tag>::first);
  if (found == kTags.end() || found->first != name) return std::nullopt;
  return found->second;
}

bool holdsText(Tag tag) {
  return tag == Tag::trace || tag == Tag::annotation || tag == Tag::affine;
}

}  // namespace

std::string_view nameOf(Attribute attribute) {
  return kAttributes[static_cast<std::size_t>(attribute)];
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kWhite = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kWhite);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

InkTree::Index InkTree::child(Index node, Tag tag) const {
  Index child = firstChild(node);
  while (child != kNone && nodes_[child].tag != tag)
    child = next(child);
  return child;
}

std::string_view InkTree::text(Index node) const {
  return at(nodes_[node].textBegin, nodes_[node].textSize);
}

std::optional<std::string_view> InkTree::attribute(Index node, Attribute attribute) const {
  const Node& element = nodes_[node];
  for (std::uint32_t i = 0; i < element.attributeCount; ++i) {
    const Value& value = values_[element.firstAttribute + i];
    if (value.attribute == attribute) return trimmed(at(value.begin, value.size));
  }
  return std::nullopt;
}

InkTree::Index InkTree::find(std::string_view reference) const {
  const std::string_view id = trimmed(reference.starts_with('#') ? reference.substr(1) : reference);
  const auto idOf = [this](const auto& entry) {
    const Value& value = values_[entry.second];
    return trimmed(at(value.begin, value.size));
  };
  const auto found = std::ranges::lower_bound(ids_, id, {}, idOf);
  return found == ids_.end() || idOf(*found) != id ? kNone : found->first;
}

// Builds the tree from what the XML library reports.
class TreeBuilder final : public XmlSink {
 public:
  explicit TreeBuilder(Remarks& remarks) : remarks_(remarks) {}

  bool start(std::string_view name, const char* const* attributes, int line) override {
    if (skipped_ > 0) {
      ++skipped_;
      return true;
    }
    const std::string_view meaning = names_.enter(name, attributes);
    if (isFirst_) return startRoot(name, meaning, attributes, line);
    const std::optional<Tag> tag = meaning == "ink" ? std::nullopt : tagOf(meaning);
    if (meaning == "annotationxml" || holdsText(tree_.tag(open_.back().node))) {
      skip(name, meaning);
    } else if (tag) {
      add(*tag, attributes);
    } else {
      const bool isSilent = std::ranges::find(kSilent, meaning) != kSilent.end() ||
                            tree_.tag(open_.back().node) == Tag::mapping;
      if (!isSilent) remarks_.add(RemarkKind::unknownElements, 1, name);
      open_.push_back({open_.back().node, open_.back().lastChild, false});
    }
    return true;
  }

  void end() override {
    if (skipped_ > 0) {
      --skipped_;
      if (skipped_ == 0) names_.leave();
      return;
    }
    const Open closed = open_.back();
    open_.pop_back();
    if (!open_.empty()) open_.back().lastChild = closed.isNode ? closed.node : closed.lastChild;
    names_.leave();
  }

  void text(std::string_view part) override {
    if (skipped_ > 0 || open_.empty()) return;
    InkTree::Node& node = tree_.nodes_[open_.back().node];
    if (!open_.back().isNode || !holdsText(node.tag)) return;
    if (tree_.texts_.size() + part.size() > kMostText) {
      isTooLarge_ = true;
      return;
    }
    if (node.textSize == 0) node.textBegin = tree_.texts_.size();
    tree_.texts_ += part;
    node.textSize += static_cast<std::uint32_t>(part.size());
  }

  InkTree finish() {
    // Stable: of several elements with one id the first is found.
    const auto idOf = [this](const auto& entry) {
      const InkTree::Value& value = tree_.values_[entry.second];
      return trimmed(tree_.at(value.begin, value.size));
    };
    std::ranges::stable_sort(tree_.ids_, {}, idOf);
    return std::move(tree_);
  }

  bool isTooLarge() const { return isTooLarge_; }
  const std::string& otherRoot() const { return otherRoot_; }
  int otherRootLine() const { return otherRootLine_; }

 private:
  struct Open {
    InkTree::Index node;
    InkTree::Index lastChild;
    bool isNode;
  };
  static constexpr std::uint64_t kMostText = std::numeric_limits<std::int32_t>::max();

  bool startRoot(std::string_view name, std::string_view meaning, const char* const* attributes,
                 int line) {
    isFirst_ = false;
    if (meaning != "ink") {
      otherRoot_ = name;
      otherRootLine_ = line;
      return false;
    }
    add(Tag::ink, attributes);
    return true;
  }

  void skip(std::string_view name, std::string_view meaning) {
    const bool isAnnotation = meaning == "annotationxml" || meaning == "annotation";
    remarks_.add(isAnnotation ? RemarkKind::annotationsLeftOut : RemarkKind::unknownElements, 1,
                 isAnnotation ? std::string_view() : name);
    skipped_ = 1;
  }

  void add(Tag tag, const char* const* attributes) {
    const auto index = static_cast<InkTree::Index>(tree_.nodes_.size());
    InkTree::Node node{.tag = tag};
    node.firstAttribute = static_cast<std::uint32_t>(tree_.values_.size());
    if (!open_.empty()) {
      node.parent = open_.back().node;
      const InkTree::Index before = open_.back().lastChild;
      (before == InkTree::kNone ? tree_.nodes_[node.parent].firstChild
                                : tree_.nodes_[before].next) = index;
    }
    for (; *attributes != nullptr; attributes += 2)
      addAttribute(index, attributes[0], attributes[1]);
    node.attributeCount = static_cast<std::uint16_t>(tree_.values_.size() - node.firstAttribute);
    tree_.nodes_.push_back(node);
    open_.push_back({index, InkTree::kNone, true});
  }

  void addAttribute(InkTree::Index node, std::string_view name, std::string_view value) {
    const std::string_view meaning = names_.attribute(name);
    const auto found = std::ranges::lower_bound(kAttributes, meaning);
    if (found == kAttributes.end() || *found != meaning) return;
    const auto attribute = static_cast<Attribute>(found - kAttributes.begin());
    const auto number = static_cast<std::uint32_t>(tree_.values_.size());
    if (attribute == Attribute::id) tree_.ids_.emplace_back(node, number);
    tree_.values_.push_back(
        {attribute, static_cast<std::uint32_t>(value.size()), tree_.texts_.size()});
    tree_.texts_ += value;
    if (tree_.texts_.size() > kMostText) isTooLarge_ = true;
  }

  Remarks& remarks_;
  InkTree tree_;
  InkNames names_;
  std::vector<Open> open_;
  std::string otherRoot_;
  int otherRootLine_ = 0;
  int skipped_ = 0;  // How many elements are open from the one whose content is left out.
  bool isFirst_ = true;
  bool isTooLarge_ = false;
};

TreeReading readInkTree(std::string_view bytes, Remarks& remarks) {
  TreeBuilder builder(remarks);
  const XmlOutcome outcome = readXml(bytes, builder);
  remarks.add(RemarkKind::outsideText, outcome.outsideTexts);
  TreeReading reading{{}, outcome.problem, outcome.line};
  if (!builder.otherRoot().empty()) {
    const std::string root = "its root is \"" + builder.otherRoot() + "\"";
    const bool isNamedInk = lowerCase(localName(builder.otherRoot())) == "ink";
    reading.problem = root + (isNamedInk ? " of another namespace, not InkML's" : ", not \"ink\"");
    reading.line = builder.otherRootLine();
  } else if (builder.isTooLarge()) {
    reading.problem = "its entities grow to more than 2 GiB of text";
  }
  if (reading.problem.empty()) reading.tree = builder.finish();
  return reading;
}

}  // namespace translate
