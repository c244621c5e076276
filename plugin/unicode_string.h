// The host's Unicode string, owned.
#pragma once

#include <string>
#include <string_view>

#include "hostapi/types.h"

namespace ai {

/// Holds a single pointer, so that it can be passed to the host by address. What it points to
/// belongs to the host. Every operation but compare and the destructor throws ai::Error with the
/// host's code when it fails; a constructor that throws leaves nothing behind.
class UnicodeString {
 public:
  UnicodeString() = default;
  /// 8-bit text in the platform's encoding.
  explicit UnicodeString(std::string_view text);
  explicit UnicodeString(std::u16string_view text);
  UnicodeString(const UnicodeString& other);
  UnicodeString& operator=(const UnicodeString& other);
  ~UnicodeString();

  /// From the system's wide text: UTF-16 where wchar_t has 16 bits, code points elsewhere.
  static UnicodeString fromWide(std::wstring_view text);

  UnicodeString& append(const UnicodeString& other);

  /// Compares the whole of both strings: below 0, 0 or above 0.
  std::int32_t compare(const UnicodeString& other) const;

  /// The text as the system's wide text. It is read character by character because that is the only
  /// reading function whose slot is the same in every known layout of the suite.
  std::wstring toWide() const;

  hostapi::UnicodeStringBody* body() { return &body_; }
  const hostapi::UnicodeStringBody* body() const { return &body_; }

 private:
  hostapi::UnicodeStringBody body_;
};
static_assert(sizeof(UnicodeString) == hostapi::kPointerSize);

}  // namespace ai
