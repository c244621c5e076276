// The share of a large space of cases that a test tries.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <utility>

namespace test {

/// Which cases of a space are tried: about as many as are wanted, picked by a seed that is printed,
/// so that a failure can be had again with PENWICK_SEED. With PENWICK_WHOLE set, as `tools/exhaust`
/// does, all are tried, or `mostOfWhole` where the space is too large for that. Sanitizers are
/// slow: under them a tenth of the share is tried.
class Share {
 public:
  static constexpr std::size_t kAll = static_cast<std::size_t>(-1);

  Share(std::string space, std::size_t cases, std::size_t wanted, std::size_t mostOfWhole = kAll)
      : space_(std::move(space)),
        cases_(cases),
        wanted_(isWhole() ? mostOfWhole : wanted / kSlowness) {
    std::cout << space_ << ": seed " << seed() << std::endl;
  }
  ~Share() {
    std::cout << space_ << ": " << tried_ << " of " << asked_ << " cases tried" << std::endl;
  }
  Share(const Share&) = delete;
  Share& operator=(const Share&) = delete;

  /// Whether the next case is to be tried.
  bool takesNext() {
    ++asked_;
    const bool taken = wanted_ >= cases_ || random_() % cases_ < wanted_;
    tried_ += taken ? 1U : 0U;
    return taken;
  }

  static bool isWhole() { return std::getenv("PENWICK_WHOLE") != nullptr; }

  /// The same in the whole program.
  static std::uint64_t seed() {
    static const char* const wanted = std::getenv("PENWICK_SEED");
    static const std::uint64_t chosen =
        wanted == nullptr ? std::random_device()() : std::stoull(wanted);
    return chosen;
  }

 private:
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(_WIN32)
  static constexpr std::size_t kSlowness = 10;
#else
  static constexpr std::size_t kSlowness = 1;
#endif

  std::string space_;
  std::size_t cases_;
  std::size_t wanted_;
  std::size_t asked_ = 0;
  std::size_t tried_ = 0;
  std::mt19937_64 random_{seed()};
};

}  // namespace test
