// The text of a trace: values by points, absolute or as differences.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace translate {

/// One value as it is written.
struct Token {
  enum class Kind : std::uint8_t {
    number,     ///< Decimal or hexadecimal; T and F are 1 and 0.
    repeat,     ///< "*": the value is kept, or the last difference goes on.
    absent,     ///< "?": the point has no value in this channel.
    unreadable  ///< Anything else.
  };
  double number = 0;
  Kind kind = Kind::number;
  char prefix = 0;  ///< '!', '\'' or '"'; 0 for none.
};

/// The values of a trace by points. It may be used for one trace after another.
class TraceText {
 public:
  /// Splits a text into points. The numbers of regular and of all channels say how to read texts in
  /// which commas and blanks are exchanged ("1,5 2,6") or the commas are missing.
  void scan(std::string_view text, std::size_t regular, std::size_t all);

  std::size_t pointCount() const { return ends_.size(); }
  std::span<const Token> point(std::size_t index) const;

 private:
  void splitByCommas(std::string_view text);
  void regroup(std::size_t channels);
  std::size_t exchangedValues(std::size_t regular) const;

  std::vector<Token> tokens_;
  std::vector<std::size_t> ends_;  // Of each point, in tokens.
};

/// One channel's values from point to point.
class ChannelValues {
 public:
  /// The value of the channel at the next point; NaN where it has none, and after `absent` and
  /// `unreadable`.
  double next(const Token& token);

  /// The value at a point that does not name it, for an intermittent channel.
  double unchanged() const { return value_; }

  /// Begins a trace: explicit values, and before the first the default, or NaN.
  explicit ChannelValues(double initial) : value_(initial) {}

 private:
  double value_;
  double difference_ = 0;
  double second_ = 0;
  char mode_ = '!';
  bool hasValue_ = false;
};

}  // namespace translate
