#include "penfile/pen_file_stream.h"

namespace Orvo {

PenFileStream::PenFileStream(const wchar_t* path) : PenFileStream(platform::openFile(path, "rb")) {}

void PenFileStream::fallShort() {
  state_ = std::ferror(file_.get()) != 0 ? State::failed : State::atEnd;
}

void PenFileStream::seek(std::int64_t position) {
  if (!isOpen() || failed()) return;
  const bool moved = platform::seekTo(file_.get(), position);
  state_ = moved ? State::good : State::failed;
}

std::int64_t PenFileStream::measure() {
  if (!isOpen() || !platform::seekToEnd(file_.get())) return -1;
  return platform::tell(file_.get());
}

}  // namespace Orvo
