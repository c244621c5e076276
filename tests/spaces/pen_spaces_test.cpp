// Recordings with every damage of one place: the parser agrees with the reference model, the packet
// reader stops where the parser does, a cut recording has the first points of the whole one, and
// what is rescued opens.
#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "facts/packet_reader.h"
#include "tests/penfile/reference_reading.h"
#include "tests/spaces/fuzz_checks.h"
#include "tests/spaces/small_files.h"
#include "tests/support/share/share.h"

namespace {

using pentest::Bytes;
using pentest::Parsed;
using spaces::SmallFile;

std::vector<SmallFile> recordings() {
  const std::filesystem::path samples = PENWICK_SAMPLES;
  std::vector<SmallFile> all = spaces::spreadOver(PENWICK_CORPUS "/pen", 17);
  for (const char* name : {"signature.pnx", "tilted-sketch.pnx", "handwriting.pnx"})
    all.push_back(spaces::headOf(samples / name, 4096));
  return all;
}

Bytes bytesOf(const std::string& text) {
  return {text.begin(), text.end()};
}

// Where the packet reader says that the parser gives up or gets stuck.
std::optional<std::int64_t> stopOf(const std::string& text) {
  bool given = false;
  facts::PacketReader reader([&]() -> std::string_view {
    if (given) return {};
    given = true;
    return text;
  });
  while (const facts::Packet* packet = reader.next()) {
    if (packet->failure != Orvo::ParseFailure::none || packet->oddity == facts::Oddity::endless) {
      return packet->offset;
    }
  }
  return std::nullopt;
}

void expectSameStop(const std::string& text, const Parsed& parsed) {
  const Orvo::ParseReport& report = parsed.report();
  std::optional<std::int64_t> stop = report.endlessPacket;
  using Failure = Orvo::ParseFailure;
  const bool failed = report.failure != Failure::none && report.failure != Failure::emptyFile;
  if (!stop && failed) stop = report.failedPacket.offset;
  ASSERT_EQ(stopOf(text), stop);
}

void expectSameReading(const std::string& text, const Parsed& parsed) {
  pentest::expectReferenceReading(bytesOf(text), parsed);
  expectSameStop(text, parsed);
}

void expectSound(const std::string& text, const Parsed& parsed) {
  expectSameReading(text, parsed);
  spaces::run(&checkPenRescue, text);
}

bool areSame(const Orvo::Point& a, const Orvo::Point& b) {
  return a.x.value == b.x.value && a.y.value == b.y.value && a.z.value == b.z.value &&
         a.pressure.value == b.pressure.value && a.tiltX.value == b.tiltX.value &&
         a.tiltY.value == b.tiltY.value && a.timestamp.value == b.timestamp.value;
}

// Packets behind a point may change the last one so far, but not where it lies. A packet that is
// cut may be any point, and one that the whole recording leaves out.
void expectFirstPoints(const std::vector<Orvo::Point>& whole, const Parsed& parsed) {
  std::vector<Orvo::Point> points = parsed.points();
  if (parsed.report().cutPacket && !points.empty()) points.pop_back();
  if (points.empty()) return;
  ASSERT_LE(points.size(), whole.size());
  const std::size_t last = points.size() - 1;
  for (std::size_t i = 0; i < last; ++i)
    ASSERT_TRUE(areSame(points[i], whole[i])) << i;
  ASSERT_EQ(points[last].x.value, whole[last].x.value);
  ASSERT_EQ(points[last].y.value, whole[last].y.value);
}

class SmallRecording : public pentest::SilentTest {
 protected:
  void SetUp() override {
    SilentTest::SetUp();
    spaces::nameCaseAtTheEnd();
  }

  static std::size_t total(const std::vector<SmallFile>& files, std::size_t perByte) {
    std::size_t bytes = 0;
    for (const SmallFile& file : files)
      bytes += file.bytes.size();
    return bytes * perByte;
  }

  static void name(const SmallFile& file, const std::string& place) {
    spaces::currentCase = file.name + ", " + place;
  }
};

TEST_F(SmallRecording, CutAnywhereIsReadAsTheReferenceModelReadsItAndHasTheFirstPoints) {
  const std::vector<SmallFile> files = recordings();
  ASSERT_EQ(files.size(), 20U);
  test::Share share("cut recordings", total(files, 1), 1000);
  for (const SmallFile& file : files) {
    const std::vector<Orvo::Point> whole = Parsed(bytesOf(file.bytes)).points();
    spaces::eachCut(file.bytes, [&](const std::string& cut, const std::string& place) {
      if (HasFatalFailure() || !share.takesNext()) return;
      name(file, place);
      SCOPED_TRACE(spaces::currentCase);
      const Parsed parsed(bytesOf(cut));
      expectSound(cut, parsed);
      expectFirstPoints(whole, parsed);
    });
  }
}

TEST_F(SmallRecording, WithAnyByteChangedIsReadAsTheReferenceModelReadsIt) {
  const std::vector<SmallFile> files = recordings();
  test::Share share("changed recordings", total(files, 12), 1000);
  for (const SmallFile& file : files) {
    spaces::eachChange(file.bytes, [&](const std::string& changed, const std::string& place) {
      if (HasFatalFailure() || !share.takesNext()) return;
      name(file, place);
      SCOPED_TRACE(spaces::currentCase);
      expectSound(changed, Parsed(bytesOf(changed)));
    });
  }
}

// What may follow a packet: nothing, a byte, less than a packet, known packets, and more bytes than
// any length says.
std::vector<std::string> tails() {
  const std::string known("\x61\x06\x00\x01\x00\x02\xF1\x03\x80\x61\x06\x00\x03\x00\x04", 15);
  std::string many;
  for (int i = 0; i < 20; ++i)
    many += known;
  return {"",   std::string(1, '\x06'), std::string("\x02\x00\x61", 3), known,
          many, std::string(300, '\0')};
}

TEST_F(SmallRecording, WithAnyTagAndLengthCodeAndTailIsReadAsTheReferenceModelReadsIt) {
  const std::string head("\x01\x06\x00\x02\x00\x00\x61\x06\x00\x0A\x00\x0A", 12);
  const std::vector<std::string> all = tails();
  test::Share share("tags, length codes and tails", 65536 * all.size(), 5000);
  for (unsigned tag = 0; tag < 256; ++tag) {
    for (unsigned code = 0; code < 256; ++code) {
      for (std::size_t tail = 0; tail < all.size(); ++tail) {
        if (!share.takesNext()) continue;
        spaces::currentCase = "tag " + std::to_string(tag) + ", length code " +
                              std::to_string(code) + ", tail " + std::to_string(tail);
        const std::string text =
            head + static_cast<char>(tag) + static_cast<char>(code) + all[tail];
        expectSameReading(text, Parsed(bytesOf(text)));
        ASSERT_FALSE(HasFatalFailure()) << spaces::currentCase;
      }
    }
  }
}

}  // namespace
