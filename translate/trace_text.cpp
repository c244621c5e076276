#include "translate/trace_text.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace translate {
namespace {

constexpr bool isWhite(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Where a value that cannot be read ends: before anything that can begin another.
constexpr bool endsRubbish(char c) {
  return isWhite(c) || c == ',' || c == '!' || c == '\'' || c == '"' || c == '*' || c == '?';
}

class Scanner {
 public:
  explicit Scanner(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

  bool skipWhite() {
    while (at_ != end_ && isWhite(*at_))
      ++at_;
    return at_ != end_;
  }

  bool takeComma() {
    if (*at_ != ',') return false;
    ++at_;
    return true;
  }

  // The next value; there is one.
  Token takeToken() {
    Token token;
    if (*at_ == '!' || *at_ == '\'' || *at_ == '"') {
      token.prefix = *at_++;
      if (!skipWhite() || *at_ == ',') return unreadable(token);
    }
    switch (*at_) {
      case '*':
        return simple(token, Token::Kind::repeat, 0);
      case '?':
        return simple(token, Token::Kind::absent, 0);
      case 'T':
        return simple(token, Token::Kind::number, 1);
      case 'F':
        return simple(token, Token::Kind::number, 0);
      default:
        return takeNumber(token);
    }
  }

 private:
  Token simple(Token token, Token::Kind kind, double number) {
    ++at_;
    token.kind = kind;
    token.number = number;
    return token;
  }

  Token takeNumber(Token token) {
    bool isNegative = false;
    if (*at_ == '-' || *at_ == '+') {
      isNegative = *at_++ == '-';
      if (!skipWhite()) return unreadable(token);
    }
    const bool good = *at_ == '#' ? takeHexadecimal(token.number) : takeDecimal(token.number);
    if (!good) return unreadable(token);
    if (isNegative) token.number = -token.number;
    return token;
  }

  bool takeDecimal(double& number) {
    // Most values are short whole numbers.
    constexpr std::ptrdiff_t kExactDigits = 15;
    const char* digit = at_;
    std::int64_t whole = 0;
    while (digit != end_ && isDigit(*digit) && digit - at_ < kExactDigits)
      whole = 10 * whole + (*digit++ - '0');
    const bool isWhole =
        digit == end_ || !(isDigit(*digit) || *digit == '.' || *digit == 'e' || *digit == 'E');
    if (digit != at_ && isWhole) {
      at_ = digit;
      number = static_cast<double>(whole);
      return true;
    }
    // The library takes words such as "inf", too.
    if (at_ == end_ || !(isDigit(*at_) || (*at_ == '.' && at_ + 1 != end_ && isDigit(at_[1])))) {
      return false;
    }
    const auto [behind, error] = std::from_chars(at_, end_, number);
    if (error == std::errc::invalid_argument) return false;
    at_ = behind;
    if (error != std::errc()) number = 0;
    return error == std::errc();
  }

  bool takeHexadecimal(double& number) {
    const char* const digits = ++at_;
    if (at_ != end_ && (*at_ == '-' || *at_ == '+')) ++at_;
    std::uint64_t whole = 0;
    constexpr int kBase = 16;
    const auto [behind, error] = std::from_chars(at_, end_, whole, kBase);
    if (error == std::errc::invalid_argument) return false;
    at_ = behind;
    number = static_cast<double>(whole);
    if (*digits == '-') number = -number;
    return error == std::errc();
  }

  Token unreadable(Token token) {
    while (at_ != end_ && !endsRubbish(*at_))
      ++at_;
    token.kind = Token::Kind::unreadable;
    return token;
  }

  const char* at_;
  const char* end_;
};

}  // namespace

void TraceText::scan(std::string_view text, std::size_t regular, std::size_t all) {
  splitByCommas(text);
  if (const std::size_t exchanged = exchangedValues(regular); exchanged != 0) {
    regroup(exchanged);
  } else if (ends_.size() == 1 && regular > 1 && tokens_.size() > all &&
             tokens_.size() % regular == 0) {
    regroup(regular);
  }
}

std::span<const Token> TraceText::point(std::size_t index) const {
  const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
  return std::span(tokens_).subspan(begin, ends_[index] - begin);
}

void TraceText::splitByCommas(std::string_view text) {
  tokens_.clear();
  ends_.clear();
  Scanner scanner(text);
  while (scanner.skipWhite()) {
    if (!scanner.takeComma()) {
      tokens_.push_back(scanner.takeToken());
    } else if (tokens_.size() > (ends_.empty() ? 0 : ends_.back())) {
      ends_.push_back(tokens_.size());
    }
  }
  if (tokens_.size() > (ends_.empty() ? 0 : ends_.back())) ends_.push_back(tokens_.size());
}

// "x,y x,y": between commas stand the last value of a point and the first of the next; before the
// first comma and behind the last there is one value. With more channels, "x,y,f x,y,f", the
// values within a point stand alone, too. How many values a point then has; 0 for other texts.
std::size_t TraceText::exchangedValues(std::size_t regular) const {
  const std::size_t pieces = ends_.size();
  if (pieces < 2 || regular < 2 || ends_[0] != 1 || tokens_.size() != ends_[pieces - 2] + 1) {
    return 0;
  }
  const auto follows = [&](std::size_t values) {
    if ((pieces - 1) % (values - 1) != 0) return false;
    for (std::size_t i = 1; i + 1 < pieces; ++i) {
      if (ends_[i] - ends_[i - 1] != (i % (values - 1) == 0 ? 2U : 1U)) return false;
    }
    return true;
  };
  if (follows(2)) return 2;
  return regular > 2 && follows(regular) ? regular : 0;
}

void TraceText::regroup(std::size_t channels) {
  ends_.clear();
  for (std::size_t end = channels; end <= tokens_.size(); end += channels)
    ends_.push_back(end);
}

double ChannelValues::next(const Token& token) {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  if (token.prefix != 0) mode_ = token.prefix;
  if (token.kind == Token::Kind::absent || token.kind == Token::Kind::unreadable) return kNone;
  const bool repeats = token.kind == Token::Kind::repeat;
  double value = value_;
  if (mode_ == '!') {
    if (!repeats) value = token.number;
  } else {
    if (mode_ == '"') {
      second_ = repeats ? second_ : token.number;
      difference_ += second_;
    } else if (!repeats) {
      difference_ = token.number;
    }
    value = (std::isnan(value) ? 0 : value) + difference_;
  }
  if (mode_ == '!') difference_ = hasValue_ ? value - value_ : 0;
  if (!std::isfinite(value)) return kNone;
  hasValue_ = true;
  value_ = value;
  return value;
}

}  // namespace translate
