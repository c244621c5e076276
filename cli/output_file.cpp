#include "cli/output_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <process.h>
#else
#include <unistd.h>
#endif

#include "cli/report.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

std::string because(std::string_view what, int error) {
  return std::string(what) + ": " + std::generic_category().message(error);
}

std::optional<std::string> writeStandardOutput(std::string_view bytes) {
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  errno = 0;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
  if (written && std::fflush(stdout) == 0) return {};
  return because("standard output could not be written", errno);
}

/// Zero, or the system's error number.
int writeBytes(const fs::path& file, std::string_view bytes) {
  errno = 0;
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  if (!stream) return errno != 0 ? errno : EIO;
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (stream) return 0;
  return errno != 0 ? errno : EIO;
}

fs::path nameBeside(const fs::path& target) {
#ifdef _WIN32
  const auto process = _getpid();
#else
  const auto process = getpid();
#endif
  fs::path name = target;
  name += ".part" + std::to_string(process);
  return name;
}

/// The file behind a link, so that the link stays.
fs::path behindLinks(const fs::path& target) {
  std::error_code error;
  const fs::path resolved = fs::weakly_canonical(target, error);
  return error ? target : resolved;
}

}  // namespace

std::optional<std::string> writeOutput(const fs::path& target, std::string_view bytes) {
  if (isStandardOutput(target)) return writeStandardOutput(bytes);

  const fs::path place = behindLinks(target);
  std::error_code error;
  const fs::file_status status = fs::status(place, error);
  if (fs::is_directory(status)) return "cannot be written: it is a folder; name a file in it";
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    const int failure = writeBytes(place, bytes);
    return failure == 0 ? std::nullopt : std::optional(because("cannot be written", failure));
  }

  const fs::path beside = nameBeside(place);
  if (const int failure = writeBytes(beside, bytes); failure != 0) {
    fs::remove(beside, error);
    return because("cannot be written", failure);
  }
  if (fs::exists(status)) fs::permissions(beside, status.permissions(), error);
  fs::rename(beside, place, error);
  if (!error) return {};
  const std::string sentence = "cannot be written: " + error.message();
  fs::remove(beside, error);
  return sentence;
}

}  // namespace cli
