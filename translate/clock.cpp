#include "translate/clock.h"

#include <chrono>
#include <cstdint>
#include <string>

#include "text/numbers.h"
#include "translate/units.h"

namespace translate {
namespace {

constexpr double kSecond = 1000;
constexpr double kMinute = 60 * kSecond;
constexpr double kHour = 60 * kMinute;
constexpr double kDay = 24 * kHour;

class DateReader {
 public:
  explicit DateReader(std::string_view text) : rest_(trimmed(text)) {}

  std::optional<double> read() {
    const auto date = takeDate();
    if (!date) return std::nullopt;
    double moment = *date;
    if (!rest_.empty() && (rest_[0] == 'T' || rest_[0] == ' ')) {
      rest_.remove_prefix(1);
      const auto time = takeTime();
      if (!time) return std::nullopt;
      moment += *time;
    }
    const auto zone = takeZone();
    if (!zone || !rest_.empty()) return std::nullopt;
    return moment - *zone;
  }

 private:
  std::optional<int> takeNumber(std::size_t digits) {
    const auto number = text::wholeNumber<int>(rest_.substr(0, digits));
    if (rest_.size() < digits || !number || *number < 0) return std::nullopt;
    rest_.remove_prefix(digits);
    return number;
  }

  bool take(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::optional<double> takeDate() {
    constexpr std::size_t kYearDigits = 4;
    const auto year = takeNumber(kYearDigits);
    if (!year || !take('-')) return std::nullopt;
    const auto month = takeNumber(2);
    if (!month || !take('-')) return std::nullopt;
    const auto day = takeNumber(2);
    if (!day) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    if (!date.ok()) return std::nullopt;
    return kDay * static_cast<double>(std::chrono::sys_days(date).time_since_epoch().count());
  }

  // Hours and minutes, and perhaps seconds with a fraction.
  std::optional<double> takeTime() {
    const auto hours = takeNumber(2);
    if (!hours || !take(':')) return std::nullopt;
    const auto minutes = takeNumber(2);
    if (!minutes || *hours > 24 || *minutes > 59) return std::nullopt;
    double time = *hours * kHour + *minutes * kMinute;
    if (!take(':')) return time;
    const auto seconds = takeNumber(2);
    if (!seconds || *seconds > 60) return std::nullopt;
    time += *seconds * kSecond;
    if (!take('.')) return time;
    const std::size_t end = rest_.find_first_not_of("0123456789");
    const auto fraction = numberOf("0." + std::string(rest_.substr(0, end)));
    rest_ = end == std::string_view::npos ? std::string_view() : rest_.substr(end);
    return time + kSecond * fraction.value_or(0);
  }

  // How far the zone is ahead of UTC.
  std::optional<double> takeZone() {
    if (rest_.empty() || take('Z')) return 0;
    const double sign = take('-') ? -1 : 1;
    if (sign > 0 && !take('+')) return std::nullopt;
    const auto hours = takeNumber(2);
    if (!hours) return std::nullopt;
    take(':');
    const auto minutes = rest_.empty() ? std::optional(0) : takeNumber(2);
    if (!minutes) return std::nullopt;
    return sign * (*hours * kHour + *minutes * kMinute);
  }

  std::string_view rest_;
};

}  // namespace

std::optional<double> timeOfDay(std::string_view text) {
  return DateReader(text).read();
}

std::optional<double> Clock::momentOf(InkTree::Index timestamp) {
  if (timestamp == InkTree::kNone) return std::nullopt;
  const auto known = known_.find(timestamp);
  if (known != known_.end()) return known->second;
  return known_.emplace(timestamp, read(timestamp, 0)).first->second;
}

std::optional<double> Clock::momentOf(std::string_view reference) {
  const InkTree::Index found = tree_.find(reference);
  const bool isTimestamp = found != InkTree::kNone && tree_.tag(found) == Tag::timestamp;
  if (!isTimestamp) remarks_.add(RemarkKind::missingReference, 1, reference);
  return isTimestamp ? momentOf(found) : std::nullopt;
}

std::optional<double> Clock::read(InkTree::Index timestamp, int chain) {
  if (tree_.attribute(timestamp, Attribute::time)) {
    return numberIn(tree_, timestamp, Attribute::time, remarks_);
  }
  if (const auto text = tree_.attribute(timestamp, Attribute::timeString)) {
    const std::optional<double> moment = timeOfDay(*text);
    if (!moment) {
      remarks_.add(RemarkKind::attributesUnreadable, 1,
                   "timeString=\"" + std::string(*text) + "\"");
    }
    return moment;
  }
  const InkTree::Index base =
      contexts_.referred(timestamp, Attribute::timestampRef, Tag::timestamp);
  if (base == InkTree::kNone || chain == kLongestChain) return std::nullopt;
  const std::optional<double> moment = read(base, chain + 1);
  if (!moment) return std::nullopt;
  return *moment + numberIn(tree_, timestamp, Attribute::timeOffset, remarks_).value_or(0);
}

}  // namespace translate
