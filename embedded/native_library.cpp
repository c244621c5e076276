#include "embedded/native_library.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>

#include "embedded/native_container.h"

namespace embedded {

namespace {

constexpr std::string_view kBrushTool = "Adobe Calligraphic Brush Tool";
constexpr double kLargestBrush = 1296;  // points; the host's own bound

struct Token {
  enum class Kind { word, string, mark } kind;
  std::string_view text;  // of a string: between its parentheses, escapes and all
};

bool isBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

/// The native text as words, strings in parentheses, and "%AI..." marks. "%_" at the start of a
/// line only hides the line from other readers; every other comment is left out.
class Tokens {
 public:
  explicit Tokens(std::string_view text) : text_(text) {
    while (at_ < text_.size())
      readOne();
  }

  std::vector<Token> take() { return std::move(tokens_); }

 private:
  void readOne() {
    const char character = text_[at_];
    if (isBlank(character)) {
      ++at_;
    } else if (character == '%') {
      readComment();
    } else if (character == '(') {
      readString();
    } else {
      const std::size_t end = std::min(text_.find_first_of(" \t\r\n(", at_), text_.size());
      add(Token::Kind::word, at_, end);
      at_ = end;
    }
  }

  void readComment() {
    if (text_.substr(at_, 2) == "%_") {
      at_ += 2;
      return;
    }
    const std::size_t end = std::min(text_.find_first_of("\r\n", at_), text_.size());
    if (text_.substr(at_, 3) == "%AI") add(Token::Kind::mark, at_, end);
    at_ = end;
  }

  void readString() {
    std::size_t depth = 0;
    std::size_t end = at_;
    for (; end < text_.size(); ++end) {
      if (text_[end] == '\\') {
        ++end;
      } else if (text_[end] == '(') {
        ++depth;
      } else if (text_[end] == ')' && --depth == 0) {
        break;
      }
    }
    end = std::min(end, text_.size());
    add(Token::Kind::string, at_ + 1, end);
    at_ = std::min(end + 1, text_.size());
  }

  void add(Token::Kind kind, std::size_t from, std::size_t to) {
    tokens_.push_back({kind, text_.substr(std::min(from, to), to - std::min(from, to))});
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::vector<Token> tokens_;
};

std::vector<Token> tokensOf(std::string_view text) {
  return Tokens(text).take();
}

using TokenRange = std::span<const Token>;

std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    plain += text[i];
  }
  return plain;
}

std::optional<double> number(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

bool isWord(const Token& token, std::string_view text) {
  return token.kind == Token::Kind::word && token.text == text;
}

bool isMark(const Token& token, std::string_view text) {
  return token.kind == Token::Kind::mark && token.text.starts_with(text);
}

bool isString(const Token& token, std::string_view text) {
  return token.kind == Token::Kind::string && token.text == text;
}

/// The tokens between two marks, or none.
TokenRange between(TokenRange tokens, std::string_view begin, std::string_view end) {
  const auto first = std::ranges::find_if(tokens, [&](const Token& t) { return isMark(t, begin); });
  const auto last =
      std::find_if(first, tokens.end(), [&](const Token& t) { return isMark(t, end); });
  if (first == tokens.end() || last == tokens.end()) return {};
  return {first + 1, last};
}

/// The tokens that "NAME :" opens at `at`, up to the ';' that closes them; nothing when none does.
std::optional<TokenRange> block(TokenRange tokens, std::size_t at) {
  std::size_t depth = 0;
  for (std::size_t i = at + 1; i < tokens.size(); ++i) {
    if (isWord(tokens[i], ":")) ++depth;
    if (isWord(tokens[i], ";") && --depth == 0) return tokens.subspan(at + 2, i - at - 2);
  }
  return {};
}

/// The first block of a name.
TokenRange findBlock(TokenRange tokens, std::string_view name) {
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    if (isWord(tokens[i], name) && isWord(tokens[i + 1], ":")) {
      return block(tokens, i).value_or(TokenRange());
    }
  }
  return {};
}

art::BrushDriver driverOf(double code) {
  const bool known = code >= 0 && code <= 6 && code == std::floor(code);
  return known ? static_cast<art::BrushDriver>(static_cast<int>(code)) : art::BrushDriver::fixed;
}

art::BrushValue fromRange(double least, double most, double driver) {
  return {.value = (least + most) / 2, .variation = (most - least) / 2, .driver = driverOf(driver)};
}

bool isSensible(const art::CalligraphicBrush& brush) {
  return brush.size.lightest() >= 0 && brush.size.heaviest() > 0 &&
         brush.size.heaviest() <= kLargestBrush && brush.size.variation >= 0 &&
         brush.roundness.lightest() >= 0 && brush.roundness.heaviest() <= 100 &&
         brush.roundness.variation >= 0;
}

/// "1 dMin dMax rMin rMax aMin aMax dDriver rDriver aDriver x", as a plug-in object keeps it.
std::optional<art::CalligraphicBrush> brushOf(const std::string& name,
                                              std::string_view definition) {
  std::vector<double> values;
  for (const Token& token : tokensOf(definition)) {
    if (const auto value = number(token.text)) values.push_back(*value);
  }
  if (values.size() < 10) return {};
  art::CalligraphicBrush brush;
  brush.name = name;
  brush.size = fromRange(values[1], values[2], values[7]);
  brush.roundness = fromRange(values[3], values[4], values[8]);
  brush.angle = fromRange(values[5], values[6], values[9]);
  return brush;
}

using Brushes = std::map<std::string, art::CalligraphicBrush>;

/// Every calligraphic brush by its name. Long texts are split: the pieces end "-", the last one
/// ".".
Brushes readBrushes(TokenRange tokens) {
  Brushes brushes;
  for (std::size_t i = 0; i + 3 < tokens.size(); ++i) {
    if (!isMark(tokens[i], "%AI8_BeginPluginObject") || !isString(tokens[i + 1], kBrushTool))
      continue;
    const std::string name = unescaped(tokens[i + 2].text);
    std::string definition;
    for (i += 3; i < tokens.size() && tokens[i].kind != Token::Kind::mark; ++i) {
      if (tokens[i].kind == Token::Kind::string) definition += unescaped(tokens[i].text);
    }
    if (const auto brush = brushOf(name, definition)) brushes[name] = *brush;
  }
  return brushes;
}

/// The value stored as "VALUE TYPE (KEY) ,".
std::optional<double> storedValue(TokenRange tokens, std::string_view key) {
  for (std::size_t i = 2; i < tokens.size(); ++i) {
    if (isString(tokens[i], key)) return number(tokens[i - 2].text);
  }
  return {};
}

/// What the style itself says of one value goes before what its brush says.
void overrideValue(TokenRange tokens, const std::string& key, art::BrushValue& value) {
  if (const auto stored = storedValue(tokens, key)) value.value = *stored;
  if (const auto stored = storedValue(tokens, key + "Variation")) value.variation = *stored;
  if (const auto stored = storedValue(tokens, key + "DependsOn")) value.driver = driverOf(*stored);
}

/// Cyan, magenta, yellow and black as the host shows them without colour management.
art::Color fromCmyk(double c, double m, double y, double k) {
  const auto light = [k](double ink) { return std::clamp((1 - ink) * (1 - k), 0.0, 1.0); };
  return {light(c), light(m), light(y)};
}

/// Weight and colour out of the paint operators of a stroke.
void readStroke(TokenRange tokens, art::Style& style) {
  std::array<double, 4> last{};
  for (const Token& token : tokens) {
    if (const auto value = number(token.text)) {
      std::shift_left(last.begin(), last.end(), 1);
      last[3] = *value;
    } else if (isWord(token, "w")) {
      if (last[3] >= 0 && last[3] <= 1000) style.strokeWeight = last[3];
    } else if (isWord(token, "K")) {
      style.strokeColor = fromCmyk(last[0], last[1], last[2], last[3]);
    } else if (isWord(token, "XA")) {
      style.strokeColor = {last[1], last[2], last[3]};
    } else if (isWord(token, "G")) {
      style.strokeColor = {last[3], last[3], last[3]};
    }
  }
}

/// The name of the brush in "/GObjRef : (NAME) (TOOL) /PluginObject ; (Brush) ,".
std::string brushName(TokenRange tokens) {
  const TokenRange reference = findBlock(tokens, "/GObjRef");
  if (reference.size() < 2 || !isString(reference[1], kBrushTool)) return {};
  return unescaped(reference[0].text);
}

/// The filter of a style that is a calligraphic brush, or nothing.
TokenRange brushFilter(TokenRange style) {
  for (std::size_t i = 0; i + 2 < style.size(); ++i) {
    if (!isWord(style[i], "/BasicFilter") || !isWord(style[i + 1], ":")) continue;
    const std::optional<TokenRange> filter = block(style, i);
    if (!filter) break;
    if (!filter->empty() && isString((*filter)[0], kBrushTool)) return *filter;
  }
  return {};
}

std::optional<art::Style> readStyle(TokenRange tokens, const Brushes& brushes) {
  if (tokens.empty() || tokens[0].kind != Token::Kind::string) return {};
  art::Style style;
  style.name = unescaped(tokens[0].text);
  const TokenRange filter = brushFilter(tokens);
  if (filter.empty()) return style;

  readStroke(findBlock(filter, "/StrokeStyle"), style);
  art::CalligraphicBrush brush;
  const auto named = brushes.find(brushName(filter));
  if (named != brushes.end()) brush = named->second;
  overrideValue(filter, "Diameter", brush.size);
  overrideValue(filter, "Roundness", brush.roundness);
  overrideValue(filter, "Angle", brush.angle);
  if (isSensible(brush)) style.brush = brush;
  return style;
}

std::vector<art::Style> readStyles(TokenRange tokens, const Brushes& brushes) {
  std::vector<art::Style> styles;
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    if (!isWord(tokens[i], "/KnownStyle") || !isWord(tokens[i + 1], ":")) continue;
    const std::optional<TokenRange> body = block(tokens, i);
    if (!body) break;
    if (auto style = readStyle(*body, brushes)) styles.push_back(std::move(*style));
    i += body->size();
  }
  return styles;
}

/// The host finds only the styles of its list by name.
std::vector<art::Style> listed(const std::vector<art::Style>& styles, TokenRange list) {
  std::vector<art::Style> found;
  for (const Token& token : list) {
    const std::string name = unescaped(token.text);
    const auto style = std::ranges::find(styles, name, &art::Style::name);
    if (token.kind == Token::Kind::string && style != styles.end()) found.push_back(*style);
  }
  return found;
}

}  // namespace

NativeLibrary readNativeLibrary(std::span<const unsigned char> bytes) {
  const NativeText native = unwrapNative(bytes);
  if (!native.problem.empty()) return {{}, native.problem};
  const std::vector<Token> all = tokensOf(native.text);
  const std::vector<art::Style> styles =
      readStyles(between(all, "%AI9_BeginArtStyles", "%AI9_EndArtStyles"), readBrushes(all));
  const std::vector<art::Style> found =
      listed(styles, between(all, "%AI9_BeginArtStyleList", "%AI9_EndArtStyleList"));
  if (found.empty()) return {{}, "it lists no graphic styles"};
  return {found, {}};
}

}  // namespace embedded
