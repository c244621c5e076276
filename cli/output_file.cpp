#include "cli/output_file.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "cli/limits.h"
#include "cli/report.h"
#include "platform/replace_file.h"
#include "platform/standard_streams.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

std::optional<std::string> writeStandardOutput(std::string_view bytes) {
  if (platform::standardOutputWasClosed()) {
    return "standard output is closed; give a file with -o";
  }
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  errno = 0;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
  if (written && std::fflush(stdout) == 0) return {};
  return "standard output could not be written: " + std::generic_category().message(errno);
}

std::optional<std::string> sentenceOf(const fs::path& place, const std::error_code& error) {
  if (!error) return {};
  std::error_code unknown;
  if (error == std::errc::no_such_file_or_directory && place.has_parent_path() &&
      !fs::exists(place.parent_path(), unknown)) {
    return "cannot be written: there is no folder '" + nativeName(place.parent_path()) +
           "'; make it first";
  }
  if (error == std::errc::too_many_files_open) return kTooManyFiles;
  return "cannot be written: " + error.message();
}

}  // namespace

fs::path behindLinks(const fs::path& file) {
  // As many as the system itself follows.
  constexpr int kMostLinks = 40;
  fs::path place = file;
  for (int i = 0; i < kMostLinks; ++i) {
    std::error_code noLink;
    const fs::path target = fs::read_symlink(place, noLink);
    if (noLink) return place;
    place = place.parent_path() / target;
  }
  return file;
}

std::optional<std::string> writeOutput(const fs::path& target, std::string_view bytes) {
  if (isStandardOutput(target)) return writeStandardOutput(bytes);

  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  if (fs::is_directory(status)) return "cannot be written: it is a folder; name a file in it";
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    return sentenceOf(target, platform::writeInto(target, bytes));
  }
  if (error == std::errc::too_many_symbolic_link_levels) return sentenceOf(target, error);

  const fs::path place = behindLinks(target);
  // The system's name for an open file may lead to one that has been removed.
  if (fs::exists(status) && !fs::equivalent(target, place, error)) {
    return "cannot be written: the file has been removed";
  }
  return sentenceOf(place, platform::replaceFile(place, bytes));
}

}  // namespace cli
