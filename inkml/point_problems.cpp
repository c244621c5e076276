#include "inkml/point_problems.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>
#include <utility>

#include "inkml/characters.h"
#include "inkml/xml_helpers.h"

namespace Orvo {
namespace {

using Kind = InkProblemKind;

constexpr std::size_t kNumbersOfPoint = 7;

// Pressure and time; the other numbers of a point have a sign.
constexpr bool isUnsigned(std::size_t index) {
  return index == 3 || index == 6;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text;
}

bool isBelowZero(std::string_view piece) {
  piece = withoutLeadingBlanks(piece);
  if (!piece.starts_with('-')) return false;
  piece.remove_prefix(1);
  const std::size_t digit = piece.find_first_not_of('0');
  return digit != piece.npos && isDigit(piece[digit]);
}

bool fits(std::string_view digits, bool isNegative, std::size_t index) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc()) return false;
  constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
  if (isNegative) return value <= kMost + 1;
  return value <= (isUnsigned(index) ? std::numeric_limits<std::uint32_t>::max() : kMost);
}

enum class PieceForm { whole, cut, otherwiseCut, wrapped, none };

// What becomes of a piece, the `index`-th of its point, when it is read as a whole number.
PieceForm formOf(std::string_view piece, std::size_t index) {
  piece = withoutLeadingBlanks(piece);
  if (piece.empty()) return PieceForm::whole;
  const bool isNegative = piece.front() == '-';
  if (isNegative || piece.front() == '+') piece.remove_prefix(1);
  const auto digits = static_cast<std::size_t>(
      std::find_if_not(piece.begin(), piece.end(), isDigit) - piece.begin());
  const std::string_view rest = piece.substr(digits);
  if (digits == 0) return rest.starts_with('.') ? PieceForm::cut : PieceForm::none;
  if (!fits(piece.substr(0, digits), isNegative, index)) return PieceForm::wrapped;
  if (withoutLeadingBlanks(rest).empty()) return PieceForm::whole;
  const bool isFraction = std::string_view(".eE").find(rest.front()) != rest.npos;
  return isFraction ? PieceForm::cut : PieceForm::otherwiseCut;
}

}  // namespace

void PointExaminer::examine(std::string_view text, int line) {
  tokens_.clear();
  splitString(text, ",", tokens_);
  if (tokens_.empty()) problems_.add(Kind::tracesWithoutPoints, line);
  for (const std::string_view token : tokens_)
    examinePoint(token, line);
}

void PointExaminer::examinePoint(std::string_view token, int line) {
  if (withoutLeadingBlanks(token).empty()) return problems_.add(Kind::blankPoints, line);
  pieces_.clear();
  splitString(token, " ", pieces_);
  if (pieces_.size() > kNumbersOfPoint) {
    problems_.add(Kind::furtherNumbers, line);
    pieces_.resize(kNumbersOfPoint);
  }
  std::array<bool, 5> has{};
  bool hasNegative = false;
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    has[static_cast<std::size_t>(formOf(pieces_[i], i))] = true;
    hasNegative = hasNegative || (isUnsigned(i) && isBelowZero(pieces_[i]));
  }
  for (const auto& [form, kind] : {std::pair{PieceForm::cut, Kind::cutNumbers},
                                   {PieceForm::otherwiseCut, Kind::otherwiseCutNumbers},
                                   {PieceForm::wrapped, Kind::wrappedNumbers},
                                   {PieceForm::none, Kind::noNumbers}}) {
    if (has[static_cast<std::size_t>(form)]) problems_.add(kind, line);
  }
  if (hasNegative) problems_.add(Kind::negativeNumbers, line);
}

}  // namespace Orvo
