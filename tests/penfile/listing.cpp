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

std::string lineOf(char kind, const Box& box) {
  std::array<char, 200> text{};
  const int length = std::snprintf(text.data(), text.size(), "%c %.17g %.17g %.17g %.17g\n", kind,
                                   box.left, box.bottom, box.right, box.top);
  return {text.data(), static_cast<std::size_t>(length)};
}

std::string lineOf(const Row& row) {
  std::array<char, 200> text{};
  const int length =
      std::snprintf(text.data(), text.size(), "P %.17g %.17g %lu %ld %ld %lu\n", row.x, row.y,
                    static_cast<unsigned long>(row.pressure), static_cast<long>(row.tiltX),
                    static_cast<long>(row.tiltY), static_cast<unsigned long>(row.time));
  return {text.data(), static_cast<std::size_t>(length)};
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

std::string listing(const Rows& rows) {
  std::vector<Row> everything;
  std::string text;
  for (const auto& layer : rows) {
    const std::vector<Row> points = allOf(layer);
    everything.insert(everything.end(), points.begin(), points.end());
    text += lineOf('L', boxOf(points));
    for (const auto& stroke : layer) {
      text += lineOf('S', boxOf(stroke));
      for (const Row& row : stroke)
        text += lineOf(row);
    }
  }
  return lineOf('D', boxAround(everything)) + text;
}

std::string listing(const Orvo::Document& document) {
  std::string text = lineOf('D', boxOf(document.bounds()));
  for (const Orvo::Layer& layer : document) {
    text += lineOf('L', boxOf(layer.bounds()));
    for (const Orvo::Stroke& stroke : layer) {
      text += lineOf('S', boxOf(stroke.bounds()));
      for (const Orvo::Point& point : stroke)
        text += lineOf(rowOf(point));
    }
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
