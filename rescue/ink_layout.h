// What stands in a damaged ink document besides its definitions, in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "rescue/ink_definitions.h"
#include "rescue/ink_points.h"
#include "rescue/ink_scan.h"

namespace rescue {

/// A part of the document, in the order in which the parts stand there.
struct InkPart {
  enum class Kind : std::uint8_t {
    document,  ///< The start tag of a document, or its declaration: what follows is a further one.
    documentEnd,
    layer,  ///< The start tag of a layer.
    layerEnd,
    layerMark,   ///< What is left of such a tag.
    annotation,  ///< From its start tag to its end tag, if it is there.
    comment,
    region,  ///< A stretch that points may stand in.
  };

  Kind kind;
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t piece = 0;  ///< That it begins with; not of a region or a mark.
  std::size_t region = 0;
};

struct InkLayout {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::vector<InkPart> parts;
  std::vector<InkRegion> regions;
  /// For each region the pieces that are the trace's tags, or `kNone`.
  struct Tags {
    std::size_t start = kNone;
    std::size_t end = kNone;
  };
  std::vector<Tags> tags;
  std::size_t brokenPieces = 0;
  bool hasOwnTags = false;      ///< Tags that only ink documents have.
  bool hasOtherGroups = false;  ///< All groups are spelled otherwise than the plug-in reads them.
};

/// Goes through the pieces that the definitions did not take.
InkLayout layOut(std::string_view bytes, std::span<const InkPiece> pieces,
                 const InkDefinitions& definitions);

}  // namespace rescue
