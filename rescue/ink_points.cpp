#include "rescue/ink_points.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "inkml/characters.h"

namespace rescue {
namespace {

using std::size_t;
using std::string_view;

constexpr size_t kMostNumbers = 7;

struct Stretch {
  size_t begin;
  size_t end;
};

// Numbers with nothing but blanks between them.
struct Chunk {
  size_t begin;
  size_t end;
  bool isSureAtStart;
  bool isSureAtEnd;
  std::span<const Stretch> numbers;
};

enum class Sort : std::uint8_t { number, exponent, blank, comma, other };

constexpr auto kSorts = [] {
  std::array<Sort, 256> sorts{};
  sorts.fill(Sort::other);
  for (const char c : string_view("0123456789+-."))
    sorts[static_cast<unsigned char>(c)] = Sort::number;
  for (const char c : string_view("eE"))
    sorts[static_cast<unsigned char>(c)] = Sort::exponent;
  for (const char c : string_view(" \t\n\r"))
    sorts[static_cast<unsigned char>(c)] = Sort::blank;
  sorts[static_cast<unsigned char>(',')] = Sort::comma;
  return sorts;
}();

Sort sortOf(char c) {
  return kSorts[static_cast<unsigned char>(c)];
}

// An exponent is a part of a number only inside of it.
bool isNoPart(Sort sort) {
  return sort == Sort::other || sort == Sort::exponent;
}

// Calls `take` with each chunk of a region, and `skip` at each run of bytes that belongs to none.
template <class Take, class Skip>
void visitChunks(string_view bytes, const InkRegion& region, Take take, Skip skip) {
  std::vector<Stretch> numbers;
  bool isSureAtStart = region.isSureAtStart;
  for (size_t i = region.begin; i < region.end;) {
    numbers.clear();
    size_t end = i;
    while (i < region.end) {
      const Sort sort = sortOf(bytes[i]);
      if (sort == Sort::blank) {
        ++i;
        continue;
      }
      if (sort != Sort::number) break;
      const size_t start = i;
      while (i < region.end && sortOf(bytes[i]) <= Sort::exponent)
        ++i;
      end = i;
      numbers.push_back({start, end});
    }
    const bool atEnd = i == region.end;
    const bool atComma = !atEnd && bytes[i] == ',';
    const bool isSureAtEnd = atComma || (atEnd ? region.isSureAtEnd : bytes[i] == '<');
    if (!numbers.empty()) {
      take(Chunk{numbers.front().begin, end, isSureAtStart, isSureAtEnd, numbers});
    }
    if (atEnd) break;
    if (atComma) {
      ++i;
      isSureAtStart = true;
      continue;
    }
    while (i < region.end && isNoPart(sortOf(bytes[i])))
      ++i;
    isSureAtStart = bytes[i - 1] == '>';
    skip();
  }
}

bool isFraction(string_view text) {
  return text.find_first_of(".eE") != string_view::npos;
}

// The number as the reader takes it, rounded; false for what it would not take as it stands.
bool readNumber(string_view text, size_t index, bool mayBeFraction, std::int64_t& value) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return false;
  }
  const char* last = text.data() + text.size();
  if (!isFraction(text)) {
    const auto [end, error] = std::from_chars(text.data(), last, value);
    if (end != last || error != std::errc()) return false;
  } else {
    double number = 0;
    if (!mayBeFraction || text.find_first_of("0123456789") == string_view::npos) return false;
    const auto [end, error] = std::from_chars(text.data(), last, number);
    if (end != last || error != std::errc() || std::abs(number) > 1e10) return false;
    value = std::llround(number);
  }
  const bool isUnsigned = index == 3 || index == 6;
  if (isUnsigned) return value >= 0 && value <= std::numeric_limits<std::uint32_t>::max();
  using Limits = std::numeric_limits<std::int32_t>;
  return value >= Limits::min() && value <= Limits::max();
}

class PointReader {
 public:
  PointReader(string_view bytes, PointForm form) : bytes_(bytes), form_(form) {}

  void read(InkRegion& region) {
    region.firstPoint = points_.size();
    region.isWhole = true;
    follows_ = false;
    visitChunks(
        bytes_, region, [&](const Chunk& chunk) { region.isWhole &= take(chunk); },
        [&] {
          follows_ = true;
          region.isWhole = false;
        });
    region.lastPoint = points_.size();
  }

  std::vector<InkPoint> points() { return std::move(points_); }

 private:
  // Whether the chunk is just one point.
  bool take(const Chunk& chunk) {
    const size_t count = chunk.numbers.size();
    if (count == form_.numbers) {
      if (add(chunk.numbers, chunk.isSureAtStart, chunk.isSureAtEnd)) {
        return chunk.isSureAtStart && chunk.isSureAtEnd;
      }
    } else if (count > form_.numbers) {
      // Where what divides two points is lost, or something was put between them, they may still be
      // there.
      add(chunk.numbers.first(form_.numbers), chunk.isSureAtStart, false);
      follows_ = true;
      add(chunk.numbers.last(form_.numbers), false, chunk.isSureAtEnd);
    }
    follows_ = true;
    return false;
  }

  bool add(std::span<const Stretch> numbers, bool isSureAtStart, bool isSureAtEnd) {
    InkPoint point;
    for (size_t i = 0; i < numbers.size(); ++i) {
      const string_view text = bytes_.substr(numbers[i].begin, numbers[i].end - numbers[i].begin);
      if (!readNumber(text, i, form_.hasFractions, point.numbers[i])) return false;
      point.isExact = point.isExact && !isFraction(text);
    }
    point.begin = numbers.front().begin;
    point.end = numbers.back().end;
    point.isSureAtStart = isSureAtStart;
    point.isSureAtEnd = isSureAtEnd;
    point.followsGap = follows_;
    follows_ = false;
    points_.push_back(point);
    return true;
  }

  string_view bytes_;
  PointForm form_;
  std::vector<InkPoint> points_;
  bool follows_ = false;
};

}  // namespace

PointForm usualForm(string_view bytes, std::span<const InkRegion> regions) {
  std::array<size_t, kMostNumbers + 1> counts{};
  size_t fractions = 0;
  for (const InkRegion& region : regions) {
    visitChunks(
        bytes, region,
        [&](const Chunk& chunk) {
          if (!chunk.isSureAtStart || !chunk.isSureAtEnd) return;
          if (chunk.numbers.size() <= kMostNumbers) ++counts[chunk.numbers.size()];
          const Stretch& first = chunk.numbers.front();
          if (isFraction(bytes.substr(first.begin, first.end - first.begin))) ++fractions;
        },
        [] {});
  }
  const auto most = std::max_element(counts.begin(), counts.end());
  PointForm form;
  if (*most > 0) form.numbers = static_cast<size_t>(most - counts.begin());
  constexpr size_t kUsual = 20;
  form.hasFractions = fractions * kUsual > *most;
  return form;
}

std::vector<InkPoint> readPoints(string_view bytes, std::span<InkRegion> regions, PointForm form) {
  PointReader reader(bytes, form);
  for (InkRegion& region : regions)
    reader.read(region);
  return reader.points();
}

std::string textOf(const InkPoint& point, PointForm form) {
  std::string text;
  for (size_t i = 0; i < form.numbers; ++i)
    text += (i == 0 ? "" : " ") + std::to_string(point.numbers[i]);
  return text;
}

}  // namespace rescue
