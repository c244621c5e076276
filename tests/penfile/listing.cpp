#include "tests/penfile/listing.h"

#include <algorithm>
#include <cstdio>

namespace pentest {
namespace {

struct Box {
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;
};

Line lineOf(char kind, const Box& box) {
  return {kind, {box.left, box.bottom, box.right, box.top}};
}

Line lineOf(const Row& row) {
  return {'P',
          {row.x, row.y, static_cast<double>(row.pressure), static_cast<double>(row.tiltX),
           static_cast<double>(row.tiltY), static_cast<double>(row.time)}};
}

Box boxOf(const Orvo::BoundingBox& box) {
  const Orvo::Point& min = box.minCorner.value;
  const Orvo::Point& max = box.maxCorner.value;
  return {min.x.value, min.y.value, max.x.value, max.y.value};
}

Box boxOf(const std::vector<Row>& stroke) {
  Box box;
  const auto byX = [](const Row& a, const Row& b) { return a.x < b.x; };
  const auto byY = [](const Row& a, const Row& b) { return a.y < b.y; };
  box.left = std::min_element(stroke.begin(), stroke.end(), byX)->x;
  box.right = std::max_element(stroke.begin(), stroke.end(), byX)->x;
  box.bottom = std::min_element(stroke.begin(), stroke.end(), byY)->y;
  box.top = std::max_element(stroke.begin(), stroke.end(), byY)->y;
  return box;
}

Box boxAround(const std::vector<Row>& all) {
  return all.empty() ? Box() : boxOf(all);
}

template <class Children>
std::vector<Row> allOf(const Children& children) {
  std::vector<Row> all;
  for (const auto& child : children)
    all.insert(all.end(), child.begin(), child.end());
  return all;
}

Row rowOf(const Orvo::Point& point) {
  return {point.x.value,     point.y.value,     point.pressure.value,
          point.tiltX.value, point.tiltY.value, point.timestamp.value};
}

}  // namespace

std::vector<Line> linesOf(const Rows& rows) {
  std::vector<Row> everything;
  std::vector<Line> lines(1);
  for (const auto& layer : rows) {
    const std::vector<Row> points = allOf(layer);
    everything.insert(everything.end(), points.begin(), points.end());
    lines.push_back(lineOf('L', boxOf(points)));
    for (const auto& stroke : layer) {
      lines.push_back(lineOf('S', boxOf(stroke)));
      for (const Row& row : stroke)
        lines.push_back(lineOf(row));
    }
  }
  lines.front() = lineOf('D', boxAround(everything));
  return lines;
}

std::vector<Line> linesOf(const Orvo::Document& document) {
  std::vector<Line> lines{lineOf('D', boxOf(document.bounds()))};
  for (const Orvo::Layer& layer : document) {
    lines.push_back(lineOf('L', boxOf(layer.bounds())));
    for (const Orvo::Stroke& stroke : layer) {
      lines.push_back(lineOf('S', boxOf(stroke.bounds())));
      for (const Orvo::Point& point : stroke)
        lines.push_back(lineOf(rowOf(point)));
    }
  }
  return lines;
}

std::string textOf(const std::vector<Line>& lines) {
  std::string text;
  for (const Line& line : lines) {
    text += line.kind;
    const std::size_t count = line.kind == 'P' ? 6 : 4;
    for (std::size_t i = 0; i < count; ++i) {
      std::array<char, 32> number{};
      const int length = std::snprintf(number.data(), number.size(), " %.17g", line.numbers[i]);
      text.append(number.data(), static_cast<std::size_t>(length));
    }
    text += '\n';
  }
  return text;
}

std::vector<int> headerOf(const Orvo::PnxDocument& document) {
  const Orvo::FileDescriptor& descriptor = document.fileDescriptor;
  const Orvo::PhysicalParams& physical = document.physicalParams;
  std::vector<int> fields{
      descriptor.descriptorByte0, descriptor.coordinateFormat, descriptor.descriptorByte2,
      descriptor.descriptorByte3, physical.paramByte0,         physical.paramWord1[0],
      physical.paramWord1[1],     physical.paramWord2[0],      physical.paramWord2[1],
      physical.paramByte5,        physical.paramByte6};
  for (const unsigned char byte : document.dateTime.dateTimeBytes)
    fields.push_back(byte);
  return fields;
}

}  // namespace pentest
