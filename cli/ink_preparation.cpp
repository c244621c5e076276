#include "cli/ink_preparation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <utility>

#include "cli/xml_characters.h"
#include "facts/pen_clock.h"

namespace cli {

namespace {

constexpr char kDefaultContext[] = "default-context";

// In the order of a point's numbers.
void declareChannels(Orvo::TraceFormat& format, std::int32_t lastTime) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  format.clear();
  for (const char* axis : {"X", "Y", "Z"})
    format.emplace_back(axis, "0.1mm", -kMost, kMost);
  format.emplace_back("F", "dev", 0, kMost);
  for (const char* tilt : {"TX", "TY"})
    format.emplace_back(tilt, "dev", -128, 127);
  format.emplace_back("T", "dev", 0, lastTime);
}

// The first element of this id, which is the one that a reference finds; a new one where there is
// none.
template <class T>
T& withId(std::list<T>& list, const char* id) {
  const auto found = std::ranges::find(list, id, &T::id);
  if (found != list.end()) return *found;
  T& made = list.emplace_back();
  made.id = id;
  return made;
}

Orvo::InkContext& defaultContext(Orvo::InkMLDefinitions& definitions) {
  const auto found =
      std::ranges::find(definitions.contexts, kDefaultContext, &Orvo::InkContext::id);
  if (found != definitions.contexts.end()) return *found;
  // First: a reader drops what follows a context that it cannot read.
  Orvo::InkContext& made = definitions.contexts.emplace_front();
  made.id = kDefaultContext;
  made.traceFormat.value = &withId(definitions.traceFormats, "default-format");
  made.brush.value = &withId(definitions.brushes, "default-brush");
  return made;
}

class Cleaner {
 public:
  void clean(std::string& text) {
    std::string allowed = xmlCharacters(text);
    if (allowed == text) return;
    text = std::move(allowed);
    ++count_;
  }

  void clean(std::map<std::string, std::string>& annotations) {
    std::map<std::string, std::string> cleaned;
    for (const auto& annotation : annotations) {
      auto [type, text] = std::pair<std::string, std::string>(annotation);
      clean(type);
      clean(text);
      const std::string base = type;
      while (!cleaned.try_emplace(type, text).second)
        type = base + " " + std::to_string(++namesakes_);
    }
    annotations = std::move(cleaned);
  }

  std::size_t count() const { return count_; }

 private:
  std::size_t count_ = 0;
  std::size_t namesakes_ = 1;
};

}  // namespace

void roundCoordinates(Orvo::Document& document) {
  constexpr double kHalf = 0.5;
  for (Orvo::Layer& layer : document) {
    for (Orvo::Stroke& stroke : layer) {
      for (Orvo::Point& point : stroke) {
        for (Orvo::Property<double>* axis : {&point.x, &point.y, &point.z})
          axis->value = std::floor(axis->value + kHalf);
      }
    }
  }
}

std::size_t replaceForbiddenCharacters(Orvo::Document& document,
                                       Orvo::InkMLDefinitions& definitions) {
  Cleaner cleaner;
  cleaner.clean(document.annotations());
  for (Orvo::Layer& layer : document)
    cleaner.clean(layer.annotations());
  for (Orvo::TraceFormat& format : definitions.traceFormats)
    cleaner.clean(format.id);
  for (Orvo::Brush& brush : definitions.brushes) {
    for (std::string* text : {&brush.id, &brush.color.value, &brush.pentip.value})
      cleaner.clean(*text);
  }
  for (Orvo::InkContext& context : definitions.contexts)
    cleaner.clean(context.id);
  return cleaner.count();
}

void uncrossBrushFlags(Orvo::InkMLDefinitions& definitions) {
  for (Orvo::Brush& brush : definitions.brushes)
    brush.ignorePressure.value = brush.antialiased.value;
}

void declareDefaultContext(Orvo::InkMLDefinitions& definitions, std::uint32_t lastTime) {
  constexpr std::uint32_t kMost = std::numeric_limits<std::int32_t>::max();
  const std::uint32_t most = std::clamp(lastTime, facts::PenClock::kTurn - 1, kMost);
  declareChannels(*defaultContext(definitions).traceFormat.value, static_cast<std::int32_t>(most));
}

std::uint32_t lastTime(const Orvo::Document& document) {
  std::uint32_t last = 0;
  for (const Orvo::Layer& layer : document) {
    for (const Orvo::Stroke& stroke : layer) {
      for (const Orvo::Point& point : stroke)
        last = std::max(last, point.timestamp.value);
    }
  }
  return last;
}

}  // namespace cli
