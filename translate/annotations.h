// Texts beside the ink: names of groups, and what else a document says about itself.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "translate/ink_tree.h"

namespace translate {

/// `text` with every run of white space as one blank, and none at the ends: as it reads back.
std::string condensed(std::string_view text);

/// The annotations that stand in an element itself, by type; "annotation" for those without. Of
/// several with one type the first counts, and empty ones do not.
std::map<std::string, std::string> annotationsIn(const InkTree& tree, InkTree::Index node);

/// What a group is called, given its annotations: the one of the type "name", else its title, its
/// label, its truth, what it is called without a type, or its id. Empty without any of them.
std::string nameOfGroup(const InkTree& tree, InkTree::Index group,
                        const std::map<std::string, std::string>& annotations);

/// How many annotations with a text the document has.
std::uint64_t countAnnotations(const InkTree& tree);

}  // namespace translate
