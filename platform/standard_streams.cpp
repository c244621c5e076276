#include "platform/standard_streams.h"

#ifdef _WIN32
#include <cstdio>
#include <io.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace platform {

namespace {

bool outputWasClosed = false;

}  // namespace

bool standardOutputWasClosed() {
  return outputWasClosed;
}

#ifdef _WIN32

namespace {

bool isClosed(std::FILE* stream) {
  return _fileno(stream) < 0;
}

bool openIfClosed(std::FILE* stream, const char* mode) {
  return !isClosed(stream) || std::freopen("NUL", mode, stream) != nullptr;
}

}  // namespace

bool openClosedStandardStreams() {
  outputWasClosed = isClosed(stdout);
  return openIfClosed(stdin, "r") && openIfClosed(stdout, "w") && openIfClosed(stderr, "w");
}

#else

namespace {

bool isClosed(int descriptor) {
  return ::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF;
}

// The system uses the lowest free number: this one, as the lower ones are open.
bool openIfClosed(int descriptor) {
  return !isClosed(descriptor) || ::open("/dev/null", O_RDWR) == descriptor;
}

}  // namespace

bool openClosedStandardStreams() {
  outputWasClosed = isClosed(STDOUT_FILENO);
  return openIfClosed(STDIN_FILENO) && openIfClosed(STDOUT_FILENO) && openIfClosed(STDERR_FILENO);
}

#endif

}  // namespace platform
