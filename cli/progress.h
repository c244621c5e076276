// The progress bar.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

/// Shows a progress bar on standard error, after the first second, where that is a terminal.
class Progress {
 public:
  Progress(std::size_t total, bool quiet);
  /// Clears the line.
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Work on an item begins.
  void begin(std::string_view name);
  /// Work on an item has ended.
  void end();
  /// Shows the bar as things are now.
  void show();
  /// Clears the line, so that something else can be printed.
  void clear();

 private:
  std::string timeLeft(std::chrono::duration<double> passed) const;

  std::size_t total_;
  bool shown_;
  std::size_t done_ = 0;
  std::string name_;           ///< Of the item that began last.
  std::size_t lineWidth_ = 0;  ///< Of what is shown now.
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace cli
