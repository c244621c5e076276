// Inflates the compressed streams of a library.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace stylelib {

/// Inflates zlib streams one after another, with memory that is allocated once.
class Inflater {
 public:
  enum class Outcome { whole, damaged, tooLarge };

  struct Result {
    Outcome outcome;
    std::size_t consumed;  ///< bytes of the input that were read
  };

  /// Throws `std::bad_alloc` when there is no memory for it.
  Inflater();
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  /// Appends to `out` what the bytes inflate to. If `out` would exceed `most` bytes, or the bytes
  /// are damaged or cut off, `out` keeps what was inflated up to there.
  Result append(std::string_view bytes, std::string& out, std::size_t most);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace stylelib
