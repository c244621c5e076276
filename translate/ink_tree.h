// An InkML document as a tree of the elements that ink is made of, in little memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "translate/remarks.h"

namespace translate {

enum class Tag : std::uint8_t {
  ink,
  definitions,
  context,
  inkSource,
  traceFormat,
  intermittentChannels,
  channel,
  channelProperty,
  sampleRate,
  activeArea,
  timestamp,
  canvas,
  canvasTransform,
  mapping,
  affine,
  bind,
  brush,
  brushProperty,
  trace,
  traceGroup,
  traceView,
  annotation,
};

// In the order of their names in lower case.
enum class Attribute : std::uint8_t {
  brushRef,
  canvasRef,
  canvasTransformRef,
  channel,
  column,
  contextRef,
  continuation,
  defaultValue,
  duration,
  from,
  height,
  id,
  inkSourceRef,
  mappingRef,
  max,
  min,
  name,
  orientation,
  priorRef,
  respectTo,
  row,
  source,
  target,
  time,
  timeOffset,
  timestampRef,
  timeString,
  to,
  traceDataRef,
  traceFormatRef,
  type,
  uniform,
  units,
  value,
  width,
};

/// The name of an attribute as a document has it, in lower case.
std::string_view nameOf(Attribute attribute);

/// The elements by number, the root first. Elements that are not InkML's, and those that only
/// wrap others, are not there: what is in them belongs to what surrounds them.
class InkTree {
 public:
  using Index = std::uint32_t;
  static constexpr Index kNone = 0xFFFFFFFF;

  Index size() const { return static_cast<Index>(nodes_.size()); }
  Tag tag(Index node) const { return nodes_[node].tag; }
  Index parent(Index node) const { return nodes_[node].parent; }
  Index firstChild(Index node) const { return nodes_[node].firstChild; }
  Index next(Index node) const { return nodes_[node].next; }

  /// The first child of a kind; kNone if there is none.
  Index child(Index node, Tag tag) const;

  /// Of traces, annotations and affine maps; empty for others.
  std::string_view text(Index node) const;

  /// Without the white space around it; nothing where the element has no such attribute.
  std::optional<std::string_view> attribute(Index node, Attribute attribute) const;

  /// The first element with an id, given as "#id" or "id"; kNone if there is none.
  Index find(std::string_view reference) const;

  /// Calls `visit` with each child, in order.
  template <class Visit>
  void eachChild(Index node, Visit visit) const {
    for (Index child = firstChild(node); child != kNone; child = next(child))
      visit(child);
  }

 private:
  friend class TreeBuilder;

  struct Node {
    Tag tag;
    std::uint16_t attributeCount = 0;
    std::uint32_t firstAttribute = 0;
    Index parent = kNone;
    Index firstChild = kNone;
    Index next = kNone;
    std::uint32_t textSize = 0;
    std::size_t textBegin = 0;
  };
  struct Value {
    Attribute attribute;
    std::uint32_t size;
    std::size_t begin;
  };

  std::string_view at(std::size_t begin, std::uint32_t size) const {
    return std::string_view(texts_).substr(begin, size);
  }

  std::vector<Node> nodes_;
  std::vector<Value> values_;
  std::string texts_;
  std::vector<std::pair<Index, std::uint32_t>> ids_;  // Node and value, sorted by the id.
};

struct TreeReading {
  InkTree tree;
  std::string problem;  ///< Why there is no tree; empty if there is one.
  int line = 0;
};

/// Reads a document; adds what it leaves out.
TreeReading readInkTree(std::string_view bytes, Remarks& remarks);

/// `text` without the white space at both ends.
std::string_view trimmed(std::string_view text);

}  // namespace translate
