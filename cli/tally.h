// How many files were done, kept and failed.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "cli/messages.h"

namespace cli {

/// Counts what became of the files of one command.
class Tally {
 public:
  void add(const FileReport& report);

  bool allDone() const { return count(Outcome::failed) == 0; }

  /// "498 drawn, 1 kept, 1 failed"; `verb` is what was done, such as "drawn".
  std::string sentence(const std::string& verb) const;

  /// The errors, where more than `rows` lines were printed.
  std::vector<Message> errorsBeyond(std::size_t rows) const;

 private:
  std::size_t count(Outcome outcome) const { return counts_[static_cast<std::size_t>(outcome)]; }

  std::array<std::size_t, 3> counts_{};
  std::vector<Message> errors_;
  std::size_t lines_ = 0;
};

}  // namespace cli
