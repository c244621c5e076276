// A streaming writer of JSON, which appends to a string.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace art {

/// Appends JSON to a string. Between `begin...` and `end...` values (in objects: a key, then its
/// value) follow one another; commas and colons are written as needed. There are no
/// spaces, and no line ends except by `newline`. The order of calls is not checked.
class JsonWriter {
 public:
  /// `out` must outlive the writer.
  explicit JsonWriter(std::string& out) : out_(out) {}

  JsonWriter& beginObject() { return open('{'); }
  JsonWriter& endObject() { return close('}'); }
  JsonWriter& beginArray() { return open('['); }
  JsonWriter& endArray() { return close(']'); }
  JsonWriter& key(std::string_view name);

  /// The shortest decimal that reads back as the same number; null for what is not finite.
  JsonWriter& value(float number);
  JsonWriter& value(double number);
  /// Control characters, marks of direction, quotation marks and backslashes are escaped; each byte
  /// that is not part of UTF-8 text becomes U+FFFD.
  JsonWriter& value(std::string_view text);
  JsonWriter& value(const char* text) { return value(std::string_view(text)); }
  JsonWriter& value(const std::string& text) { return value(std::string_view(text)); }
  JsonWriter& value(std::same_as<bool> auto flag) { return literal(flag ? "true" : "false"); }
  template <std::integral Integer>
  requires(!std::same_as<Integer, bool> &&
           !std::same_as<Integer, char>) JsonWriter& value(Integer number) {
    if constexpr (std::is_signed_v<Integer>) {
      return integer(static_cast<std::int64_t>(number));
    } else {
      return natural(static_cast<std::uint64_t>(number));
    }
  }
  JsonWriter& null() { return literal("null"); }

  /// A key and its value.
  template <class Value>
  JsonWriter& member(std::string_view name, const Value& thing) {
    return key(name).value(thing);
  }

  /// A key and a text, or null where it is empty.
  JsonWriter& textOrNull(std::string_view name, std::string_view text) {
    return text.empty() ? key(name).null() : member(name, text);
  }

  /// Puts a line end before the next value, after its comma, or before the next end.
  JsonWriter& newline();

 private:
  JsonWriter& open(char bracket);
  JsonWriter& close(char bracket);
  JsonWriter& literal(std::string_view text);
  JsonWriter& integer(std::int64_t number);
  JsonWriter& natural(std::uint64_t number);
  void separate();

  std::string& out_;
  std::vector<bool> commaDue_{false};
  bool afterKey_ = false;
  bool newlineDue_ = false;
};

/// `text` in quotation marks, as JSON.
std::string jsonText(std::string_view text);

}  // namespace art
