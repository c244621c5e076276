#include "stylelib/native_library.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <string_view>

#include "stylelib/library_parts.h"
#include "stylelib/limits.h"
#include "stylelib/native_container.h"
#include "stylelib/tokens.h"

namespace stylelib {

namespace {

constexpr double kLargestBrush = 1296;  // points; the host's own limit

/// Nothing when the token is not a finite number.
std::optional<double> number(const Token& token) {
  if (token.kind != Token::Kind::word) return {};
  const std::string_view text = token.text;
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
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
         brush.roundness.variation >= 0 && std::isfinite(brush.angle.lightest()) &&
         std::isfinite(brush.angle.heaviest());
}

/// "1 dMin dMax rMin rMax aMin aMax dDriver rDriver aDriver x", as a plug-in object keeps it.
std::optional<art::CalligraphicBrush> brushOf(std::string_view definition) {
  std::vector<double> values;
  for (const Token& token : tokensOf(definition)) {
    if (const auto value = number(token)) values.push_back(*value);
  }
  if (values.size() < 10) return {};
  art::CalligraphicBrush brush;
  brush.size = fromRange(values[1], values[2], values[7]);
  brush.roundness = fromRange(values[3], values[4], values[8]);
  brush.angle = fromRange(values[5], values[6], values[9]);
  return brush;
}

/// The calligraphic brushes by name; the brushes themselves do not repeat it.
using Brushes = std::map<std::string, art::CalligraphicBrush>;

/// Reads each "(NAME) (DEFINITION)". Long definitions are split: each piece ends with "-", the last
/// one with ".".
Brushes readBrushes(const std::vector<std::string_view>& texts) {
  Brushes brushes;
  for (const std::string_view text : texts) {
    TokenReader reader(text);
    const std::optional<Token> name = reader.next();
    if (!name || name->kind != Token::Kind::string) continue;
    std::string definition;
    while (const std::optional<Token> token = reader.next()) {
      if (token->kind == Token::Kind::string) definition += unescaped(token->text);
    }
    if (const auto brush = brushOf(definition)) brushes[unescaped(name->text)] = *brush;
  }
  return brushes;
}

/// The value stored as "VALUE TYPE (KEY) ,".
std::optional<double> storedValue(TokenRange tokens, std::string_view key) {
  for (std::size_t i = 2; i < tokens.size(); ++i) {
    if (tokens[i].isString(key)) return number(tokens[i - 2]);
  }
  return {};
}

/// A value that the style itself gives takes precedence over the one in its brush.
void overrideValue(TokenRange tokens, const std::string& key, art::BrushValue& value) {
  if (const auto stored = storedValue(tokens, key)) value.value = *stored;
  if (const auto stored = storedValue(tokens, key + "Variation")) value.variation = *stored;
  if (const auto stored = storedValue(tokens, key + "DependsOn")) value.driver = driverOf(*stored);
}

/// Cyan, magenta, yellow and black as the host shows them without colour management.
art::Color fromCmyk(double c, double m, double y, double k) {
  const auto light = [k](double ink) { return (1 - ink) * (1 - k); };
  return {light(c), light(m), light(y)};
}

/// The components of a colour are from 0 to 1, whatever a file says.
art::Color clamped(const art::Color& color) {
  const auto part = [](double value) { return std::clamp(value, 0.0, 1.0); };
  return {part(color.red), part(color.green), part(color.blue)};
}

/// Reads weight and colour from the paint operators of a stroke.
void readStroke(TokenRange tokens, art::Style& style) {
  std::array<double, 4> last{};
  for (const Token& token : tokens) {
    if (const auto value = number(token)) {
      std::shift_left(last.begin(), last.end(), 1);
      last[3] = *value;
    } else if (token.isWord("w")) {
      if (last[3] >= 0 && last[3] <= 1000) style.strokeWeight = last[3];
    } else if (token.isWord("K")) {
      style.strokeColor = clamped(fromCmyk(last[0], last[1], last[2], last[3]));
    } else if (token.isWord("XA")) {
      style.strokeColor = clamped({last[1], last[2], last[3]});
    } else if (token.isWord("G")) {
      style.strokeColor = clamped({last[3], last[3], last[3]});
    }
  }
}

/// The name of the brush in "/GObjRef : (NAME) (TOOL) /PluginObject ; (Brush) ,".
std::string brushName(TokenRange tokens) {
  const TokenRange reference = findBlock(tokens, "/GObjRef");
  if (reference.size() < 2 || !reference[1].isString(kBrushTool)) return {};
  return unescaped(reference[0].text);
}

/// The filter of a style that is a calligraphic brush, or nothing.
TokenRange brushFilter(TokenRange style) {
  for (std::size_t i = 0; i + 2 < style.size(); ++i) {
    if (!style[i].isWord("/BasicFilter") || !style[i + 1].isWord(":")) continue;
    const std::optional<TokenRange> filter = blockAt(style, i);
    if (!filter) break;
    if (!filter->empty() && (*filter)[0].isString(kBrushTool)) return *filter;
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
  if (const auto named = brushes.find(brushName(filter)); named != brushes.end()) {
    brush = named->second;
    brush.name = named->first;
  }
  overrideValue(filter, "Diameter", brush.size);
  overrideValue(filter, "Roundness", brush.roundness);
  overrideValue(filter, "Angle", brush.angle);
  if (isSensible(brush)) style.brush = brush;
  return style;
}

std::vector<art::Style> readStyles(TokenRange tokens, const Brushes& brushes) {
  std::vector<art::Style> styles;
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    if (!tokens[i].isWord("/KnownStyle") || !tokens[i + 1].isWord(":")) continue;
    const std::optional<TokenRange> body = blockAt(tokens, i);
    if (!body) break;
    if (auto style = readStyle(*body, brushes)) styles.push_back(std::move(*style));
    i += body->size();
  }
  return styles;
}

/// The host finds only listed styles by name. Each is given once, at the place where its name is
/// first listed.
std::vector<art::Style> listed(std::vector<art::Style>&& styles, TokenRange list) {
  std::map<std::string, art::Style> byName;
  for (art::Style& style : styles) {
    std::string name = style.name;
    byName.try_emplace(std::move(name), std::move(style));
  }
  std::vector<art::Style> found;
  for (const Token& token : list) {
    if (token.kind != Token::Kind::string) continue;
    auto style = byName.extract(unescaped(token.text));
    if (!style.empty()) found.push_back(std::move(style.mapped()));
  }
  return found;
}

NativeLibrary refuse(const char* problem) {
  return {{}, problem};
}

}  // namespace

NativeLibrary readNativeLibrary(std::span<const unsigned char> bytes) {
  const NativeText native = unwrapNative(bytes);
  if (!native.problem.empty()) return {{}, native.problem};
  const LibraryParts parts = findParts(native.text);
  if (parts.size() > kMostStyleText) {
    return refuse("its graphic styles and brushes take more than 1 MiB of text");
  }
  std::vector<Token> styles = tokensOf(parts.styles);
  if (!closeBlocks(styles))
    return refuse("its graphic styles are nested more than 100 levels deep");
  NativeLibrary library{
      listed(readStyles(styles, readBrushes(parts.brushes)), tokensOf(parts.list)), {}};
  if (library.styles.empty()) return refuse("it lists no graphic styles");
  return library;
}

}  // namespace stylelib
