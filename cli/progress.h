#pragma once

#include <chrono>
#include <cstddef>
#include <string_view>

namespace cli {

/// Says on a terminal's standard error how far long work is; nothing within the first second, and
/// nothing where standard error is no terminal.
class Progress {
 public:
  Progress(std::size_t total, bool quiet);
  /// Takes the line away.
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Work number `index`, from 0, begins.
  void begin(std::size_t index, std::string_view name);
  /// Takes the line away, so that something else can be printed.
  void clear();

 private:
  std::size_t total_;
  bool shown_;
  std::size_t lineWidth_ = 0;  ///< of what stands on the line
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace cli
