// Any bytes as the words of the command, separated by zero bytes: they are understood or refused
// with an exit status of their own, and what is printed about them is harmless on a terminal.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/command_line.h"
#include "cli/terminal_text.h"
#include "fuzz/input.h"

namespace {

using fuzz::check;

// Keeps what is printed to a stream.
class Captured {
 public:
  explicit Captured(std::ostream& stream) : stream_(stream), before_(stream.rdbuf(text_.rdbuf())) {}
  ~Captured() { stream_.rdbuf(before_); }
  Captured(const Captured&) = delete;
  Captured& operator=(const Captured&) = delete;

  std::string text() const { return text_.str(); }

 private:
  std::ostream& stream_;
  std::ostringstream text_;
  std::streambuf* before_;
};

std::vector<std::string> wordsOf(std::string_view bytes) {
  std::vector<std::string> words{"penwick"};
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    words.emplace_back(bytes.substr(0, end));
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return words;
}

cli::ExitStatus* statusOf(std::variant<cli::CommandWords, cli::ExitStatus>& result) {
  return std::get_if<cli::ExitStatus>(&result);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> words = wordsOf({reinterpret_cast<const char*>(data), size});
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words)
    pointers.push_back(word.data());
  pointers.push_back(nullptr);

  const Captured output(std::cout);
  const Captured error(std::cerr);
  auto result = cli::parseCommandLine(static_cast<int>(words.size()), pointers.data());
  const std::string said = error.text();
  check(said == cli::printableLines(said) && std::ranges::count(said, '\n') <= 1);
  if (const cli::ExitStatus* const status = statusOf(result)) {
    check(*status == cli::ExitStatus::done || *status == cli::ExitStatus::wrongUsage);
    check((*status == cli::ExitStatus::done) == !output.text().empty());
  } else {
    check(said.empty() && output.text().empty());
  }
  return 0;
}
