// What surrounds a trace: source, format, brush, clock and canvas, with what is handed down.
#pragma once

#include <map>

#include "translate/ink_tree.h"
#include "translate/remarks.h"

namespace translate {

/// The elements that are in effect; kNone where none is.
struct Surroundings {
  using Index = InkTree::Index;
  Index source = InkTree::kNone;
  Index format = InkTree::kNone;
  Index brush = InkTree::kNone;
  Index timestamp = InkTree::kNone;
  Index canvas = InkTree::kNone;
  Index transform = InkTree::kNone;
};

/// Finds out what is in effect. `tree` and `remarks` must outlive it.
class Contexts {
 public:
  using Index = InkTree::Index;

  Contexts(const InkTree& tree, Remarks& remarks) : tree_(tree), remarks_(remarks) {}

  /// The element that a reference in an attribute names, if it is of the kind; kNone, and a remark,
  /// if there is no such element; kNone without the attribute.
  Index referred(Index node, Attribute attribute, Tag tag);

  /// What a context names, with what the contexts that it refers to name.
  const Surroundings& of(Index context);

  /// What is in effect behind an element that stands among traces: a context or a part of one.
  /// Others change nothing.
  Surroundings after(Index element, const Surroundings& before);

  /// What is in effect for an element with `contextRef` and `brushRef`: its own brush, then what
  /// its context names, then what surrounds it.
  Surroundings within(Index element, const Surroundings& around);

 private:
  void takeOwn(Index context, Surroundings& result);
  void take(Index part, Surroundings& result);
  void takeSource(Index source, Surroundings& result);
  void takeReferences(Index context, Surroundings& result);

  const InkTree& tree_;
  Remarks& remarks_;
  std::map<Index, Surroundings> known_;
};

}  // namespace translate
