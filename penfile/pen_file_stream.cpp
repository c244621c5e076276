#include "penfile/pen_file_stream.h"

namespace Orvo {

PenFileStream::PenFileStream(const wchar_t* path) : PenFileStream(platform::openFile(path, "rb")) {}

PenFileStream::~PenFileStream() {
  if (file_ != nullptr) std::fclose(file_);
}

void PenFileStream::comeShort() {
  state_ = std::ferror(file_) != 0 ? State::failed : State::atEnd;
}

void PenFileStream::seek(std::int64_t position) {
  if (!isOpen() || failed()) return;
  const bool moved = platform::seekTo(file_, position);
  state_ = moved ? State::good : State::failed;
}

std::int64_t PenFileStream::measure() {
  if (!isOpen() || !platform::seekToEnd(file_)) return -1;
  return platform::tell(file_);
}

}  // namespace Orvo
