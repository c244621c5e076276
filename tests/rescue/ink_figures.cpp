#include <cstdlib>

#include "inkml/ink_reading.h"
#include "rescue/ink_rescue.h"
#include "tests/rescue/figures.h"

namespace figures {
namespace {

using std::size_t;
using std::string_view;

bool opensWhole(const std::string& document) {
  const Orvo::InkReading reading = Orvo::readInk(document);
  return reading.document->complete.value && reading.report.problems.empty();
}

// The points of a trace whose text, from `begin` to `end`, is divided by commas.
void addPoints(string_view document, size_t begin, size_t end, size_t stroke,
               std::vector<Drawn>& points) {
  constexpr string_view kBlanks = " \t\r\n";
  while (begin < end) {
    const size_t comma = std::min(document.find(',', begin), end);
    const size_t first = document.find_first_not_of(kBlanks, begin);
    if (first < comma) {
      const size_t last = document.find_last_not_of(kBlanks, comma - 1);
      const std::string text(document.substr(first, last + 1 - first));
      char* next = nullptr;
      const auto x = static_cast<int>(std::strtol(text.c_str(), &next, 10));
      const auto y = static_cast<int>(std::strtol(next, nullptr, 10));
      const auto place = [](int coordinate) { return static_cast<double>(coordinate); };
      points.push_back({first, text.size(), x, y, stroke, place(x), place(y)});
    }
    begin = comma + 1;
  }
}

std::vector<Drawn> pointsOf(string_view document) {
  std::vector<Drawn> points;
  size_t stroke = 0;
  for (size_t i = document.find("<trace "); i != string_view::npos;
       i = document.find("<trace ", i + 1)) {
    const size_t begin = document.find('>', i) + 1;
    addPoints(document, begin, document.find('<', begin), ++stroke, points);
  }
  return points;
}

Rescued rescue(string_view document, rescue::Mend mend) {
  rescue::InkRescue result = rescue::rescueInkDocument(document, mend);
  return {std::move(result.bytes), result.sound, result.saved};
}

}  // namespace

const Subject& inkDocuments() {
  static constexpr Subject kSubject{pointsOf, rescue, opensWhole};
  return kSubject;
}

}  // namespace figures
