#include "cli/progress.h"

#include <cstdio>
#include <string>

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
  const std::string shortName(name.substr(0, kNameWidth));
  std::fprintf(stderr, "\r\033[K[%s] %zu/%zu %s", bar.c_str(), index + 1, total_,
               shortName.c_str());
  std::fflush(stderr);
  lineStands_ = true;
}

void Progress::clear() {
  if (lineStands_) std::fputs("\r\033[K", stderr);
  lineStands_ = false;
}

}  // namespace cli
