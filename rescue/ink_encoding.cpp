#include "rescue/ink_encoding.h"

#include <algorithm>
#include <array>

#include "inkml/spellings.h"
#include "text/utf8.h"

namespace rescue {
namespace {

using std::size_t;
using std::string_view;

constexpr char32_t kByteOrderMark = 0xFEFF;

// U+0080 to U+009F as Windows-1252 has them; five of them it does not use.
constexpr std::array<char32_t, 32> kWindowsCharacters{
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

struct Character {
  char32_t code;
  size_t length;  // In bytes of the document.
};

class Decoder {
 public:
  Decoder(string_view bytes, InkEncoding encoding) : bytes_(bytes), encoding_(encoding) {}

  // The character at the byte; `place` must be inside.
  Character at(size_t place) const {
    if (isUtf16(encoding_)) return pairAt(place);
    const char32_t code = byteAt(place);
    constexpr char32_t kFirst = 0x80;
    const bool isWindows = encoding_ == InkEncoding::windows1252 && code >= kFirst &&
                           code < kFirst + kWindowsCharacters.size();
    return {isWindows ? kWindowsCharacters[code - kFirst] : code, 1};
  }

 private:
  unsigned char byteAt(size_t place) const { return static_cast<unsigned char>(bytes_[place]); }

  bool hasUnit(size_t place) const { return place + 2 <= bytes_.size(); }

  char32_t unitAt(size_t place) const {
    const bool isLittle = encoding_ == InkEncoding::utf16LittleEndian;
    return static_cast<char32_t>(byteAt(place + (isLittle ? 1 : 0)) << 8U |
                                 byteAt(place + (isLittle ? 0 : 1)));
  }

  Character pairAt(size_t place) const {
    if (!hasUnit(place) || isShiftedAt(place)) return {text::kReplacementCharacter, 1};
    const char32_t unit = unitAt(place);
    if (!text::isSurrogate(unit)) return {unit, 2};
    constexpr char32_t kFirstLow = 0xDC00;
    constexpr char32_t kFirstHigh = 0xD800;
    if (unit < kFirstLow && hasUnit(place + 2)) {
      const char32_t low = unitAt(place + 2);
      if (text::isSurrogate(low) && low >= kFirstLow) {
        return {0x10000 + ((unit - kFirstHigh) << 10U) + (low - kFirstLow), 4};
      }
    }
    return {text::kReplacementCharacter, 2};
  }

  // Whether the units from here on are ASCII with their two bytes swapped, since one is missing
  // before them. A row of one character such as U+3000 is more likely that.
  bool isShiftedAt(size_t place) const {
    constexpr size_t kUnits = 6;
    if (!hasUnit(place + 2 * (kUnits - 1))) return false;
    bool areAlike = true;
    for (size_t i = 0; i < kUnits; ++i) {
      const char32_t unit = unitAt(place + 2 * i);
      if ((unit & 0xFFU) != 0 || unit == 0 || unit >= 0x8000) return false;
      areAlike = areAlike && unit == unitAt(place);
    }
    return !areAlike;
  }

  string_view bytes_;
  InkEncoding encoding_;
};

// The value of "encoding" in the declaration at the start of the text: its place and its length.
struct DeclaredName {
  size_t begin = 0;
  size_t length = 0;
};

DeclaredName declaredNameIn(string_view text) {
  constexpr size_t kLongest = 400;
  const size_t start = text.substr(0, kLongest).find("<?xml");
  if (start == text.npos) return {};
  const string_view upToEnd = text.substr(0, std::min(text.find("?>", start), start + kLongest));
  const size_t attribute = upToEnd.find("encoding", start);
  if (attribute == upToEnd.npos) return {};
  const size_t quote = upToEnd.find_first_of("\"'", attribute);
  if (quote == upToEnd.npos) return {};
  const size_t end = upToEnd.find(upToEnd[quote], quote + 1);
  if (end == upToEnd.npos) return {};
  return {quote + 1, end - quote - 1};
}

std::optional<InkEncoding> declaredEncoding(string_view document) {
  const DeclaredName place = declaredNameIn(document);
  const std::string name = Orvo::meaningOf(document.substr(place.begin, place.length));
  for (const char* latin1 : {"iso-8859-1", "iso8859-1", "iso_8859-1", "latin1", "latin-1"})
    if (name == latin1) return InkEncoding::latin1;
  if (name == "windows-1252" || name == "cp1252") return InkEncoding::windows1252;
  return std::nullopt;
}

// Nearly every second byte of an ink document in UTF-16 is zero; damage zeroes both alike. A byte
// that is missing turns the order round from there on, so the first part that shows it counts.
std::optional<InkEncoding> utf16Of(string_view document) {
  constexpr size_t kPartSize = 64;
  size_t parts = 0;
  size_t found = 0;
  std::optional<InkEncoding> first;
  for (size_t begin = 0; begin < document.size(); begin += kPartSize, ++parts) {
    const string_view part = document.substr(begin, kPartSize);
    std::array<size_t, 2> zeros{};
    for (size_t i = 0; i < part.size(); ++i)
      if (part[i] == '\0') ++zeros[i % 2];
    const auto [fewer, more] = std::minmax(zeros[0], zeros[1]);
    if (more < part.size() / 4 || fewer > more / 4 || more == 0) continue;
    const bool isLittle = zeros[1] > zeros[0];
    ++found;
    if (!first) first = isLittle ? InkEncoding::utf16LittleEndian : InkEncoding::utf16BigEndian;
  }
  return found > parts / 2 ? first : std::nullopt;
}

}  // namespace

bool isUtf16(InkEncoding encoding) {
  return encoding == InkEncoding::utf16LittleEndian || encoding == InkEncoding::utf16BigEndian;
}

string_view nameOf(InkEncoding encoding) {
  if (isUtf16(encoding)) return "UTF-16";
  return encoding == InkEncoding::latin1 ? "Latin-1" : "Windows-1252";
}

std::optional<InkEncoding> encodingOf(string_view document) {
  if (const auto utf16 = utf16Of(document)) return utf16;
  const bool isAscii = std::all_of(document.begin(), document.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  return isAscii ? std::nullopt : declaredEncoding(document);
}

Utf8Copy::Utf8Copy(string_view document, InkEncoding encoding)
    : document_(document), encoding_(encoding) {
  const Decoder decoder(document, encoding);
  for (size_t place = 0; place < document.size();) {
    const Character character = decoder.at(place);
    if (place > 0 || character.code != kByteOrderMark) text::appendUtf8(text_, character.code);
    place += character.length;
  }
  declareUtf8();
}

void Utf8Copy::declareUtf8() {
  constexpr string_view kUtf8 = "UTF-8";
  const DeclaredName name = declaredNameIn(text_);
  if (name.length < kUtf8.size()) return;
  text_.replace(name.begin, name.length, kUtf8);
  changedAt_ = name.begin + kUtf8.size();
  shortened_ = name.length - kUtf8.size();
}

void Utf8Copy::toPlaces(std::vector<size_t*> offsets) const {
  std::sort(offsets.begin(), offsets.end(),
            [](const size_t* a, const size_t* b) { return *a < *b; });
  const Decoder decoder(document_, encoding_);
  size_t place = 0;
  size_t offset = 0;
  std::string character;
  for (size_t* const wanted : offsets) {
    const size_t unchanged = *wanted < changedAt_ ? *wanted : *wanted + shortened_;
    while (place < document_.size() && offset < unchanged) {
      const Character next = decoder.at(place);
      character.clear();
      if (place > 0 || next.code != kByteOrderMark) text::appendUtf8(character, next.code);
      offset += character.size();
      place += next.length;
    }
    *wanted = place;
  }
}

}  // namespace rescue
