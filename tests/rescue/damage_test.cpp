#include "tests/rescue/damage.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using damage::allKinds;
using damage::Damaged;
using damage::Kind;
using damage::Random;

std::string everyByteTwice() {
  std::string bytes;
  for (int i = 0; i < 512; ++i)
    bytes += static_cast<char>(i);
  return bytes;
}

Damaged damagedBy(std::string_view name, std::string_view sound) {
  for (const Kind& kind : allKinds()) {
    Random random(7);
    if (kind.name == name) return kind.apply(sound, "", random);
  }
  ADD_FAILURE() << "no kind of damage is called " << name;
  return {};
}

TEST(Damage, HasThirtyKindsWithNamesOfTheirOwn) {
  std::set<std::string_view> names;
  for (const Kind& kind : allKinds())
    names.insert(kind.name);
  EXPECT_EQ(names.size(), 30U);
}

TEST(Damage, TellsForEachByteWhereItStoodAndChangesTheFile) {
  const std::string sound = "\r\n" + everyByteTwice();
  const std::string other = "another file";
  const std::string both = sound + other;
  for (const Kind& kind : allKinds()) {
    Random random(20121231);
    const Damaged file = kind.apply(sound, other, random);
    ASSERT_EQ(file.bytes.size(), file.origin.size()) << kind.name;
    EXPECT_NE(file.bytes, sound) << kind.name;
    for (std::size_t i = 0; i < file.bytes.size(); ++i) {
      if (file.origin[i] == Damaged::kNowhere) continue;
      ASSERT_EQ(file.bytes[i], both[static_cast<std::size_t>(file.origin[i])]) << kind.name;
    }
  }
}

TEST(Damage, IsTheSameForTheSameSeed) {
  const std::string sound = everyByteTwice();
  for (const Kind& kind : allKinds()) {
    Random first(3);
    Random second(3);
    EXPECT_EQ(kind.apply(sound, "other", first).bytes, kind.apply(sound, "other", second).bytes);
  }
}

TEST(Damage, OfTransfersAsTextIsDoneToEveryByte) {
  EXPECT_EQ(damagedBy("0A turned into 0D 0A", "a\nb\r\n").bytes, "a\r\nb\r\r\n");
  EXPECT_EQ(damagedBy("0D 0A turned into 0A", "a\nb\r\nc\r").bytes, "a\nb\nc\r");
  EXPECT_EQ(damagedBy("bytes from 80 up turned into '?'", "a\x80\x7F\xFF").bytes, "a?\x7F?");
}

TEST(Damage, OfRunsTakesAtMostHalfOfTheFile) {
  EXPECT_EQ(damagedBy("4096 bytes swapped with the next", "abcdEFGH").bytes, "EFGHabcd");
  EXPECT_EQ(damagedBy("4096 bytes removed", "abcdEFGH").bytes.size(), 4U);
  EXPECT_EQ(damagedBy("4096 bytes doubled", "abcdEFGH").bytes.size(), 12U);
}

}  // namespace
