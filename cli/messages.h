// What is said about one file, on its way from the process that works on it to the terminal.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Lines about one file, ready to be printed.
struct Message {
  enum class Kind : char {
    result,  ///< On standard output.
    remark,  ///< On standard error, as are errors.
    error,
  };
  Kind kind = Kind::error;
  std::string lines;  ///< With the line feeds.
};

/// What became of one file.
enum class Outcome : char { done, kept, failed };

/// What is known of one file in the end.
struct FileReport {
  Outcome outcome = Outcome::failed;
  std::vector<Message> messages;
  std::string product;  ///< What the work gives back to the command, in a form of its own.
};

/// The bytes of a report, for another process.
std::string toBytes(const FileReport& report);

/// The report that `toBytes` wrote; nothing for any other bytes.
std::optional<FileReport> reportFromBytes(std::string_view bytes);

void print(const Message& message);

/// The remarks and errors of a report, one for each line, without the command's name in front.
std::vector<std::string> remarksOf(const FileReport& report);

}  // namespace cli
