// The parts of a native text that define its styles.
#pragma once

#include <string_view>
#include <vector>

namespace stylelib {

constexpr std::string_view kBrushTool = "Adobe Calligraphic Brush Tool";

/// The parts of a native text that make up a style library. Everything else, such as swatches,
/// pattern tiles and the art itself, is skipped.
struct LibraryParts {
  std::string_view styles;                ///< the definitions of the art styles
  std::string_view list;                  ///< the names in the Graphic Styles panel
  std::vector<std::string_view> brushes;  ///< each calligraphic brush, starting at its name

  /// The size of all parts together, in bytes.
  std::size_t size() const;
};

/// Parts that are missing or have no end are empty. The text must outlive them.
LibraryParts findParts(std::string_view text);

}  // namespace stylelib
