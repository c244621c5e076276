// The words of the command line, and the console that they come from.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace platform {

/// The words of the command line, in the encoding of file names: natively the bytes that `main` was
/// given, on Windows the wide command line as UTF-8, with `*` and `?` expanded to the names of
/// files, which no shell does there. `words` is what `main` takes: `count()` pointers and a null.
class CommandLine {
 public:
  CommandLine(int count, char** words);
  CommandLine(const CommandLine&) = delete;  // A copy's pointers would point into the original.
  CommandLine& operator=(const CommandLine&) = delete;

  int count() const { return static_cast<int>(texts_.size()); }
  char** words() { return words_.data(); }

 private:
  void pointToTexts();

  std::vector<std::string> texts_;
  std::vector<char*> words_;
};

/// While the guard lives, a Windows console shows what is printed as UTF-8; afterwards its own code
/// page is restored. Null where there is no such console.
std::shared_ptr<void> utf8Console();

}  // namespace platform
