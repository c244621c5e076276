#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "penfile/pen_file_stream.h"
#include "tests/support/pen/open_bytes.h"
#include "tests/support/pen/pen_file_builder.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

using Orvo::PenFileStream;
using pentest::Bytes;
using testing::ElementsAre;

template <std::size_t size>
concept ReadsNumberOf = requires(PenFileStream& stream) {
  stream.readNumber<size>();
};
static_assert(ReadsNumberOf<1> && ReadsNumberOf<2> && ReadsNumberOf<3> && ReadsNumberOf<4>);
static_assert(!ReadsNumberOf<0> && !ReadsNumberOf<5>);

platform::File threeBytes() {
  return pentest::openBytes(Bytes{1, 2, 3});
}

TEST(PenFileStream, NoticesTheEndOnlyWhenAReadFallsShort) {
  PenFileStream stream(threeBytes());
  EXPECT_THAT(stream.read<3>(), ElementsAre(1, 2, 3));
  EXPECT_FALSE(stream.atEnd());
  unsigned char more = 9;
  EXPECT_FALSE(stream.readByte(more));
  EXPECT_EQ(more, 0);
  EXPECT_TRUE(stream.atEnd());
  EXPECT_FALSE(stream.failed());
  EXPECT_FALSE(stream.isReadable());
}

TEST(PenFileStream, FillsWhatIsMissingWithZeros) {
  PenFileStream stream(threeBytes());
  EXPECT_THAT(stream.read<5>(), ElementsAre(1, 2, 3, 0, 0));
  EXPECT_TRUE(stream.atEnd());
}

TEST(PenFileStream, SeeksBeyondTheEndAndBackAgain) {
  PenFileStream stream(threeBytes());
  stream.seek(1000);
  EXPECT_TRUE(stream.isReadable());
  unsigned char byte = 0;
  EXPECT_FALSE(stream.readByte(byte));
  EXPECT_TRUE(stream.atEnd());
  stream.seek(1);
  EXPECT_FALSE(stream.atEnd());
  EXPECT_TRUE(stream.readByte(byte));
  EXPECT_EQ(byte, 2);
}

TEST(PenFileStream, ReadsANumberOfUpToFourBytes) {
  EXPECT_EQ(PenFileStream(threeBytes()).readNumber<1>(), 0x01U);
  EXPECT_EQ(PenFileStream(threeBytes()).readNumber<2>(), 0x0102U);
  EXPECT_EQ(PenFileStream(threeBytes()).readNumber<3>(), 0x010203U);
  EXPECT_EQ(PenFileStream(threeBytes()).readNumber<4>(), 0x01020300U);
}

TEST(PenFileStream, KnowsItsPosition) {
  PenFileStream stream(threeBytes());
  EXPECT_EQ(stream.position(), 0);
  stream.read<2>();
  EXPECT_EQ(stream.position(), 2);
  stream.seek(1000);
  EXPECT_EQ(stream.position(), 1000);
  EXPECT_EQ(PenFileStream(platform::File()).position(), -1);
}

TEST(PenFileStream, MeasuresItsFile) {
  PenFileStream stream(threeBytes());
  EXPECT_EQ(stream.measure(), 3);
}

TEST(PenFileStream, OfAMissingFileIsClosed) {
  const pentest::TemporaryFolder folder;
  PenFileStream stream((folder / "missing").wstring().c_str());
  EXPECT_FALSE(stream.isOpen());
  EXPECT_FALSE(stream.isReadable());
  EXPECT_EQ(stream.measure(), -1);
  unsigned char byte = 9;
  EXPECT_FALSE(stream.readByte(byte));
  stream.seek(0);
  EXPECT_FALSE(stream.isReadable());
}

}  // namespace
