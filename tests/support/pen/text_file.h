// Text files, and the lines of the log.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace pentest {

/// The whole file; empty when there is none.
inline std::string readText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The lines of a text without their ends, which on Windows may be two characters.
inline std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
#ifdef _WIN32
    if (line.ends_with('\r')) line.pop_back();
#endif
    lines.push_back(line);
  }
  return lines;
}

/// The bytes that a text has in a file that was written as text.
inline std::string asInTextFile(const std::string& text) {
#ifdef _WIN32
  std::string bytes;
  for (const char character : text) {
    if (character == '\n') bytes += '\r';
    bytes += character;
  }
  return bytes;
#else
  return text;
#endif
}

/// A line of the log without its time and thread: level, message, tab, class and method.
inline std::string withoutTimeAndThread(const std::string& line) {
  constexpr std::size_t kTimeAndBlank = 22;
  const std::size_t threadEnd = line.find("] ", kTimeAndBlank);
  return threadEnd == std::string::npos ? line : line.substr(threadEnd + 2);
}

}  // namespace pentest
