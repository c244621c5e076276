#include "art/json_writer.h"

#include <cmath>

#include "text/numbers.h"
#include "text/utf8.h"

namespace art {

namespace {

void appendControl(std::string& out, unsigned char byte) {
  constexpr char kDigits[] = "0123456789abcdef";
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
      out += kDigits[byte >> 4U];
      out += kDigits[byte & 0x0FU];
  }
}

void appendText(std::string& out, std::string_view rest) {
  out += '"';
  while (!rest.empty()) {
    const auto byte = static_cast<unsigned char>(rest.front());
    std::size_t length = 1;
    if (byte < 0x20 || byte == 0x7F) {
      appendControl(out, byte);
    } else if (byte == '"' || byte == '\\') {
      out += '\\';
      out += rest.front();
    } else if (byte < 0x80) {
      out += rest.front();
    } else if (const text::Utf8Character character = text::firstCharacter(rest)) {
      length = character.length;
      out += rest.substr(0, length);
    } else {
      out += text::kReplacement;
    }
    rest.remove_prefix(length);
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
  text::appendNumber(out_, number);
  return *this;
}

JsonWriter& JsonWriter::value(double number) {
  if (!std::isfinite(number)) return null();
  separate();
  text::appendNumber(out_, number);
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
  text::appendNumber(out_, number);
  return *this;
}

JsonWriter& JsonWriter::natural(std::uint64_t number) {
  separate();
  text::appendNumber(out_, number);
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
