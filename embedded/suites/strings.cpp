#include "embedded/suites/strings.h"

#include <algorithm>
#include <utility>

#include "embedded/suites/tables.h"
#include "embedded/text.h"
#include "hostapi/ai_unicode_string_suite.h"

namespace embedded {

using namespace hostapi;

std::optional<std::u32string_view> textOf(Call& call, const UnicodeStringBody& string) {
  if (string.inside == nullptr) return std::u32string_view();
  if (const HostString* inside = call.host.strings.find(string.inside)) return inside->text;
  call.misbehaves(call.host.strings.wasRemoved(string.inside)
                      ? "a destroyed string is used"
                      : "this is not a string of this host");
  return std::nullopt;
}

AIErr assign(Call& call, UnicodeStringBody& string, std::u32string text) {
  if (!textOf(call, string)) return call.badParameter();
  if (string.inside == nullptr) {
    string.inside = call.host.strings.add({std::move(text), {}});
  } else {
    call.host.strings.find(string.inside)->text = std::move(text);
  }
  return kNoErr;
}

namespace {

// The longest string of one repeated character, in code points.
constexpr std::size_t kLongestRepeat = 1U << 24U;

constexpr Function function(const char* name, Returns returns = Returns::code) {
  return {.suite = AIUnicodeStringSuite::kId, .name = name, .returns = returns, .written = false};
}

constexpr Function kInitialize = function("Initialize");
constexpr Function kInitializeUTF16 = function("InitializeUTF16");
constexpr Function kInitializeUTF32Char = function("InitializeUTF32Char");
constexpr Function kDestroy = function("Destroy");
constexpr Function kAppend = function("Append");
constexpr Function kAppendSubString = function("AppendSubString");
constexpr Function kAssign = function("Assign");
constexpr Function kCopy = function("Copy");
constexpr Function kGetChar = function("GetChar");
constexpr Function kClear = function("Clear", Returns::nothing);
constexpr Function kCompare = function("Compare", Returns::value);
constexpr Function kLength = function("Length", Returns::value);
constexpr Function kUTF16 = function("UTF_16", Returns::value);

std::optional<std::u32string> decodeUtf16Bytes(std::string_view bytes) {
  if (bytes.size() % sizeof(char16_t) != 0) return std::nullopt;
  std::u16string units(bytes.size() / sizeof(char16_t), u'\0');
  std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(units.data()));
  return decodeUtf16(units);
}

AIErr initializeFrom(Call& call, UnicodeStringBody& string, std::string_view bytes,
                     AICharacterEncoding encoding) {
  std::optional<std::u32string> text;
  switch (encoding) {
    case kAIPlatformCharacterEncoding:
      text = decodePlatform(bytes);
      break;
    case kAIUTF8CharacterEncoding:
      text = decodeUtf8(bytes);
      break;
    case kAIUTF16CharacterEncoding:
      text = decodeUtf16Bytes(bytes);
      break;
    default:
      return call.misbehaves("encoding " + std::to_string(encoding) + " is not supported");
  }
  if (!text) return kStringMalformedErr;
  return assign(call, string, std::move(*text));
}

AIErr initialize(UnicodeStringBody* string, const char* text, std::int64_t byteLength,
                 AICharacterEncoding encoding) {
  return answer(
      kInitialize,
      [&](Call& call) {
        call.required("string", string);
        if (byteLength != 0) call.required("text", text);
      },
      [&](Call& call) {
        if (byteLength < 0) return kStringLengthErr;
        const std::string_view bytes(text == nullptr ? "" : text,
                                     static_cast<std::size_t>(byteLength));
        return initializeFrom(call, *string, bytes, encoding);
      });
}

AIErr initializeUTF16(UnicodeStringBody* string, const ASUnicode* text, std::size_t count) {
  return answer(
      kInitializeUTF16,
      [&](Call& call) {
        call.required("string", string);
        if (count != 0) call.required("text", text);
      },
      [&](Call& call) {
        std::u16string_view units;
        if (count == kNpos) {
          units = text;
        } else if (count != 0) {
          units = std::u16string_view(text, count);
        }
        std::optional<std::u32string> decoded = decodeUtf16(units);
        return decoded ? assign(call, *string, std::move(*decoded)) : kStringMalformedErr;
      });
}

AIErr initializeUTF32Char(UnicodeStringBody* string, std::size_t count, UTF32TextChar character) {
  return answer(
      kInitializeUTF32Char, [&](Call& call) { call.required("string", string); },
      [&](Call& call) {
        if (count > kLongestRepeat) return kStringLengthErr;
        if (character > 0x10FFFF) return kStringMalformedErr;
        return assign(call, *string, std::u32string(count, static_cast<char32_t>(character)));
      });
}

AIErr destroy(UnicodeStringBody* string) {
  return answer(
      kDestroy, [&](Call& call) { call.required("string", string); },
      [&](Call& call) {
        if (!textOf(call, *string)) return call.badParameter();
        call.host.strings.remove(string->inside);
        string->inside = nullptr;
        return kNoErr;
      });
}

// Appends a part of `other`, which may start at its end but not beyond it.
AIErr appendPart(Call& call, UnicodeStringBody& string, const UnicodeStringBody& other,
                 std::size_t start, std::size_t count) {
  const auto text = textOf(call, string);
  const auto more = textOf(call, other);
  if (!text || !more) return call.badParameter();
  if (start > more->size()) return kStringIndexErr;
  return assign(call, string, std::u32string(*text).append(more->substr(start, count)));
}

AIErr append(UnicodeStringBody* string, const UnicodeStringBody* other) {
  return answer(
      kAppend,
      [&](Call& call) {
        call.required("string", string);
        call.required("other", other);
      },
      [&](Call& call) { return appendPart(call, *string, *other, 0, kNpos); });
}

AIErr appendSubString(UnicodeStringBody* string, const UnicodeStringBody* other, std::size_t start,
                      std::size_t count) {
  return answer(
      kAppendSubString,
      [&](Call& call) {
        call.required("string", string);
        call.required("other", other);
      },
      [&](Call& call) { return appendPart(call, *string, *other, start, count); });
}

// Copying a string that was never initialised gives one like it, unless there is text to replace.
AIErr copyInto(Call& call, UnicodeStringBody& destination, const UnicodeStringBody& source) {
  const auto text = textOf(call, source);
  if (!text) return call.badParameter();
  if (source.inside == nullptr && destination.inside == nullptr) return kNoErr;
  return assign(call, destination, std::u32string(*text));
}

AIErr assignString(UnicodeStringBody* string, const UnicodeStringBody* other) {
  return answer(
      kAssign,
      [&](Call& call) {
        call.required("string", string);
        call.required("other", other);
      },
      [&](Call& call) { return copyInto(call, *string, *other); });
}

AIErr copy(UnicodeStringBody* destination, const UnicodeStringBody* source) {
  return answer(
      kCopy,
      [&](Call& call) {
        call.required("destination", destination);
        call.required("source", source);
      },
      [&](Call& call) { return copyInto(call, *destination, *source); });
}

AIErr getChar(const UnicodeStringBody* string, std::size_t index, UTF32TextChar* character) {
  return answer(
      kGetChar,
      [&](Call& call) {
        call.required("string", string);
        call.required("character", character);
      },
      [&](Call& call) {
        const auto text = textOf(call, *string);
        if (!text) return call.badParameter();
        if (index >= text->size()) return kStringIndexErr;
        *character = (*text)[index];
        return kNoErr;
      });
}

void clear(UnicodeStringBody* string) {
  answer(
      kClear, [&](Call& call) { call.required("string", string); },
      [&](Call& call) {
        return string->inside == nullptr ? kNoErr : assign(call, *string, std::u32string());
      });
}

std::u32string_view partOf(std::u32string_view text, std::size_t start, std::size_t count) {
  return start >= text.size() ? std::u32string_view() : text.substr(start, count);
}

std::int32_t compare(const UnicodeStringBody* a, std::size_t position, std::size_t count,
                     const UnicodeStringBody* b, std::size_t start, std::size_t otherCount) {
  return answer(
      kCompare,
      [&](Call& call) {
        call.required("a", a);
        call.required("b", b);
      },
      [&](Call& call) -> std::int32_t {
        const auto left = textOf(call, *a);
        const auto right = textOf(call, *b);
        if (!left || !right) return call.badParameter();
        const int order = partOf(*left, position, count).compare(partOf(*right, start, otherCount));
        return order < 0 ? -1 : order > 0 ? 1 : 0;
      });
}

std::size_t length(const UnicodeStringBody* string) {
  std::size_t result = 0;
  answer(
      kLength, [&](Call& call) { call.required("string", string); },
      [&](Call& call) {
        result = textOf(call, *string).value_or(std::u32string_view()).size();
        return static_cast<std::int32_t>(result);
      });
  return result;
}

std::size_t utf16(const UnicodeStringBody* string, const ASUnicode** text) {
  std::size_t result = 0;
  answer(
      kUTF16,
      [&](Call& call) {
        call.required("string", string);
        call.required("text", text);
      },
      [&](Call& call) {
        *text = nullptr;
        const auto given = textOf(call, *string);
        if (!given || given->empty()) return 0;
        HostString& inside = *call.host.strings.find(string->inside);
        inside.units = encodeUtf16(*given);
        *text = inside.units.data();
        result = inside.units.size();
        return static_cast<std::int32_t>(result);
      });
  return result;
}

AIUnicodeStringSuite certainSlots() {
  auto table = tableOfMisuse<AIUnicodeStringSuite>();
  table.Initialize = initialize;
  table.InitializeUTF16 = initializeUTF16;
  table.InitializeUTF32Char = initializeUTF32Char;
  table.Destroy = destroy;
  table.Append = append;
  table.AppendSubString = appendSubString;
  table.Assign = assignString;
  table.Copy = copy;
  table.GetChar = getChar;
  table.Clear = clear;
  table.Compare = compare;
  return table;
}

}  // namespace

std::vector<ReservedSlot> unicodeStringSlots(UnicodeStringLayout layout) {
  std::vector<ReservedSlot> slots = slotsOf(certainSlots());
  const bool wide = layout == UnicodeStringLayout::slots38;
  slots[wide ? kLengthSlot38 : kLengthSlot36] = asSlot(static_cast<UnicodeStringLength>(length));
  slots[wide ? kUTF16Slot38 : kUTF16Slot36] = asSlot(static_cast<UnicodeStringUTF16>(utf16));
  return slots;
}

}  // namespace embedded
