// A device that fails, and a folder in place of a file.

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>

#include "penfile/document_loader.h"
#include "tests/penfile/parsing.h"
#include "tests/support/pen/log_capture.h"

namespace {

using Orvo::ParseFailure;
using Orvo::PnxParser;
using pentest::Bytes;
using pentest::PenFileBuilder;

// Hands out its bytes one by one; the read behind the last one fails.
struct Device {
  Bytes bytes;
  std::size_t position = 0;

  static ssize_t read(void* cookie, char* buffer, std::size_t size) {
    auto* device = static_cast<Device*>(cookie);
    if (device->position >= device->bytes.size()) {
      errno = EIO;
      return -1;
    }
    if (size == 0) return 0;
    *buffer = static_cast<char>(device->bytes[device->position++]);
    return 1;
  }

  platform::File open() {
    return platform::File(fopencookie(this, "rb", {&Device::read, nullptr, nullptr, nullptr}));
  }
};

PenFileBuilder recording() {
  return PenFileBuilder().descriptor().coordinate(1, 1).pressure(6, 5).time(17, 0, 0, 1).status(1);
}

TEST(ReadError, WhereverItStrikesIsAFailureAndNeverTheEnd) {
  const pentest::LogCapture log;
  const Bytes whole = recording().data();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    Device device{Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))};
    PnxParser parser(device.open());
    bool result = true;
    const auto lines = log.linesOfWork([&] { result = parser.parse(); });
    EXPECT_FALSE(result) << length;
    EXPECT_FALSE(parser.document->complete.value) << length;
    EXPECT_EQ(parser.report().failure, ParseFailure::readError) << length;
    // No packet is blamed for what the device did, once the descriptor's format is read.
    EXPECT_EQ(lines.empty(), length >= 4) << length;
  }
}

TEST(ReadError, IsReportedAtThePacketItStrikes) {
  Device device{PenFileBuilder().descriptor().coordinate(1, 1).bytes({97, 6, 0}).data()};
  PnxParser parser(device.open());
  EXPECT_FALSE(parser.parse());
  EXPECT_EQ(parser.report().failedPacket.offset, 12);
  EXPECT_EQ(parser.document->back().back().size(), 1U);
}

TEST(ReadError, OfADeviceThatCannotSkipIsAFailure) {
  Device device{PenFileBuilder().descriptor().unknown(200, 5, {1, 2, 3}).coordinate(1, 1).data()};
  PnxParser parser(device.open());
  EXPECT_FALSE(parser.parse());
  EXPECT_EQ(parser.report().failure, ParseFailure::readError);
}

TEST(ReadError, IsWhatAFolderGives) {
  const pentest::LogCapture log;
  const pentest::TemporaryFolder folder;
  log.linesOfWork([&] {
    PnxParser parser(folder.path().wstring().c_str());
    EXPECT_FALSE(parser.parse());
    EXPECT_EQ(parser.report().failure, ParseFailure::readError);
    EXPECT_FALSE(Orvo::loadDocument(folder.path().wstring().c_str()));
  });
}

}  // namespace
