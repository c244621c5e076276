#include "cli/messages.h"

#include <algorithm>
#include <cstdio>

#include "cli/fields.h"
#include "cli/report.h"

namespace cli {

namespace {

// The outcome, the product, and for each message its kind and its lines.
constexpr std::size_t kFieldsBeforeMessages = 2;

/// The value that a field of one byte stands for, if it is one up to `last`.
template <class Value>
std::optional<Value> valueOf(const std::string& field, Value last) {
  if (field.size() != 1 || field[0] < 0 || field[0] > static_cast<char>(last)) return {};
  return static_cast<Value>(field[0]);
}

}  // namespace

std::string toBytes(const FileReport& report) {
  const char outcome = static_cast<char>(report.outcome);
  std::vector<std::string_view> fields{{&outcome, 1}, report.product};
  for (const Message& message : report.messages) {
    fields.emplace_back(reinterpret_cast<const char*>(&message.kind), 1);
    fields.emplace_back(message.lines);
  }
  return joinFields(fields);
}

std::optional<FileReport> reportFromBytes(std::string_view bytes) {
  auto fields = splitFields(bytes);
  if (!fields || fields->size() < kFieldsBeforeMessages || fields->size() % 2 != 0) return {};
  const auto outcome = valueOf(fields->at(0), Outcome::failed);
  if (!outcome) return {};
  FileReport report{*outcome, {}, std::move(fields->at(1))};
  for (std::size_t i = kFieldsBeforeMessages; i < fields->size(); i += 2) {
    const auto kind = valueOf(fields->at(i), Message::Kind::error);
    if (!kind) return {};
    report.messages.push_back({*kind, std::move(fields->at(i + 1))});
  }
  return report;
}

void print(const Message& message) {
  if (message.kind != Message::Kind::result) return say(message.lines);
  // The stream remembers a failure, and the command ends with it.
  static_cast<void>(std::fwrite(message.lines.data(), 1, message.lines.size(), stdout));
  static_cast<void>(std::fflush(stdout));
}

std::vector<std::string> remarksOf(const FileReport& report) {
  constexpr std::string_view kCommand = "penwick: ";
  std::vector<std::string> remarks;
  for (const Message& message : report.messages) {
    if (message.kind == Message::Kind::result) continue;
    std::string_view left = message.lines;
    while (!left.empty()) {
      std::string_view line = left.substr(0, left.find('\n'));
      left.remove_prefix(std::min(left.size(), line.size() + 1));
      if (line.starts_with(kCommand)) line.remove_prefix(kCommand.size());
      if (!line.empty()) remarks.emplace_back(line);
    }
  }
  return remarks;
}

}  // namespace cli
