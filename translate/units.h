// Units of length, angle and time as documents name them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace translate {

enum class Quantity : std::uint8_t { length, angle, time };

struct Unit {
  double size = 1;  ///< In mm, degrees or ms.
  Quantity quantity = Quantity::length;
  bool isInverse = false;  ///< "1/cm".
};

/// The unit with this name, in any case, perhaps with a number in front ("0.01mm") or as "1/cm";
/// nothing for a name that is not known, and for units of other quantities.
std::optional<Unit> unitOf(std::string_view name);

/// Whether the name says that there is no unit, such as "dev".
bool namesNoUnit(std::string_view name);

/// All of `text` as a finite decimal number, blanks at the ends aside.
std::optional<double> numberOf(std::string_view text);

}  // namespace translate
