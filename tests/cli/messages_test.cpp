// What is said about a file survives the way from one process to another.
#include "cli/messages.h"

#include <gtest/gtest.h>

#include "cli/fields.h"

namespace {

using cli::FileReport;
using cli::Message;
using cli::Outcome;

FileReport twoMessages() {
  return {Outcome::failed,
          {{Message::Kind::remark, "one\ntwo\n"}, {Message::Kind::error, std::string(70000, 'x')}},
          std::string("a\0b", 3)};
}

TEST(Reports, ComeBackAsTheyWere) {
  const auto report = cli::reportFromBytes(cli::toBytes(twoMessages()));
  ASSERT_TRUE(report);
  EXPECT_EQ(report->outcome, Outcome::failed);
  EXPECT_EQ(report->product, std::string("a\0b", 3));
  ASSERT_EQ(report->messages.size(), 2U);
  EXPECT_EQ(report->messages[0].kind, Message::Kind::remark);
  EXPECT_EQ(report->messages[0].lines, "one\ntwo\n");
  EXPECT_EQ(report->messages[1].kind, Message::Kind::error);
  EXPECT_EQ(report->messages[1].lines, std::string(70000, 'x'));
}

TEST(Reports, MayHaveNothingToSay) {
  const auto report = cli::reportFromBytes(cli::toBytes({Outcome::kept, {}, {}}));
  ASSERT_TRUE(report);
  EXPECT_EQ(report->outcome, Outcome::kept);
  EXPECT_TRUE(report->messages.empty());
}

// Where a message ends, the bytes that are left are a report of fewer messages.
TEST(Reports, AreNotReadFromBytesThatWereCutInsideAMessage) {
  const std::string bytes = cli::toBytes(twoMessages());
  const std::size_t head = (4 + 1) + (4 + 3);
  const std::size_t endOfFirst = head + (4 + 1) + (4 + 8);
  for (std::size_t size = 0; size < 100; ++size) {
    const bool isWhole = size == head || size == endOfFirst;
    EXPECT_EQ(cli::reportFromBytes(bytes.substr(0, size)).has_value(), isWhole) << size;
  }
}

TEST(Reports, AreNotReadFromOtherBytes) {
  EXPECT_FALSE(cli::reportFromBytes("\x03"));
  EXPECT_FALSE(cli::reportFromBytes(cli::joinFields({"\x03", ""})));
  EXPECT_FALSE(cli::reportFromBytes(cli::joinFields({"\x01", "", "\x03", "an unknown kind"})));
  EXPECT_TRUE(cli::reportFromBytes(cli::joinFields({"\x01", "", "\x02", "an error"})));
}

}  // namespace
