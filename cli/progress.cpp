#include "cli/progress.h"

#include <cstdio>
#include <string>

#include "cli/terminal_text.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace cli {

namespace {

constexpr std::size_t kBarWidth = 24;
constexpr std::size_t kNameWidth = 40;

bool isTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

Progress::Progress(std::size_t total, bool quiet) : total_(total), shown_(!quiet && isTerminal()) {}

void Progress::begin(std::size_t index, std::string_view name) {
  using namespace std::chrono_literals;
  if (!shown_ || std::chrono::steady_clock::now() - start_ < 1s) return;
  const std::size_t done = index * kBarWidth / total_;
  const std::string bar = std::string(done, '#') + std::string(kBarWidth - done, '.');
  clear();
  const std::string line = '[' + bar + "] " + std::to_string(index + 1) + '/' +
                           std::to_string(total_) + ' ' + printable(name.substr(0, kNameWidth));
  std::fputs(line.c_str(), stderr);
  std::fflush(stderr);
  lineWidth_ = line.size();
}

void Progress::clear() {
  if (lineWidth_ == 0) return;
  // Spaces, since not every Windows console knows the sequence that clears a line.
  std::fprintf(stderr, "\r%*s\r", static_cast<int>(lineWidth_), "");
  std::fflush(stderr);
  lineWidth_ = 0;
}

}  // namespace cli
