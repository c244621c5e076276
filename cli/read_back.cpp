#include "cli/read_back.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <ranges>

#include "cli/sentences.h"

namespace cli {

namespace {

std::uint64_t difference(std::size_t one, std::size_t other) {
  return one > other ? one - other : other - one;
}

// Calls `compare` with the elements of both that stand at the same place.
template <class One, class Other, class Compare>
void forEachPair(One&& one, Other&& other, Compare compare) {
  auto right = std::ranges::begin(other);
  for (auto& left : one) {
    if (right == std::ranges::end(other)) return;
    compare(left, *right);
    ++right;
  }
}

bool sameOtherNumbers(const Orvo::Point& meant, const Orvo::Point& found) {
  return meant.pressure == found.pressure && meant.tiltX == found.tiltX &&
         meant.tiltY == found.tiltY && meant.timestamp == found.timestamp;
}

template <class Coordinate>
bool samePlace(const Orvo::Point& meant, const Orvo::Point& found, Coordinate written) {
  return written(meant.x.value) == found.x.value && written(meant.y.value) == found.y.value &&
         written(meant.z.value) == found.z.value;
}

bool same(const Orvo::TraceFormat& meant, const Orvo::TraceFormat& found) {
  return meant.id == found.id;
}

bool same(const Orvo::Brush& meant, const Orvo::Brush& found) {
  // The flag that is written comes back as `antialiased`.
  return meant.id == found.id && meant.color == found.color && meant.width == found.width &&
         meant.height == found.height && meant.transparency == found.transparency &&
         meant.fittocurve == found.fittocurve && meant.ignorePressure == found.antialiased &&
         meant.pentip == found.pentip;
}

template <class T>
const std::string& idOf(const T* definition) {
  static const std::string kNone;
  return definition == nullptr ? kNone : definition->id;
}

bool same(const Orvo::InkContext& meant, const Orvo::InkContext& found) {
  return meant.id == found.id && idOf(meant.brush.value) == idOf(found.brush.value) &&
         idOf(meant.traceFormat.value) == idOf(found.traceFormat.value);
}

template <class List>
std::uint64_t countChanged(const List& meant, const List& found) {
  std::uint64_t count = difference(meant.size(), found.size());
  forEachPair(meant, found, [&](const auto& one, const auto& other) {
    if (!same(one, other)) ++count;
  });
  return count;
}

class Comparison {
 public:
  ReadBackDifferences result;

  void compare(const Orvo::Layer& meant, const Orvo::Layer& found) {
    compareAnnotations(meant.annotations(), found.annotations());
    const auto hasPoints = [](const Orvo::Stroke& stroke) { return stroke.size() > 0; };
    const auto strokes =
        static_cast<std::size_t>(std::count_if(meant.begin(), meant.end(), hasPoints));
    result.emptyStrokes += meant.size() - strokes;
    result.strokes += difference(strokes, found.size());
    auto right = found.begin();
    for (const Orvo::Stroke& stroke : meant) {
      if (!hasPoints(stroke)) continue;
      if (right == found.end()) return;
      compare(stroke, *right);
      ++right;
    }
  }

  // An annotation of another text counts once, one of another type as one missing and one added.
  void compareAnnotations(const std::map<std::string, std::string>& meant,
                          const std::map<std::string, std::string>& found) {
    for (const auto& [type, text] : meant) {
      const auto entry = found.find(type);
      if (entry == found.end() || entry->second != text) ++result.annotations;
    }
    for (const auto& entry : found) {
      if (!meant.contains(entry.first)) ++result.annotations;
    }
  }

 private:
  void compare(const Orvo::Stroke& meant, const Orvo::Stroke& found) {
    if (meant.size() != found.size()) ++result.strokes;
    forEachPair(meant, found, [&](const Orvo::Point& one, const Orvo::Point& other) {
      const auto exactly = [](double value) { return value; };
      const auto cut = [](double value) { return std::trunc(value); };
      if (!sameOtherNumbers(one, other) || !samePlace(one, other, cut)) {
        ++result.points;
      } else if (!samePlace(one, other, exactly)) {
        ++result.fractions;
      }
    });
  }
};

}  // namespace

ReadBackDifferences compareReadBack(const Orvo::Document& meant,
                                    const Orvo::InkMLDefinitions& meantDefinitions,
                                    const Orvo::InkReading& found) {
  Comparison comparison;
  comparison.compareAnnotations(meant.annotations(), found.document->annotations());
  forEachPair(meant, *found.document, [&](const Orvo::Layer& one, const Orvo::Layer& other) {
    comparison.compare(one, other);
  });
  ReadBackDifferences& result = comparison.result;
  result.layers = difference(meant.size(), found.document->size());
  const Orvo::InkMLDefinitions& definitions = *found.definitions;
  result.definitions = countChanged(meantDefinitions.traceFormats, definitions.traceFormats) +
                       countChanged(meantDefinitions.brushes, definitions.brushes) +
                       countChanged(meantDefinitions.contexts, definitions.contexts);
  return result;
}

std::string describe(const ReadBackDifferences& differences) {
  std::string sentence;
  const auto add = [&](std::uint64_t count, const char* one, const char* many) {
    if (count > 0) addPart(sentence, counted(count, one, many));
  };
  add(differences.fractions,
      "point loses its tenths when the plug-in opens the result (without --exact they are rounded)",
      "points lose their tenths when the plug-in opens the result (without --exact they are "
      "rounded)");
  add(differences.points,
      "point changes (coordinates of a million or more are not written in full)",
      "points change (coordinates of a million or more are not written in full)");
  add(differences.emptyStrokes, "stroke without points is left out",
      "strokes without points are left out");
  add(differences.strokes, "stroke is lost or has another number of points",
      "strokes are lost or have another number of points");
  add(differences.layers, "layer is lost", "layers are lost");
  add(differences.annotations,
      "annotation changes or is lost (extra white space and empty texts are not kept)",
      "annotations change or are lost (extra white space and empty texts are not kept)");
  add(differences.definitions, "brush, trace format or context changes or is lost",
      "brushes, trace formats or contexts change or are lost");
  return sentence;
}

std::optional<std::string> explainUnusable(const Orvo::InkReport& report) {
  switch (report.failure) {
    case Orvo::InkFailure::none:
      return {};
    case Orvo::InkFailure::tooLarge:
      return "is not written: the ink document would have 2 GiB or more, and such a file does not "
             "open";
    case Orvo::InkFailure::brokenXml:
      return "is not written: the ink document would not open again (" + report.libraryText +
             ", line " + std::to_string(report.line) + ")";
    default:
      return "is not written: the ink document would not open again";
  }
}

}  // namespace cli
