// The brushes of a document as the subset has them.
#pragma once

#include <list>
#include <map>
#include <set>
#include <string>

#include "inkml/definitions.h"
#include "translate/contexts.h"

namespace translate {

/// Puts the brushes of a document into the definitions of the subset. What it is given must outlive
/// it.
class Brushes {
 public:
  Brushes(const InkTree& tree, Contexts& contexts, Remarks& remarks,
          Orvo::InkMLDefinitions& definitions)
      : tree_(tree), contexts_(contexts), remarks_(remarks), definitions_(definitions) {}

  /// Adds every brush, then every context with an id, and "default-context" as the first.
  void declare();

  /// The brush that an element became; null for kNone.
  const Orvo::Brush* of(InkTree::Index brush) const;

 private:
  void declareDefault();
  void declareContext(InkTree::Index context);
  void resolve(InkTree::Index node);
  void read(InkTree::Index node, Orvo::Brush& brush);
  void readProperty(InkTree::Index property, Orvo::Brush& brush);
  void readLength(InkTree::Index property, Orvo::Property<std::uint32_t>& length);
  std::string freeId(std::string_view wanted, const char* otherwise);

  const InkTree& tree_;
  Contexts& contexts_;
  Remarks& remarks_;
  Orvo::InkMLDefinitions& definitions_;
  std::map<InkTree::Index, Orvo::Brush*> made_;
  std::set<InkTree::Index> resolved_;
  std::set<std::string> ids_;
};

}  // namespace translate
