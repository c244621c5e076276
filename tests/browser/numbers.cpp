// Prints numbers in every form that the program writes, and what it reads of texts. The browser's
// build must print what the native one does, whose standard library has these conversions.
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace {

constexpr int kRandomNumbers = 100'000;

void print(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) std::abort();
}

template <class Number>
std::string shortest(Number value) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

template <class Number>
std::string precise(Number value, std::chars_format format, int precision) {
  char text[400];
  return {text, std::to_chars(text, text + sizeof text, value, format, precision).ptr};
}

template <class Number>
void write(Number value) {
  print(shortest(value));
  print(" ");
  print(precise(value, std::chars_format::general, 6));
  print(" ");
  print(precise(value, std::chars_format::general, 12));
  print("\n");
}

template <class Number>
void read(std::string_view text) {
  Number value = 7;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  print(text);
  print(" ");
  print(shortest(value));
  const bool isOutOfRange = error == std::errc::result_out_of_range;
  std::printf(" %d %s\n", static_cast<int>(end - text.data()),
              error == std::errc() ? "read"
              : isOutOfRange       ? "out of range"
                                   : "no number");
}

void readBoth(std::string_view text) {
  read<float>(text);
  read<double>(text);
}

template <class Number, class Bits>
void writeMany() {
  std::mt19937_64 random(20120531);
  for (int i = 0; i < kRandomNumbers; ++i)
    write(std::bit_cast<Number>(static_cast<Bits>(random())));
  // Those that occur in drawings, and those between which the form changes.
  for (int i = -3000; i <= 3000; ++i) {
    write(static_cast<Number>(i));
    write(static_cast<Number>(i) / 10);
    write(static_cast<Number>(i) / 1024);
    write(static_cast<Number>(i) * 1000);
  }
  using Limits = std::numeric_limits<Number>;
  for (int exponent = Limits::min_exponent10 - Limits::digits10; exponent <= Limits::max_exponent10;
       ++exponent) {
    for (const char* digits :
         {"1", "1.5", "9.99", "1.23456789", "9007199254740993", "12345678901234567"}) {
      const std::string text = digits + ("e" + std::to_string(exponent));
      Number value = 0;
      std::from_chars(text.data(), text.data() + text.size(), value);
      write(value);
      write(-value);
    }
  }
  for (const Number value :
       {Limits::max(), Limits::min(), Limits::denorm_min(), Limits::infinity(), -Limits::infinity(),
        Limits::quiet_NaN(), Number(0), -Number(0), Limits::epsilon()})
    write(value);
}

void readMany() {
  for (const char* text : {"",
                           "-",
                           "+1",
                           " 1",
                           ".",
                           "-.",
                           ".5",
                           "5.",
                           "5.e3",
                           "-.5e3x",
                           "1e",
                           "1e+",
                           "1e+x",
                           "1E5",
                           "1e+05",
                           "0x10",
                           "--1",
                           "1,5",
                           "1.2.3",
                           "inf",
                           "INF",
                           "-inf",
                           "infinity",
                           "infinit",
                           "nan",
                           "-nan",
                           "nan(",
                           "nan(a_1)",
                           "nan(a-1)",
                           "NaN()",
                           "in",
                           "1e400",
                           "-1e400",
                           "1e-400",
                           "1e39",
                           "-1e39",
                           "3.5e38",
                           "1e-46",
                           "1e-45",
                           "1e-310",
                           "4e-324",
                           "2e-324",
                           "1e99999999999999999999",
                           "1e-99999999999999999999",
                           "0e999999",
                           "-0",
                           "0.0000",
                           "000012",
                           "1e0000000000000000000005",
                           "9007199254740993",
                           "9007199254740992.99999999999999999999999999999999",
                           "0.1",
                           "16777217",
                           "16777217.0000000000000001",
                           "2.2250738585072011e-308",
                           "1.7976931348623158e308",
                           "1.7976931348623159e308",
                           "340282356779733661637539395458142568448"})
    readBoth(text);
  readBoth("0." + std::string(400, '0') + "1e401");
  readBoth(std::string(400, '9'));
  readBoth(std::string(30, '9') + "." + std::string(800, '9'));
  std::mt19937_64 random(7);
  for (int i = 0; i < kRandomNumbers / 10; ++i) {
    std::string text = std::to_string(random());
    text.insert(random() % (text.size() + 1), ".");
    text += "e" + std::to_string(static_cast<int>(random() % 700) - 350);
    readBoth(text);
  }
}

}  // namespace

int main() {
  writeMany<float, std::uint32_t>();
  writeMany<double, std::uint64_t>();
  readMany();
}
