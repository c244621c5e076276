#include "translate/mapping.h"

#include <algorithm>

#include "translate/ink_names.h"
#include "translate/units.h"

namespace translate {
namespace {

using Index = InkTree::Index;
using Matrix = std::vector<std::vector<double>>;

constexpr std::size_t kMostCells = 1000;

// Rows parted by commas; a comma behind the last row is often there. Empty for anything else.
Matrix matrixIn(std::string_view text) {
  Matrix matrix;
  std::size_t cells = 0;
  while (!text.empty()) {
    const std::size_t comma = std::min(text.find(','), text.size());
    std::string_view row = trimmed(text.substr(0, comma));
    text.remove_prefix(std::min(comma + 1, text.size()));
    if (row.empty()) continue;
    std::vector<double>& numbers = matrix.emplace_back();
    while (!row.empty()) {
      const std::size_t end = std::min(row.find_first_of(" \t\r\n"), row.size());
      const auto number = numberOf(row.substr(0, end));
      if (!number || ++cells > kMostCells) return {};
      numbers.push_back(*number);
      row = trimmed(row.substr(end));
    }
  }
  return matrix;
}

bool isRegular(const Matrix& matrix) {
  constexpr std::size_t kLeastColumns = 2;
  return !matrix.empty() && matrix[0].size() >= kLeastColumns &&
         std::ranges::all_of(matrix,
                             [&](const auto& row) { return row.size() == matrix[0].size(); });
}

// Without commas: two rows of three.
Matrix halved(Matrix matrix) {
  constexpr std::size_t kColumns = 3;
  if (matrix.size() != 1 || matrix[0].size() != 2 * kColumns) return matrix;
  const auto middle = matrix[0].begin() + kColumns;
  return {{matrix[0].begin(), middle}, {middle, matrix[0].end()}};
}

std::size_t columnNamed(const TraceFormat& format, std::string_view name) {
  const auto found = std::ranges::find_if(
      format, [&](const Channel& c) { return lowerCase(c.name) == lowerCase(name); });
  return static_cast<std::size_t>(found - format.begin());
}

// Which channel each column of the matrix multiplies, and which coordinate each row gives.
struct Bindings {
  std::vector<std::size_t> sources;
  std::vector<std::string> targets;
};

Bindings defaultBindings(const TraceFormat& format, const Matrix& matrix) {
  Bindings bindings;
  for (const char* name : {"X", "Y"})
    bindings.sources.push_back(columnNamed(format, name));
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i].role != Role::x && format[i].role != Role::y) bindings.sources.push_back(i);
  }
  bindings.sources.resize(matrix[0].size() - 1, format.size());
  bindings.targets = {"x", "y"};
  bindings.targets.resize(matrix.size());
  return bindings;
}

void bind(const InkTree& tree, Index mapping, const TraceFormat& format, Bindings& bindings) {
  tree.eachChild(mapping, [&](Index child) {
    if (tree.tag(child) != Tag::bind) return;
    const auto numberAt = [&](Attribute attribute) {
      const double number = numberOf(tree.attribute(child, attribute).value_or("")).value_or(0);
      return number >= 1 && number <= kMostCells ? static_cast<std::size_t>(number) - 1
                                                 : kMostCells;
    };
    const auto source = tree.attribute(child, Attribute::source);
    const std::size_t column = numberAt(Attribute::column);
    if (source && column < bindings.sources.size()) {
      bindings.sources[column] = columnNamed(format, *source);
    }
    const auto target = tree.attribute(child, Attribute::target);
    const std::size_t row = numberAt(Attribute::row);
    if (target && row < bindings.targets.size()) bindings.targets[row] = lowerCase(*target);
  });
}

LinearSum sumOf(const std::vector<double>& row, const Bindings& bindings, std::size_t channels) {
  LinearSum sum{std::vector<double>(channels, 0.0), row.back()};
  for (std::size_t i = 0; i + 1 < row.size(); ++i) {
    if (bindings.sources[i] < channels) sum.factors[bindings.sources[i]] += row[i];
  }
  return sum;
}

}  // namespace

double LinearSum::of(std::span<const double> values) const {
  double sum = offset;
  for (std::size_t i = 0; i < factors.size(); ++i) {
    if (factors[i] != 0) sum += factors[i] * values[i];
  }
  return sum;
}

CanvasTransform transformOf(const InkTree& tree, Index transform, const TraceFormat& format,
                            Contexts& contexts) {
  CanvasTransform result;
  if (transform == InkTree::kNone) return result;
  Index mapping = tree.child(transform, Tag::mapping);
  if (mapping == InkTree::kNone) return result;
  const Index named = contexts.referred(mapping, Attribute::mappingRef, Tag::mapping);
  if (named != InkTree::kNone) mapping = named;
  const Index affine = tree.child(mapping, Tag::affine);
  const bool hasAffine = affine != InkTree::kNone;
  const std::string type = lowerCase(
      tree.attribute(mapping, Attribute::type).value_or(hasAffine ? "affine" : "unknown"));
  if (type == "identity") return result;
  const Matrix matrix = hasAffine ? halved(matrixIn(tree.text(affine))) : Matrix();
  if (type != "affine" || !isRegular(matrix)) {
    result.otherType = type;
    return result;
  }
  Bindings bindings = defaultBindings(format, matrix);
  bind(tree, mapping, format, bindings);
  for (std::size_t row = 0; row < matrix.size(); ++row) {
    if (bindings.targets[row] == "x") result.x = sumOf(matrix[row], bindings, format.size());
    if (bindings.targets[row] == "y") result.y = sumOf(matrix[row], bindings, format.size());
  }
  return result;
}

}  // namespace translate
