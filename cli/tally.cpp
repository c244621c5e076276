#include "cli/tally.h"

#include <algorithm>

#include "cli/sentences.h"

namespace cli {

void Tally::add(const FileReport& report) {
  ++counts_[static_cast<std::size_t>(report.outcome)];
  for (const Message& message : report.messages) {
    lines_ += static_cast<std::size_t>(std::ranges::count(message.lines, '\n'));
    if (message.kind == Message::Kind::error) errors_.push_back(message);
  }
}

std::string Tally::sentence(const std::string& verb) const {
  std::string text = counted(count(Outcome::done), verb, verb);
  if (const auto kept = count(Outcome::kept); kept > 0)
    text += ", " + std::to_string(kept) + " kept";
  if (!allDone()) text += ", " + std::to_string(count(Outcome::failed)) + " failed";
  return text;
}

std::vector<Message> Tally::errorsBeyond(std::size_t rows) const {
  return lines_ > rows ? errors_ : std::vector<Message>();
}

}  // namespace cli
