#pragma once

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// The words of the command line, as file names are written elsewhere: natively the bytes that
/// `main` was given, on Windows the wide command line as UTF-8, words with `*` and `?` replaced by
/// the files that they stand for, as no shell does it there. `words` is what `main` takes:
/// `count()` pointers and a null.
class CommandLine {
 public:
  CommandLine(int count, char** words);

  int count() const { return static_cast<int>(texts_.size()); }
  char** words() { return words_.data(); }

 private:
  void pointToTexts();

  std::vector<std::string> texts_;
  std::vector<char*> words_;
};

/// As long as the guard is kept a Windows console shows what is printed as UTF-8; then as before.
/// Null where there is no such console.
std::shared_ptr<void> utf8Console();

}  // namespace platform
