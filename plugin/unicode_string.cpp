#include "plugin/unicode_string.h"

#include "hostapi/ai_unicode_string_suite.h"
#include "plugin/error.h"
#include "plugin/suites.h"

using namespace hostapi;

namespace ai {

namespace {

using Suite = AIUnicodeStringSuite;

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

// Appends one code point as the units of a text of 16-bit units, or whole.
template <class Text>
void appendCodePoint(Text& text, char32_t character, bool asUtf16) {
  using Unit = typename Text::value_type;
  if (!asUtf16 || character < 0x10000) {
    text += static_cast<Unit>(character);
    return;
  }
  text += static_cast<Unit>(0xD800 + ((character - 0x10000) >> 10));
  text += static_cast<Unit>(0xDC00 + ((character - 0x10000) & 0x3FF));
}

}  // namespace

UnicodeString::UnicodeString(std::string_view text) {
  throwIfFailed(call(&Suite::Initialize, &body_, text.data(),
                     static_cast<std::int64_t>(text.size()), kAIPlatformCharacterEncoding));
}

UnicodeString::UnicodeString(std::u16string_view text) {
  throwIfFailed(call(&Suite::InitializeUTF16, &body_, text.data(), text.size()));
}

UnicodeString::UnicodeString(const UnicodeString& other) {
  throwIfFailed(call(&Suite::Copy, &body_, &other.body_));
}

UnicodeString& UnicodeString::operator=(const UnicodeString& other) {
  if (this != &other) throwIfFailed(call(&Suite::Assign, &body_, &other.body_));
  return *this;
}

UnicodeString::~UnicodeString() {
  if (body_.inside != nullptr) call(&Suite::Destroy, &body_);
}

UnicodeString UnicodeString::fromWide(std::wstring_view text) {
  std::u16string units;
  units.reserve(text.size());
  for (const wchar_t character : text) {
    appendCodePoint(units, static_cast<char32_t>(character), true);
  }
  return UnicodeString(units);
}

UnicodeString& UnicodeString::append(const UnicodeString& other) {
  throwIfFailed(call(&Suite::Append, &body_, &other.body_));
  return *this;
}

std::int32_t UnicodeString::compare(const UnicodeString& other) const {
  return call(&Suite::Compare, &body_, std::size_t{0}, kNpos, &other.body_, std::size_t{0}, kNpos);
}

std::wstring UnicodeString::toWide() const {
  std::wstring text;
  for (std::size_t index = 0;; ++index) {
    UTF32TextChar character = 0;
    const AIErr code = call(&Suite::GetChar, &body_, index, &character);
    if (code == kStringIndexErr) return text;
    throwIfFailed(code);
    appendCodePoint(text, static_cast<char32_t>(character), kWideIsUtf16);
  }
}

}  // namespace ai
