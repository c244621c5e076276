#include "tests/rescue/damage.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace damage {
namespace {

using std::size_t;
using std::string_view;

Damaged intact(string_view sound) {
  Damaged file{std::string(sound), std::vector<std::int64_t>(sound.size())};
  std::iota(file.origin.begin(), file.origin.end(), 0);
  return file;
}

void put(Damaged& file, size_t place, char byte) {
  if (file.bytes[place] == byte) return;
  file.bytes[place] = byte;
  file.origin[place] = Damaged::kNowhere;
}

void append(Damaged& file, char byte, std::int64_t origin = Damaged::kNowhere) {
  file.bytes += byte;
  file.origin.push_back(origin);
}

void append(Damaged& file, const Damaged& other, size_t from, size_t to) {
  for (size_t i = from; i < to; ++i)
    append(file, other.bytes[i], other.origin[i]);
}

// -- single bytes -------------------------------------------------------------

Damaged flipBit(string_view sound, string_view /*other*/, Random& random) {
  Damaged file = intact(sound);
  if (sound.empty()) return file;
  const size_t place = random.below(sound.size());
  put(file, place, static_cast<char>(sound[place] ^ (1 << random.below(8))));
  return file;
}

template <size_t count>
Damaged changeBytes(string_view sound, string_view /*other*/, Random& random) {
  Damaged file = intact(sound);
  for (size_t i = 0; i < count && !sound.empty(); ++i) {
    const size_t place = random.below(sound.size());
    put(file, place, static_cast<char>(sound[place] + 1 + static_cast<int>(random.below(255))));
  }
  return file;
}

// -- runs ---------------------------------------------------------------------

struct Run {
  size_t begin;
  size_t end;
};

// A run somewhere in the file with room for `times` of them.
Run chooseRun(size_t size, size_t wanted, Random& random, size_t times = 1) {
  const size_t length = std::min(wanted, size / 2);
  const size_t begin = random.below(size - times * length + 1);
  return {begin, begin + length};
}

template <size_t length, char value>
Damaged fillRun(string_view sound, string_view /*other*/, Random& random) {
  Damaged file = intact(sound);
  const Run run = chooseRun(sound.size(), length, random);
  for (size_t i = run.begin; i < run.end; ++i)
    put(file, i, value);
  return file;
}

template <size_t length>
Damaged noiseRun(string_view sound, string_view /*other*/, Random& random) {
  Damaged file = intact(sound);
  const Run run = chooseRun(sound.size(), length, random);
  for (size_t i = run.begin; i < run.end; ++i)
    put(file, i, random.byte());
  return file;
}

template <size_t length>
Damaged removeRun(string_view sound, string_view /*other*/, Random& random) {
  const Damaged whole = intact(sound);
  const Run run = chooseRun(sound.size(), length, random);
  Damaged file;
  append(file, whole, 0, run.begin);
  append(file, whole, run.end, sound.size());
  return file;
}

template <size_t length>
Damaged doubleRun(string_view sound, string_view /*other*/, Random& random) {
  const Damaged whole = intact(sound);
  const Run run = chooseRun(sound.size(), length, random);
  Damaged file;
  append(file, whole, 0, run.end);
  append(file, whole, run.begin, sound.size());
  return file;
}

template <size_t length>
Damaged swapRuns(string_view sound, string_view /*other*/, Random& random) {
  const Damaged whole = intact(sound);
  const Run run = chooseRun(sound.size(), length, random, 2);
  const size_t second = 2 * run.end - run.begin;
  Damaged file;
  append(file, whole, 0, run.begin);
  append(file, whole, run.end, second);
  append(file, whole, run.begin, run.end);
  append(file, whole, second, sound.size());
  return file;
}

// -- ends ---------------------------------------------------------------------

Damaged cut(string_view sound, string_view /*other*/, Random& random) {
  return intact(sound.substr(0, random.below(sound.size())));
}

template <size_t length>
Damaged loseHead(string_view sound, string_view /*other*/, Random& /*random*/) {
  Damaged file;
  append(file, intact(sound), std::min(length, sound.size()), sound.size());
  return file;
}

// Bytes that are no part of the file: noise, zeros, or text such as a mail program writes.
Damaged junk(Random& random) {
  constexpr string_view kText =
      "Content-Type: application/octet-stream\r\nContent-Length: 4711\r\n\r\n";
  Damaged file;
  const size_t length = 1 + random.below(600);
  const size_t sort = random.below(3);
  for (size_t i = 0; i < length; ++i)
    append(file, sort == 0 ? random.byte() : sort == 1 ? '\0' : kText[i % kText.size()]);
  return file;
}

Damaged junkInFront(string_view sound, string_view /*other*/, Random& random) {
  Damaged file = junk(random);
  append(file, intact(sound), 0, sound.size());
  return file;
}

Damaged junkBehind(string_view sound, string_view /*other*/, Random& random) {
  Damaged file = intact(sound);
  const Damaged more = junk(random);
  append(file, more, 0, more.bytes.size());
  return file;
}

Damaged join(string_view sound, string_view other, Random& /*random*/) {
  Damaged file = intact(sound);
  for (size_t i = 0; i < other.size(); ++i)
    append(file, other[i], static_cast<std::int64_t>(sound.size() + i));
  return file;
}

// -- transfers that take the file for text --------------------------------------

Damaged toCarriageReturns(string_view sound, string_view /*other*/, Random& /*random*/) {
  Damaged file;
  for (size_t i = 0; i < sound.size(); ++i) {
    if (sound[i] == '\n') append(file, '\r');
    append(file, sound[i], static_cast<std::int64_t>(i));
  }
  return file;
}

Damaged fromCarriageReturns(string_view sound, string_view /*other*/, Random& /*random*/) {
  Damaged file;
  for (size_t i = 0; i < sound.size(); ++i) {
    if (sound.substr(i, 2) != "\r\n") append(file, sound[i], static_cast<std::int64_t>(i));
  }
  return file;
}

Damaged toQuestionMarks(string_view sound, string_view /*other*/, Random& /*random*/) {
  Damaged file = intact(sound);
  for (size_t i = 0; i < sound.size(); ++i) {
    if (static_cast<unsigned char>(sound[i]) >= 0x80) put(file, i, '?');
  }
  return file;
}

constexpr std::array<Kind, 30> kKinds{{
    {"one bit flipped", flipBit},
    {"one byte changed", changeBytes<1>},
    {"ten bytes changed", changeBytes<10>},
    {"16 bytes zeroed", fillRun<16, '\0'>},
    {"512 bytes zeroed", fillRun<512, '\0'>},
    {"4096 bytes zeroed", fillRun<4096, '\0'>},
    {"16 bytes set to FF", fillRun<16, '\xFF'>},
    {"512 bytes set to FF", fillRun<512, '\xFF'>},
    {"4096 bytes set to FF", fillRun<4096, '\xFF'>},
    {"16 bytes of noise", noiseRun<16>},
    {"512 bytes of noise", noiseRun<512>},
    {"4096 bytes of noise", noiseRun<4096>},
    {"16 bytes removed", removeRun<16>},
    {"512 bytes removed", removeRun<512>},
    {"4096 bytes removed", removeRun<4096>},
    {"16 bytes doubled", doubleRun<16>},
    {"512 bytes doubled", doubleRun<512>},
    {"4096 bytes doubled", doubleRun<4096>},
    {"16 bytes swapped with the next", swapRuns<16>},
    {"512 bytes swapped with the next", swapRuns<512>},
    {"4096 bytes swapped with the next", swapRuns<4096>},
    {"cut", cut},
    {"first 6 bytes lost", loseHead<6>},
    {"first 64 bytes lost", loseHead<64>},
    {"junk in front", junkInFront},
    {"junk behind", junkBehind},
    {"two recordings joined", join},
    {"0A turned into 0D 0A", toCarriageReturns},
    {"0D 0A turned into 0A", fromCarriageReturns},
    {"bytes from 80 up turned into '?'", toQuestionMarks},
}};

}  // namespace

std::span<const Kind> allKinds() {
  return kKinds;
}

}  // namespace damage
