#include "stylelib/inflater.h"

#include <array>
#include <new>
#include <zlib.h>

namespace stylelib {

struct Inflater::State {
  z_stream stream{};
  std::array<char, 65536> buffer;
};

Inflater::Inflater() : state_(std::make_unique<State>()) {
  if (inflateInit(&state_->stream) != Z_OK) throw std::bad_alloc();
}

Inflater::~Inflater() {
  inflateEnd(&state_->stream);
}

Inflater::Result Inflater::append(std::string_view bytes, std::string& out, std::size_t most) {
  auto& [stream, buffer] = *state_;
  inflateReset(&stream);
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  int state = Z_OK;
  while (state == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
    stream.avail_out = static_cast<uInt>(buffer.size());
    state = inflate(&stream, Z_NO_FLUSH);
    const std::size_t count = buffer.size() - stream.avail_out;
    if (count > most - out.size()) return {Outcome::tooLarge, stream.total_in};
    out.append(buffer.data(), count);
  }
  return {state == Z_STREAM_END ? Outcome::whole : Outcome::damaged, stream.total_in};
}

}  // namespace stylelib
