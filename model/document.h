// A whole drawing.
#pragma once

#include "model/layer.h"

namespace Orvo {

/// A whole drawing: layers, bottom to top.
class Document : public AnnotatedRegion<Layer> {
 public:
  Document() = default;
  Document(const Document&) = default;
  Document(Document&&) noexcept = default;
  /// Deleted: a document may belong to a subclass, and assigning to one would slice it.
  Document& operator=(const Document&) = delete;

  void prepend(const Layer& layer) override { pushFront(layer); }
  void extendBounds(const Layer& layer) override { extendBox(bounds(), layer.bounds()); }

  /// True once a reader has read the whole file.
  Property<bool> complete;
};

/// Writes "there are N points in this stroke" and a newline to standard output for every stroke,
/// layer by layer; nothing for a document that is not complete.
void dumpPointCounts(const Document& document);

}  // namespace Orvo
