#include "translate/remarks.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using translate::describe;
using translate::Remark;
using translate::RemarkKind;
using translate::Remarks;

TEST(RemarkTexts, CountAndName) {
  EXPECT_EQ(describe({RemarkKind::channelLeftOut, 12, "C"}),
            "12 points of the channel \"C\" left out");
  EXPECT_EQ(describe({RemarkKind::penUpTraces, 1, ""}), "1 trace with the pen up left out");
  EXPECT_EQ(describe({RemarkKind::brushesNotDrawn, 2, ""}),
            "2 brushes kept, but strokes are drawn by their pressure alone");
  EXPECT_EQ(describe({RemarkKind::sizeAssumed, 3, "0.5"}),
            "3 traces without a unit, taken as 0.5 mm for each unit");
}

TEST(RemarkTexts, DifferForEveryKind) {
  std::set<std::string> texts;
  constexpr int kKinds = static_cast<int>(RemarkKind::nothingToDraw) + 1;
  for (int kind = 0; kind < kKinds; ++kind)
    texts.insert(describe({static_cast<RemarkKind>(kind), 7, "detail"}));
  EXPECT_EQ(texts.size(), static_cast<std::size_t>(kKinds));
}

TEST(RemarkList, AddsUpByKindOrByDetail) {
  Remarks remarks;
  remarks.add(RemarkKind::missingReference, 1, "#b");
  remarks.add(RemarkKind::channelLeftOut, 2, "C");
  remarks.add(RemarkKind::channelLeftOut, 3, "W");
  remarks.add(RemarkKind::channelLeftOut, 4, "C");
  remarks.add(RemarkKind::missingReference, 1, "#c");
  remarks.add(RemarkKind::penUpTraces, 0);
  EXPECT_EQ(remarks.all(), (std::vector<Remark>{{RemarkKind::channelLeftOut, 6, "C"},
                                                {RemarkKind::channelLeftOut, 3, "W"},
                                                {RemarkKind::missingReference, 2, "#b"}}));
}

TEST(RemarkList, StaysShort) {
  Remarks remarks;
  for (int i = 0; i < 1000; ++i)
    remarks.add(RemarkKind::channelLeftOut, 1, std::to_string(i));
  std::uint64_t count = 0;
  for (const Remark& remark : remarks.all())
    count += remark.count;
  EXPECT_EQ(remarks.all().size(), 100U);
  EXPECT_EQ(count, 1000U);
}

}  // namespace
