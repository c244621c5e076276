#include "inkml/stroke_serializer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <tinyxml.h>
#include <vector>

#include "inkml/xml_helpers.h"

namespace Orvo {
namespace {

constexpr std::size_t kPointFields = 7;

class PointWriter {
 public:
  void decimal(double value) {
    constexpr int kDigits = 6;
    position_ = std::to_chars(position_, end_, value, std::chars_format::general, kDigits).ptr;
    *position_++ = ' ';
  }

  template <class Integer>
  void integer(Integer value, char behind) {
    position_ = std::to_chars(position_, end_, value).ptr;
    *position_++ = behind;
  }

  std::string_view text() const {
    return {text_.data(), static_cast<std::size_t>(position_ - text_.data())};
  }

 private:
  // Seven numbers of at most 24 characters each, the blanks and the comma.
  std::array<char, 192> text_;
  char* position_ = text_.data();
  char* end_ = text_.data() + text_.size();
};

void appendPoint(const Point& point, std::string& text) {
  PointWriter writer;
  writer.decimal(point.x.value);
  writer.decimal(point.y.value);
  writer.decimal(point.z.value);
  writer.integer(point.pressure.value, ' ');
  writer.integer(point.tiltX.value, ' ');
  writer.integer(point.tiltY.value, ' ');
  writer.integer(point.timestamp.value, ',');
  text += writer.text();
}

Point toPoint(const std::vector<std::string_view>& pieces) {
  std::array<std::int32_t, kPointFields> numbers{};
  const std::size_t count = std::min(pieces.size(), kPointFields);
  for (std::size_t i = 0; i < count; ++i)
    numbers[i] = toInteger(pieces[i]);
  Point point;
  point.x.value = numbers[0];
  point.y.value = numbers[1];
  point.z.value = numbers[2];
  point.pressure.value = static_cast<std::uint32_t>(numbers[3]);
  point.tiltX.value = numbers[4];
  point.tiltY.value = numbers[5];
  point.timestamp.value = static_cast<std::uint32_t>(numbers[6]);
  return point;
}

void appendPoints(std::string_view text, Stroke& stroke) {
  std::vector<std::string_view> tokens;
  splitString(text, ",", tokens);
  std::vector<std::string_view> pieces;
  for (const std::string_view token : tokens) {
    pieces.clear();
    splitString(token, " ", pieces);
    stroke.append(toPoint(pieces));
  }
}

}  // namespace

bool StrokeSerializer::write(TiXmlNode& parent) const {
  constexpr std::size_t kUsualLength = 32;
  std::string text;
  text.reserve(kUsualLength * stroke->size());
  for (const Point& point : *stroke)
    appendPoint(point, text);
  if (!text.empty()) text.pop_back();
  appendTextElement(parent, getName(), text).SetAttribute("contextRef", contextRef);
  return true;
}

bool StrokeSerializer::read(const TiXmlNode* element) {
  const TiXmlNode* text = element == nullptr ? nullptr : element->FirstChild();
  if (text == nullptr) return false;
  appendPoints(text->Value(), *stroke);
  const char* reference = findAttribute(element, "contextRef");
  if (reference == nullptr) return false;
  contextRef = reference;
  return true;
}

}  // namespace Orvo
