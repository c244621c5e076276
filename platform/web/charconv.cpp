// The conversions that platform/web/include/charconv declares. The shortest digits are found by the
// library fmt; the C library reads, which rounds correctly, too.
#include <charconv>

#define FMT_HEADER_ONLY
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fmt/format.h>
#include <string>
#include <string_view>

namespace {

std::to_chars_result put(char* first, char* last, std::string_view text) {
  if (static_cast<std::size_t>(last - first) < text.size()) {
    return {last, std::errc::value_too_large};
  }
  std::memcpy(first, text.data(), text.size());
  return {first + text.size(), std::errc()};
}

// ---- the shortest form ----

// The value is 0.DIGITS times 10 to the power of `point`; the digits neither begin nor end with 0.
struct Decimal {
  std::string digits;
  int point = 0;
};

Decimal decimalOf(std::string_view text) {
  Decimal decimal;
  bool behindPoint = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == 'e') {
      decimal.point += std::atoi(text.data() + i + 1);
      break;
    }
    if (text[i] == '.') {
      behindPoint = true;
      continue;
    }
    if (!behindPoint) ++decimal.point;
    decimal.digits += text[i];
  }
  const std::size_t zeros = decimal.digits.find_first_not_of('0');
  decimal.digits.erase(0, zeros);
  decimal.point -= static_cast<int>(zeros);
  decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
  return decimal;
}

std::string scientificForm(const Decimal& decimal) {
  const int exponent = decimal.point - 1;
  std::string text = decimal.digits.substr(0, 1);
  if (decimal.digits.size() > 1) text += '.' + decimal.digits.substr(1);
  text += exponent < 0 ? "e-" : "e+";
  const std::string size = std::to_string(std::abs(exponent));
  return text + (size.size() < 2 ? "0" : "") + size;
}

// Whole numbers are written out exactly, also where fewer digits would tell them apart.
std::string fixedForm(const Decimal& decimal, double value) {
  const int count = static_cast<int>(decimal.digits.size());
  if (decimal.point >= count) return fmt::format("{:.0f}", value);
  if (decimal.point <= 0) {
    return "0." + std::string(static_cast<std::size_t>(-decimal.point), '0') + decimal.digits;
  }
  const auto whole = static_cast<std::size_t>(decimal.point);
  return decimal.digits.substr(0, whole) + '.' + decimal.digits.substr(whole);
}

// The number of characters, which the exact digits of a whole number do not change.
std::size_t fixedSize(const Decimal& decimal) {
  const auto count = static_cast<int>(decimal.digits.size());
  if (decimal.point >= count) return static_cast<std::size_t>(decimal.point);
  return static_cast<std::size_t>(decimal.point > 0 ? count + 1 : count + 2 - decimal.point);
}

template <class Number>
std::to_chars_result putShortest(char* first, char* last, Number value) {
  std::string text = std::signbit(value) ? "-" : "";
  const Number size = std::abs(value);
  if (std::isnan(value)) {
    text += "nan";
  } else if (std::isinf(value)) {
    text += "inf";
  } else if (size == 0) {
    text += '0';
  } else {
    const Decimal decimal = decimalOf(fmt::format("{}", size));
    const std::string scientific = scientificForm(decimal);
    text += fixedSize(decimal) <= scientific.size() ? fixedForm(decimal, size) : scientific;
  }
  return put(first, last, text);
}

// ---- a form with a precision ----

std::to_chars_result putPrecise(char* first, char* last, double value, std::chars_format format,
                                int precision) {
  const char* const form = format == std::chars_format::fixed        ? "%.*f"
                           : format == std::chars_format::scientific ? "%.*e"
                                                                     : "%.*g";
  char text[512];  // more than the longest double at the precisions that are asked for
  const int size = std::snprintf(text, sizeof text, form, precision, value);
  return put(first, last, std::string_view(text, static_cast<std::size_t>(size)));
}

// ---- reading ----

bool isDigit(char one) {
  return one >= '0' && one <= '9';
}

const char* behindDigits(const char* at, const char* last) {
  while (at != last && isDigit(*at))
    ++at;
  return at;
}

// Whether `word`, in small letters, begins at `at`.
bool begins(const char* at, const char* last, std::string_view word) {
  if (static_cast<std::size_t>(last - at) < word.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i)
    if ((at[i] | 0x20) != word[i]) return false;
  return true;
}

// Behind "inf", "infinity", "nan" or "nan(LETTERS)"; otherwise `at` itself.
const char* behindWord(const char* at, const char* last) {
  if (begins(at, last, "infinity")) return at + 8;
  if (begins(at, last, "inf")) return at + 3;
  if (!begins(at, last, "nan")) return at;
  const char* close = at + 3;
  if (close == last || *close != '(') return at + 3;
  do
    ++close;
  while (close != last && (std::isalnum(static_cast<unsigned char>(*close)) || *close == '_'));
  return close != last && *close == ')' ? close + 1 : at + 3;
}

// Behind the number that begins at `at`; `at` itself where there is none.
const char* behindNumber(const char* at, const char* last) {
  const char* const whole = behindDigits(at, last);
  const char* end = whole;
  std::ptrdiff_t digits = whole - at;
  if (whole != last && *whole == '.') {
    end = behindDigits(whole + 1, last);
    digits += end - whole - 1;
  }
  if (digits == 0) return behindWord(at, last);
  if (end == last || (*end | 0x20) != 'e') return end;
  const char* exponent = end + 1;
  if (exponent != last && (*exponent == '+' || *exponent == '-')) ++exponent;
  const char* const behind = behindDigits(exponent, last);
  return behind == exponent ? end : behind;
}

bool hasDigitsBesidesZero(std::string_view text) {
  return text.substr(0, text.find_first_of("eE")).find_first_of("123456789") != text.npos;
}

double read(const char* text, double) {
  return std::strtod(text, nullptr);
}
float read(const char* text, float) {
  return std::strtof(text, nullptr);
}

template <class Number>
std::from_chars_result takeNumber(const char* first, const char* last, Number& value) {
  const char* const start = first != last && *first == '-' ? first + 1 : first;
  const char* const end = behindNumber(start, last);
  if (end == start) return {first, std::errc::invalid_argument};
  const std::string text(start, end);
  const Number found = read(text.c_str(), Number());
  const bool isNumber = isDigit(*start) || *start == '.';
  if (isNumber && (std::isinf(found) || (found == 0 && hasDigitsBesidesZero(text)))) {
    return {end, std::errc::result_out_of_range};
  }
  value = start == first ? found : -found;
  return {end, std::errc()};
}

}  // namespace

namespace std {

to_chars_result to_chars(char* first, char* last, float value) {
  return putShortest(first, last, value);
}
to_chars_result to_chars(char* first, char* last, double value) {
  return putShortest(first, last, value);
}

to_chars_result to_chars(char* first, char* last, float value, chars_format format, int precision) {
  return putPrecise(first, last, static_cast<double>(value), format, precision);
}
to_chars_result to_chars(char* first, char* last, double value, chars_format format,
                         int precision) {
  return putPrecise(first, last, value, format, precision);
}

from_chars_result from_chars(const char* first, const char* last, float& value) {
  return takeNumber(first, last, value);
}
from_chars_result from_chars(const char* first, const char* last, double& value) {
  return takeNumber(first, last, value);
}

}  // namespace std
