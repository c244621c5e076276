#include "cli/info.h"
#include "cli/report.h"
#include "cli/sentences.h"
#include "cli/terminal_text.h"
#include "text/format.h"

namespace cli {

namespace {

using text::format;

// The rows of the table, a name and a value each.
class Table {
 public:
  explicit Table(const std::string& title) : text_(printable(title)) {}

  void add(const std::string& name, const std::string& value) {
    constexpr std::size_t kWidth = 12;
    std::string row = printable(name);
    row.resize(std::max(row.size(), kWidth), ' ');
    text_ += "\n  " + row + "  " + printable(value);
  }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

std::string soundness(const Examination& found) {
  if (!found.failure.empty()) return "no, it does not open; this is what lies before the damage";
  return joined(found.isSound() ? "yes" : "no, it opens with losses: " + found.losses,
                found.remarks);
}

std::string kindOf(const Info& info) {
  if (info.translation) return "InkML of another program";
  return info.found.recording.kind() == FileKind::pen ? "pen recording" : "ink document";
}

void addTranslation(Table& table, const std::optional<TranslatedInk>& translation) {
  if (!translation) return;
  table.add("translated", describe(*translation) + "; the figures are those of the translation");
  for (const std::string& remark : translation->remarks)
    table.add("", remark);
}

std::string millimetres(double inkUnits) {
  return format("%.1f mm", inkUnits / 10);
}

void addPlace(Table& table, const std::optional<facts::Extent>& extent) {
  if (!extent) return table.add("drawing", "none");
  table.add("drawing", format("%.1f x ", (extent->right - extent->left) / 10) +
                           millimetres(extent->bottom - extent->top));
  table.add("place", millimetres(extent->left) + " from the left edge of the sheet, " +
                         millimetres(extent->top) + " from its top");
}

void addLayers(Table& table, const facts::DrawingFacts& drawing) {
  table.add("layers", std::to_string(drawing.layers.size()));
  std::size_t number = 0;
  for (const facts::LayerFacts& layer : drawing.layers) {
    ++number;
    const std::string name =
        layer.name.empty() ? "Layer " + std::to_string(number) : shortened(layer.name);
    table.add("  " + name,
              counted(layer.strokes, "stroke") + ", " + counted(layer.points, "point"));
  }
}

void addStrokes(Table& table, const facts::DrawingFacts& drawing) {
  std::string strokes = std::to_string(drawing.strokes);
  if (drawing.singlePoints > 0) {
    strokes += ", " + std::to_string(drawing.singlePoints) + " of a single point";
  }
  table.add("strokes", strokes);
  std::string points = std::to_string(drawing.points);
  if (drawing.strokes > 1) {
    points += ", " + std::to_string(drawing.longestStroke) + " in the longest stroke";
  }
  table.add("points", points);
  table.add("ink", format("%.2f m", drawing.length / 10'000));
}

std::string rangeOf(const facts::Range<std::int32_t>& range) {
  return std::to_string(range.least) + " to " + std::to_string(range.most);
}

void addPen(Table& table, const facts::DrawingFacts& drawing) {
  table.add("pressure", drawing.pressure ? rangeOf(*drawing.pressure) : "none");
  table.add("tilt", drawing.tiltX
                        ? "x " + rangeOf(*drawing.tiltX) + ", y " + rangeOf(*drawing.tiltY)
                        : "none");
}

void addTimes(Table& table, const Info& info) {
  if (info.found.packets) {
    const facts::Date date = info.date.value_or(facts::Date{});
    table.add("date", info.date
                          ? format("%04d-%02d-%02d %02d:%02d:%02d, by the date bytes", date.year,
                                   date.month, date.day, date.hour, date.minute, date.second)
                          : "none");
  }
  if (!info.clock) return table.add("duration", "unknown, the points have no times");
  if (info.translation) {
    table.add("pen down", std::to_string(info.clock->penDown) + " ms");
    return table.add("duration", std::to_string(info.clock->whole) + " ms");
  }
  table.add("pen down", counted(info.clock->penDown, "count"));
  table.add("duration",
            counted(info.clock->whole, "count") + " of the pen's clock, whose unit is not known");
}

std::string unknownPackets(const facts::PenFacts& facts) {
  std::string list;
  for (const auto& [tag, packets] : facts.unknown) {
    if (!list.empty()) list += "; ";
    list += format("0x%02X: ", unsigned{tag}) + counted(packets.count, "packet") + " of " +
            counted(packets.bytes, "byte") + (packets.count > 1 ? " in all" : "");
  }
  return list.empty() ? "none" : list;
}

template <class Bytes>
std::string hex(const Bytes& bytes) {
  std::string text;
  for (const unsigned char byte : bytes)
    text += format(text.empty() ? "%02X" : " %02X", unsigned{byte});
  return text;
}

void addPackets(Table& table, const Info& info) {
  const Orvo::PnxDocument& pen = *info.found.recording.pen();
  const Orvo::FileDescriptor& descriptor = pen.fileDescriptor;
  const Orvo::PhysicalParams& physical = pen.physicalParams;
  table.add("unknown", unknownPackets(*info.found.packets));
  table.add("descriptor", hex(std::array{descriptor.descriptorByte0, descriptor.coordinateFormat,
                                         descriptor.descriptorByte2, descriptor.descriptorByte3}));
  table.add("parameters",
            hex(std::array{physical.paramByte0, physical.paramWord1[0], physical.paramWord1[1],
                           physical.paramWord2[0], physical.paramWord2[1], physical.paramByte5,
                           physical.paramByte6}));
  table.add("date bytes", hex(pen.dateTime.dateTimeBytes));
}

}  // namespace

std::string infoToText(const Info& info) {
  const bool isPen = info.found.recording.kind() == FileKind::pen;
  Table table(info.file);
  table.add("kind", kindOf(info));
  table.add("sound", soundness(info.found));
  addTranslation(table, info.translation);
  addPlace(table, info.drawing.extent);
  addLayers(table, info.drawing);
  addStrokes(table, info.drawing);
  addPen(table, info.drawing);
  addTimes(table, info);
  if (isPen) addPackets(table, info);
  return table.text();
}

}  // namespace cli
