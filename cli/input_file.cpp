#include "cli/input_file.h"

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "cli/report.h"
#include "platform/file.h"
#include "platform/paths.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 31;
constexpr char kNoPrivateFile[] = "there is no space for a temporary copy of it";

std::string because(std::string_view what, int error) {
  return std::string(what) + ": " + std::generic_category().message(error);
}

platform::File open(const fs::path& file, const char* mode) {
  return platform::openFile(platform::nativePathToWide(nativeName(file)).c_str(), mode);
}

class StreamReader {
 public:
  explicit StreamReader(std::FILE* stream) : stream_(stream) {}

  /// The next bytes; none at the end or after an error. They stay until the next call.
  std::string_view next() {
    errno = 0;
    const std::size_t count = std::fread(buffer_.data(), 1, buffer_.size(), stream_);
    if (std::ferror(stream_) != 0) error_ = errno;
    return {buffer_.data(), count};
  }

  /// The system's number of the error that ended the reading, or 0.
  int error() const { return error_; }

 private:
  std::FILE* stream_;
  std::array<char, 65536> buffer_{};
  int error_ = 0;
};

bool write(std::FILE* file, std::string_view bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
}

}  // namespace

bool nameDecidesKind(const fs::path& name) {
  const fs::path ending = name.extension();
  return ending == ".pnx" || ending == ".eli" || kindByName(name) == FileKind::inkml;
}

std::optional<FileKind> kindByStart(std::string_view start) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (start.starts_with(kByteOrderMark)) start.remove_prefix(kByteOrderMark.size());
  using namespace std::string_view_literals;
  for (const std::string_view packed : {"\xFF\xFE"sv, "\xFE\xFF"sv, "<\0"sv, "\0<"sv, "\x1F\x8B"sv})
    if (start.starts_with(packed)) return FileKind::inkml;
  const std::size_t first = start.find_first_not_of(" \t\r\n");
  if (first == start.npos) return {};
  return start[first] == '<' ? FileKind::inkml : FileKind::pen;
}

InputFile::InputFile(fs::path name, std::optional<FileKind> kind)
    : name_(std::move(name)), path_(name_) {
  if (isStandardInput(name_)) {
#ifdef _WIN32
    _setmode(_fileno(stdin), _O_BINARY);
#endif
    copyStream(stdin, kind);
  } else {
    prepareFile(kind);
  }
}

InputFile::InputFile(fs::path name, const std::string& start,
                     const std::function<std::string_view()>& next)
    : name_(std::move(name)), path_(name_) {
  if (makeFolder(FileKind::inkml)) copyBytes(start, next);
}

void InputFile::prepareFile(std::optional<FileKind> kind) {
  std::error_code error;
  const fs::file_status status = fs::status(name_, error);
  if (!kind && nameDecidesKind(name_)) kind = kindByName(name_);
  if (fs::is_fifo(status)) {
    const platform::File pipe = open(name_, "rb");
    if (pipe) return copyStream(pipe.get(), kind);
    problem_ = because("the pipe cannot be opened", errno);
  } else if (fs::is_regular_file(status)) {
    if (kind && *kind != kindByName(name_)) giveOtherEnding(*kind);
  } else if (fs::exists(status) && !fs::is_directory(status)) {
    problem_ = kThisIsADevice;
  }
}

bool InputFile::makeFolder(FileKind kind) {
  const std::string stem = isStandardInput(name_) ? "stdin" : "recording";
  folder_ = std::make_unique<PrivateFolder>(stem + (kind == FileKind::inkml ? ".kvo" : ".pnx"));
  path_ = folder_->file();
  if (path_.empty()) problem_ = kNoPrivateFile;
  return !path_.empty();
}

void InputFile::copyStream(std::FILE* stream, std::optional<FileKind> kind) {
  StreamReader reader(stream);
  std::string start;
  std::string_view more = reader.next();
  while (!kind && !more.empty() && start.size() < kMostWhiteSpace) {
    start += more;
    kind = kindByStart(start);
    more = reader.next();
  }
  if (!makeFolder(kind.value_or(FileKind::pen))) return;
  start += more;
  copyBytes(start, [&reader] { return reader.next(); });
  if (reader.error() != 0) problem_ = because("it cannot be read", reader.error());
}

void InputFile::copyBytes(std::string_view start, const std::function<std::string_view()>& next) {
  const platform::File copy = open(path_, "wb");
  bool isWritten = copy != nullptr;
  std::uint64_t size = 0;
  for (std::string_view more = start.empty() ? next() : start;
       isWritten && !more.empty() && size < kMostBytes; more = next()) {
    size += more.size();
    isWritten = write(copy.get(), more);
  }
  if (size >= kMostBytes) {
    problem_ = "it has 2 GiB or more; save it to a file and open that";
  } else if (!isWritten || std::fflush(copy.get()) != 0) {
    problem_ = kNoPrivateFile;
  }
}

void InputFile::giveOtherEnding(FileKind kind) {
  if (!makeFolder(kind)) return;
  std::error_code error;
  fs::create_symlink(fs::absolute(name_, error), path_, error);
  // Some systems give links to administrators only.
  if (error) fs::copy_file(name_, path_, error);
  if (error) problem_ = kNoPrivateFile;
}

}  // namespace cli
