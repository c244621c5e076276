// How ink documents of other programs are taken.
#pragma once

#include <cstdint>
#include <optional>

namespace cli {

enum class InkView : std::uint8_t {
  byContent,   ///< Translated where the plug-in would read them wrongly or not at all.
  asSubset,    ///< Never translated: as the plug-in reads them.
  translated,  ///< Always translated.
};

struct InkTreatment {
  InkView view = InkView::byContent;
  /// How long a unit is where the document does not say it. Without it, such a drawing becomes
  /// 150 mm long.
  std::optional<double> millimetresPerUnit;
};

}  // namespace cli
