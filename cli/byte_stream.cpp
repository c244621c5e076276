#include "cli/byte_stream.h"

#include <cerrno>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "cli/input_file.h"

namespace cli {

namespace {

std::FILE* standardInput() {
#ifdef _WIN32
  _setmode(_fileno(stdin), _O_BINARY);
#endif
  return stdin;
}

}  // namespace

ByteStream::ByteStream(const std::filesystem::path& name)
    : file_(isStandardInput(name) ? nullptr : platform::openFile(wideName(name).c_str(), "rb")),
      stream_(isStandardInput(name) ? standardInput() : file_.get()),
      buffer_(65536) {}

std::string_view ByteStream::next() {
  if (!isOpen() || error_ != 0) return {};
  const std::ptrdiff_t count = platform::readAtHand(stream_, buffer_.data(), buffer_.size());
  if (count >= 0) return {buffer_.data(), static_cast<std::size_t>(count)};
  error_ = errno;
  return {};
}

}  // namespace cli
