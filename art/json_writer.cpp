#include "art/json_writer.h"

#include <cmath>

#include "text/numbers.h"
#include "text/utf8.h"

namespace art {

namespace {

// A character of at most 16 bits.
void appendHarmful(std::string& out, char32_t code) {
  constexpr char kDigits[] = "0123456789abcdef";
  switch (code) {
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
      out += "\\u";
      for (const unsigned shift : {12U, 8U, 4U, 0U})
        out += kDigits[code >> shift & 0x0FU];
  }
}

void appendText(std::string& out, std::string_view rest) {
  out += '"';
  while (!rest.empty()) {
    const text::Utf8Character character = text::firstCharacter(rest);
    if (!character) {
      out += text::kReplacement;
    } else if (text::isHarmful(character.code)) {
      appendHarmful(out, character.code);
    } else {
      if (character.code == '"' || character.code == '\\') out += '\\';
      out += rest.substr(0, character.length);
    }
    rest.remove_prefix(character ? character.length : 1);
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
