#include "translate/units.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>

#include "translate/ink_names.h"
#include "translate/ink_tree.h"

namespace translate {
namespace {

constexpr double kInch = 25.4;
constexpr double kRadian = 180.0 / std::numbers::pi;

struct NamedUnit {
  std::string_view name;
  double size;
  Quantity quantity;
};

// The first of each line are the recommendation's; the others are what programs write.
constexpr std::array kUnits = {
    NamedUnit{"m", 1000, Quantity::length},
    NamedUnit{"cm", 10, Quantity::length},
    NamedUnit{"mm", 1, Quantity::length},
    NamedUnit{"in", kInch, Quantity::length},
    NamedUnit{"inch", kInch, Quantity::length},
    NamedUnit{"pt", kInch / 72, Quantity::length},
    NamedUnit{"pc", kInch / 6, Quantity::length},
    NamedUnit{"px", kInch / 96, Quantity::length},
    NamedUnit{"pixel", kInch / 96, Quantity::length},
    NamedUnit{"himetric", 0.01, Quantity::length},
    NamedUnit{"ink", 0.01, Quantity::length},
    NamedUnit{"um", 0.001, Quantity::length},
    NamedUnit{"deg", 1, Quantity::angle},
    NamedUnit{"degree", 1, Quantity::angle},
    NamedUnit{"degrees", 1, Quantity::angle},
    NamedUnit{"rad", kRadian, Quantity::angle},
    NamedUnit{"s", 1000, Quantity::time},
    NamedUnit{"ms", 1, Quantity::time},
    NamedUnit{"us", 0.001, Quantity::time},
    NamedUnit{"ns", 0.000001, Quantity::time},
};

}  // namespace

std::optional<Unit> unitOf(std::string_view name) {
  std::string lowered = lowerCase(trimmed(name));
  std::string_view rest = lowered;
  Unit unit;
  if (rest.starts_with("1/")) {
    unit.isInverse = true;
    rest = trimmed(rest.substr(2));
  } else {
    const auto [behind, error] = std::from_chars(rest.data(), rest.data() + rest.size(), unit.size);
    if (error == std::errc()) {
      rest = trimmed(rest.substr(static_cast<std::size_t>(behind - rest.data())));
    }
  }
  const auto found = std::ranges::find(kUnits, rest, &NamedUnit::name);
  if (found == kUnits.end() || !std::isfinite(unit.size) || unit.size <= 0) return std::nullopt;
  unit.size *= found->size;
  unit.quantity = found->quantity;
  return unit;
}

bool namesNoUnit(std::string_view name) {
  const std::string lowered = lowerCase(trimmed(name));
  return lowered.empty() || lowered == "dev" || lowered == "1/dev" || lowered == "none" ||
         lowered == "%";
}

std::optional<double> numberOf(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || behind != end || !std::isfinite(number)) return std::nullopt;
  return number;
}

}  // namespace translate
