#include "embedded/output_capture.h"

#include <iostream>
#include <string>
#include <utility>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace embedded {

namespace {

#ifdef _WIN32

int duplicate(int descriptor) {
  return _dup(descriptor);
}
void replace(int descriptor, int by) {
  _dup2(by, descriptor);
}
void closeDescriptor(int descriptor) {
  _close(descriptor);
}
int descriptorOf(std::FILE* stream) {
  return _fileno(stream);
}
int openNowhere() {
  return _open("NUL", _O_WRONLY);
}

// A file in the user's temporary folder that is deleted when it is closed.
std::FILE* temporaryFile(int /*descriptor*/) {
  wchar_t folder[MAX_PATH + 1];
  wchar_t name[MAX_PATH + 1];
  if (GetTempPathW(MAX_PATH, folder) == 0) return nullptr;
  if (GetTempFileNameW(folder, L"pen", 0, name) == 0) return nullptr;
  return _wfopen(name, L"w+bD");
}

#else

int duplicate(int descriptor) {
  return fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
}
void replace(int descriptor, int by) {
  dup2(by, descriptor);
}
void closeDescriptor(int descriptor) {
  close(descriptor);
}
int descriptorOf(std::FILE* stream) {
  return fileno(stream);
}
int openNowhere() {
  return open("/dev/null", O_WRONLY | O_CLOEXEC);
}

#ifdef __EMSCRIPTEN__

// A descriptor is duplicated here by opening its path again: the file must keep its name.
// Everything is in memory, and the next capture empties it.
std::FILE* temporaryFile(int descriptor) {
  return std::fopen(("/tmp/penwick-captured-" + std::to_string(descriptor)).c_str(), "w+b");
}

#else

// In memory: a module is sent many messages, and each takes two files. Where the system has none in
// memory, in its temporary folder.
std::FILE* temporaryFile(int /*descriptor*/) {
  const int inMemory = ::memfd_create("penwick", MFD_CLOEXEC);
  if (inMemory < 0) return std::tmpfile();
  std::FILE* const file = ::fdopen(inMemory, "w+b");
  if (file == nullptr) closeDescriptor(inMemory);
  return file;
}

#endif

#endif

constexpr char kNotKept[] = "what the plug-in printed is lost: no temporary file can be created\n";

// What the streams still buffer goes where it was meant to go; a failure stays marked in them.
void flushAll() {
  std::cout.flush();
  std::cerr.flush();
  std::clog.flush();
  static_cast<void>(std::fflush(stdout));
  static_cast<void>(std::fflush(stderr));
}

std::string contentOf(std::FILE* file) {
  std::string content;
  char buffer[4096];
  std::rewind(file);
  while (const std::size_t size = std::fread(buffer, 1, sizeof buffer, file))
    content.append(buffer, size);
  return content;
}

}  // namespace

CapturedOutput& CapturedOutput::operator+=(const CapturedOutput& more) {
  standardOutput += more.standardOutput;
  standardError += more.standardError;
  return *this;
}

OutputCapture::OutputCapture() {
  flushAll();
  output_ = redirect(stdout);
  error_ = redirect(stderr);
}

OutputCapture::~OutputCapture() {
  finish();
}

CapturedOutput OutputCapture::finish() {
  if (!std::exchange(active_, false)) return {};
  flushAll();
  const bool kept = output_.captured != nullptr && error_.captured != nullptr;
  CapturedOutput captured{restore(output_), restore(error_)};
  if (!kept) captured.standardError += kNotKept;
  return captured;
}

OutputCapture::Stream OutputCapture::redirect(std::FILE* stream) {
  Stream redirected;
  redirected.stream = stream;
  const int descriptor = descriptorOf(stream);
  if (descriptor < 0) return redirected;
  redirected.saved = duplicate(descriptor);
  redirected.captured = temporaryFile(descriptor);
  if (redirected.captured != nullptr) {
    replace(descriptor, descriptorOf(redirected.captured));
  } else if (const int nowhere = openNowhere(); nowhere >= 0) {
    replace(descriptor, nowhere);
    closeDescriptor(nowhere);
  }
  return redirected;
}

std::string OutputCapture::restore(Stream& stream) {
  const int descriptor = descriptorOf(stream.stream);
  if (stream.saved >= 0) {
    replace(descriptor, stream.saved);
    closeDescriptor(stream.saved);
  } else if (descriptor >= 0) {
    closeDescriptor(descriptor);  // it was closed before
  }
  if (stream.captured == nullptr) return {};
  std::string content = contentOf(stream.captured);
  static_cast<void>(std::fclose(stream.captured));  // it was read to its end
  stream.captured = nullptr;
  return content;
}

}  // namespace embedded
