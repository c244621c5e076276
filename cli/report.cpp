#include "cli/report.h"

#include <cstdio>

#include "cli/limits.h"
#include "cli/terminal_text.h"

namespace cli {

namespace {

std::string lineOf(const std::filesystem::path& file, std::string_view kind,
                   std::string_view sentence) {
  std::string line = "penwick: " + nativeName(file);
  line.append(": ").append(kind).append(sentence);
  return printable(line) + "\n";
}

}  // namespace

std::string nativeName(const std::filesystem::path& path) {
#ifdef _WIN32
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
#else
  return path.native();
#endif
}

std::filesystem::path pathOf(std::string_view word) {
#ifdef _WIN32
  return std::filesystem::path(std::u8string(word.begin(), word.end()));
#else
  return {word};
#endif
}

std::string endingOf(const std::filesystem::path& path) {
  const std::string extension = nativeName(path.extension());
  return extension.empty() ? extension : extension.substr(1);
}

std::string errorLine(const std::filesystem::path& file, std::string_view sentence) {
  return lineOf(file, "", sentence);
}

std::string warningLine(const std::filesystem::path& file, std::string_view sentence) {
  return lineOf(file, "warning: ", sentence);
}

std::string noteLine(const std::filesystem::path& file, std::string_view sentence) {
  return lineOf(file, "note: ", sentence);
}

void say(std::string_view text) {
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
  static_cast<void>(std::fflush(stderr));
}

void reportNotEnoughMemory() {
  say("penwick: ");
  say(kNotEnoughMemory);
  say("\n");
}

void reportError(std::string_view sentence) {
  say("penwick: " + printable(sentence) + "\n");
}

void reportError(const std::filesystem::path& file, std::string_view sentence) {
  say(errorLine(file, sentence));
}

void reportWarning(const std::filesystem::path& file, std::string_view sentence) {
  say(warningLine(file, sentence));
}

void reportNote(const std::filesystem::path& file, std::string_view sentence) {
  say(noteLine(file, sentence));
}

ExitStatus wrongUsage(std::string_view sentence) {
  reportError(sentence);
  return ExitStatus::wrongUsage;
}

}  // namespace cli
