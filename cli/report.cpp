#include "cli/report.h"

#include <cstdio>

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

void reportError(const std::filesystem::path& file, std::string_view sentence) {
  std::fputs(errorLine(file, sentence).c_str(), stderr);
}

void reportWarning(const std::filesystem::path& file, std::string_view sentence) {
  std::fputs(warningLine(file, sentence).c_str(), stderr);
}

void reportNote(const std::filesystem::path& file, std::string_view sentence) {
  std::fputs(noteLine(file, sentence).c_str(), stderr);
}

ExitStatus wrongUsage(std::string_view sentence) {
  std::fprintf(stderr, "penwick: %s\n", printable(sentence).c_str());
  return ExitStatus::wrongUsage;
}

}  // namespace cli
