#include "rescue/pen_source.h"

#include <algorithm>

namespace rescue {
namespace {

constexpr bool isPressureAlgorithm(unsigned char byte) {
  return byte == 1 || byte == 5 || byte == 6;
}

}  // namespace

std::size_t lengthOf(PacketTag tag) {
  return Orvo::knownLength(tag);
}

std::size_t PenBytes::knownPacket(std::size_t offset) const {
  if (!hasHead(offset)) return 0;
  const std::size_t length = lengthOf(tag(offset));
  if (length == 0 || this->length(offset) != length || size() - offset < length) return 0;
  if (tag(offset) == PacketTag::pressureData && !isPressureAlgorithm((*this)[offset + 2])) return 0;
  if (tag(offset) == PacketTag::fileDescriptor && (*this)[offset + 3] != 2) return 0;
  return length;
}

std::size_t PenBytes::unknownPacket(std::size_t offset) const {
  if (!hasHead(offset) || lengthOf(tag(offset)) != 0) return 0;
  const std::size_t length = this->length(offset);
  return length >= 2 && size() - offset >= length ? length : 0;
}

std::size_t Source::placeOf(std::size_t offset) const {
  const auto behind = std::upper_bound(
      shifts_.begin(), shifts_.end(), offset,
      [](std::size_t wanted, const Shift& shift) { return wanted < shift.offset; });
  const Shift& shift = *std::prev(behind);
  return shift.place + (offset - shift.offset);
}

void Source::apply(const std::vector<Edit>& edits) {
  if (edits.empty()) return;
  std::string changed;
  changed.reserve(bytes_.size() + edits.size());
  std::vector<Shift> shifts;
  std::size_t done = 0;
  auto next = shifts_.begin();
  const auto keepUpTo = [&](std::size_t end) {
    shifts.push_back({changed.size(), placeOf(done)});
    for (; next != shifts_.end() && next->offset < end; ++next) {
      if (next->offset > done) {
        shifts.push_back({changed.size() + (next->offset - done), next->place});
      }
    }
    changed.append(bytes_, done, end - done);
  };
  for (const Edit& edit : edits) {
    keepUpTo(edit.begin);
    changed += edit.text;
    done = edit.end;
  }
  keepUpTo(bytes_.size());
  bytes_ = std::move(changed);
  shifts_ = std::move(shifts);
}

}  // namespace rescue
