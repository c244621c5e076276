#include "render/deflate.h"

#include <new>
#include <zlib.h>

namespace render {

namespace {

constexpr int kEffort = 2;

}  // namespace

std::string deflated(std::string_view bytes) {
  uLongf size = compressBound(bytes.size());
  std::string result(size, '\0');
  const int status = compress2(reinterpret_cast<Bytef*>(result.data()), &size,
                               reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), kEffort);
  if (status != Z_OK) throw std::bad_alloc();
  result.resize(size);
  return result;
}

}  // namespace render
