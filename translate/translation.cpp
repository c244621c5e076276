#include "translate/translation.h"

#include <cmath>

#include "text/numbers.h"
#include "translate/ink_names.h"
#include "translate/packed.h"
#include "translate/xml_source.h"

namespace translate {
namespace {

class TraceSink final : public XmlSink {
 public:
  bool start(std::string_view name, const char* const* attributes, int /*line*/) override {
    const std::string_view meaning = names_.enter(name, attributes);
    if (depth_++ == 0 && meaning != "ink") {
      root_ = name;
      return false;
    }
    isTrace_ = meaning == "trace";
    if (isTrace_) traces_.emplace_back();
    return true;
  }
  void end() override {
    isTrace_ = false;
    --depth_;
    names_.leave();
  }
  void text(std::string_view part) override {
    if (isTrace_) traces_.back() += part;
  }

  const std::vector<std::string>& traces() const { return traces_; }
  const std::string& otherRoot() const { return root_; }

 private:
  InkNames names_;
  std::vector<std::string> traces_;
  std::string root_;
  int depth_ = 0;
  bool isTrace_ = false;
};

Orvo::Stroke strokeOf(const std::string& text, double scale) {
  Orvo::Stroke stroke;
  const char* at = text.data();
  const char* const end = at + text.size();
  std::vector<double> values;
  while (at != end) {
    double value = 0;
    const auto [behind, error] = std::from_chars(at, end, value);
    if (error == std::errc()) values.push_back(value);
    at = behind == at ? at + 1 : behind;
    if (at == end || *at == ',') {
      constexpr std::uint32_t kFullPressure = 1023;
      if (values.size() > 1) {
        Orvo::Point point(std::round(values[0] * scale), std::round(values[1] * scale));
        point.pressure.value = kFullPressure;
        stroke.append(point);
      }
      values.clear();
    }
  }
  if (stroke.size() > 0) stroke.append(Orvo::Point(stroke.back()));
  return stroke;
}

}  // namespace

Translation translateInk(std::string_view bytes, const Options& options) {
  Translation result;
  result.document = std::make_unique<Orvo::Document>();
  result.definitions = std::make_unique<Orvo::InkMLDefinitions>();
  Unpacked unpacked;
  if (isPacked(bytes)) {
    unpacked = unpack(bytes);
    result.problem = unpacked.problem;
    if (!result.problem.empty()) return result;
    bytes = unpacked.bytes;
  }
  TraceSink sink;
  const XmlOutcome outcome = readXml(bytes, sink);
  result.problem = outcome.problem;
  result.line = outcome.line;
  if (!sink.otherRoot().empty()) {
    result.problem = "its root is \"" + sink.otherRoot() + "\", not \"ink\"";
  }
  if (!result.problem.empty()) return result;
  constexpr double kUnitsOfMillimetre = 10.0;
  const double scale = options.millimetresPerUnit.value_or(25.4 / 96) * kUnitsOfMillimetre;
  Orvo::Layer layer;
  for (const std::string& trace : sink.traces()) {
    const Orvo::Stroke stroke = strokeOf(trace, scale);
    if (stroke.size() == 0) continue;
    layer.append(stroke);
    result.points += stroke.size() - 1;
    ++result.traces;
  }
  result.brushes.resize(layer.size());
  if (layer.size() > 0) result.document->append(layer);
  result.groups = result.document->size();
  result.document->complete.value = true;
  return result;
}

}  // namespace translate
