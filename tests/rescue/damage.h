#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace damage {

/// The same numbers for a seed on every machine, which the standard's distributions are not.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /// A number from 0 to `limit` - 1; 0 where `limit` is 0.
  std::size_t below(std::size_t limit) { return limit == 0 ? 0 : engine_() % limit; }
  char byte() { return static_cast<char>(below(256)); }

 private:
  std::mt19937_64 engine_;
};

/// A file after something happened to it.
struct Damaged {
  static constexpr std::int64_t kNowhere = -1;

  std::string bytes;
  /// For each byte where it stood in the sound file, or `kNowhere` when it is not one of its
  /// bytes. A byte that was replaced by an equal one counts as the file's own. Where a second file
  /// was put behind the first, its offsets go on from the size of the first.
  std::vector<std::int64_t> origin;
};

/// One way in which a file can be damaged.
struct Kind {
  std::string_view name;
  /// `sound` is damaged in a place that `random` chooses. `other` is a second sound file, which
  /// only the kinds that need one look at. Runs are at most half of the file.
  Damaged (*apply)(std::string_view sound, std::string_view other, Random& random);
};

/// All thirty kinds, in a fixed order.
std::span<const Kind> allKinds();

}  // namespace damage
