#include "art/json_writer.h"

#include <charconv>
#include <cmath>

namespace art {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

// Long enough for the shortest form of any double or 64-bit integer: std::to_chars then needs at
// most 24 characters.
constexpr std::size_t kNumberRoom = 32;

template <class Number>
void appendNumber(std::string& out, Number number) {
  char text[kNumberRoom];
  const std::to_chars_result end = std::to_chars(text, text + kNumberRoom, number);
  out.append(text, end.ptr);
}

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0U) == 0x80U;
}

// Bytes of the UTF-8 character at the beginning of `text`, which begins with a byte above 0x7F;
// 0 when there is none: an overlong form, a surrogate, beyond U+10FFFF, or cut short.
std::size_t characterLength(std::string_view text) {
  const auto at = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = at(0);
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if (!isContinuation(at(i))) return 0;
  const unsigned char second = at(1);
  if (lead == 0xE0 && second < 0xA0) return 0;
  if (lead == 0xED && second >= 0xA0) return 0;
  if (lead == 0xF0 && second < 0x90) return 0;
  if (lead == 0xF4 && second >= 0x90) return 0;
  return length;
}

void appendControl(std::string& out, unsigned char byte) {
  constexpr char digits[] = "0123456789abcdef";
  switch (byte) {
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      out += "\\u00";
      out += digits[byte >> 4U];
      out += digits[byte & 0x0FU];
  }
}

void appendText(std::string& out, std::string_view text) {
  out += '"';
  while (!text.empty()) {
    const auto byte = static_cast<unsigned char>(text.front());
    std::size_t length = 1;
    if (byte < 0x20 || byte == 0x7F) {
      appendControl(out, byte);
    } else if (byte == '"' || byte == '\\') {
      out += '\\';
      out += text.front();
    } else if (byte < 0x80) {
      out += text.front();
    } else if (length = characterLength(text); length != 0) {
      out += text.substr(0, length);
    } else {
      out += kReplacement;
      length = 1;
    }
    text.remove_prefix(length);
  }
  out += '"';
}

}  // namespace

void JsonWriter::separate() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (commaDue_.back()) out_ += ',';
  commaDue_.back() = true;
  if (newlineDue_) out_ += '\n';
  newlineDue_ = false;
}

JsonWriter& JsonWriter::open(char bracket) {
  separate();
  out_ += bracket;
  commaDue_.push_back(false);
  return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
  if (newlineDue_) out_ += '\n';
  newlineDue_ = false;
  out_ += bracket;
  commaDue_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
  separate();
  appendText(out_, name);
  out_ += ':';
  afterKey_ = true;
  return *this;
}

JsonWriter& JsonWriter::value(float number) {
  if (!std::isfinite(number)) return null();
  separate();
  appendNumber(out_, number);
  return *this;
}

JsonWriter& JsonWriter::value(double number) {
  if (!std::isfinite(number)) return null();
  separate();
  appendNumber(out_, number);
  return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
  separate();
  appendText(out_, text);
  return *this;
}

JsonWriter& JsonWriter::literal(std::string_view text) {
  separate();
  out_ += text;
  return *this;
}

JsonWriter& JsonWriter::integer(std::int64_t number) {
  separate();
  appendNumber(out_, number);
  return *this;
}

JsonWriter& JsonWriter::natural(std::uint64_t number) {
  separate();
  appendNumber(out_, number);
  return *this;
}

JsonWriter& JsonWriter::newline() {
  newlineDue_ = true;
  return *this;
}

std::string jsonText(std::string_view text) {
  std::string out;
  appendText(out, text);
  return out;
}

}  // namespace art
