#include "cli/progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "cli/report.h"
#include "cli/sentences.h"
#include "cli/terminal_text.h"
#include "platform/terminal.h"

namespace cli {

namespace {

constexpr std::size_t kBarWidth = 24;

// The start of a name that fits; each character is taken to be one column wide.
std::string cut(const std::string& name, std::size_t width) {
  std::string text = printable(name);
  const auto isStart = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
  };
  std::size_t characters = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isStart(text[i]) && characters++ == width) return text.substr(0, i);
  }
  return text;
}

}  // namespace

Progress::Progress(std::size_t total, bool quiet)
    : total_(total), shown_(!quiet && total > 1 && platform::terminalOf(stderr)) {}

void Progress::begin(std::string_view name) {
  name_ = name;
  show();
}

void Progress::end() {
  ++done_;
}

std::string Progress::timeLeft(std::chrono::duration<double> passed) const {
  if (done_ == 0) return {};
  const double seconds =
      passed.count() * static_cast<double>(total_ - done_) / static_cast<double>(done_);
  constexpr double kMinute = 60;
  const auto number =
      static_cast<std::uint64_t>(std::ceil(seconds < 2 * kMinute ? seconds : seconds / kMinute));
  return ", about " + std::to_string(number) + (seconds < 2 * kMinute ? " s" : " min") + " left";
}

void Progress::show() {
  using namespace std::chrono_literals;
  const auto passed = std::chrono::steady_clock::now() - start_;
  if (!shown_ || passed < 1s) return;
  const std::size_t done = done_ * kBarWidth / total_;
  std::string line = '[' + std::string(done, '#') + std::string(kBarWidth - done, '.') + "] " +
                     std::to_string(done_) + '/' + std::to_string(total_) + timeLeft(passed) + ' ';
  const std::size_t columns =
      platform::terminalOf(stderr).value_or(platform::TerminalSize()).columns;
  const std::size_t room = columns - std::min(columns, line.size() + 1);
  const std::string name = cut(name_, room);
  clear();
  lineWidth_ = line.size() + std::min(name.size(), room);
  line += name;
  say(line);
}

void Progress::clear() {
  if (lineWidth_ == 0) return;
  // Spaces, since not every Windows console knows the sequence that clears a line.
  say('\r' + std::string(lineWidth_, ' ') + '\r');
  lineWidth_ = 0;
}

}  // namespace cli
