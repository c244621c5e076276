#include "cli/messages.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace cli {

namespace {

using Size = std::uint32_t;

// The outcome, then each message: kind, size, lines.
constexpr std::size_t kMessageHead = 1 + sizeof(Size);

}  // namespace

std::string toBytes(const FileReport& report) {
  std::string bytes(1, static_cast<char>(report.outcome));
  for (const Message& message : report.messages) {
    const Size size = static_cast<Size>(message.lines.size());
    bytes += static_cast<char>(message.kind);
    bytes.append(reinterpret_cast<const char*>(&size), sizeof size).append(message.lines, 0, size);
  }
  return bytes;
}

std::optional<FileReport> reportFromBytes(std::string_view bytes) {
  if (bytes.empty() || bytes[0] > static_cast<char>(Outcome::failed)) return {};
  FileReport report{static_cast<Outcome>(bytes[0]), {}};
  bytes.remove_prefix(1);
  while (!bytes.empty()) {
    Size size = 0;
    if (bytes.size() < kMessageHead || bytes[0] > static_cast<char>(Message::Kind::error))
      return {};
    std::memcpy(&size, bytes.data() + 1, sizeof size);
    if (bytes.size() - kMessageHead < size) return {};
    report.messages.push_back(
        {static_cast<Message::Kind>(bytes[0]), std::string(bytes.substr(kMessageHead, size))});
    bytes.remove_prefix(kMessageHead + size);
  }
  return report;
}

void print(const Message& message) {
  std::FILE* const stream = message.kind == Message::Kind::result ? stdout : stderr;
  std::fwrite(message.lines.data(), 1, message.lines.size(), stream);
  std::fflush(stream);
}

}  // namespace cli
