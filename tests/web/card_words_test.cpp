#include "web/card_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/web/cards.h"

namespace {

using testing::ElementsAre;
using web::inLines;

TEST(FactsOfACard, AreDateSizeAndState) {
  EXPECT_THAT(web::factsOf(webtest::soundCard()),
              ElementsAre("2012-05-31 14:07", "210 × 100 mm, 1 layer, 12 strokes", "sound"));
}

TEST(FactsOfACard, OfARecordingThatCannotBeDrawnAreItsProblem) {
  web::Card card;
  card.problem = "it is a text file";
  EXPECT_THAT(web::factsOf(card), ElementsAre("it is a text file"));
}

TEST(Lines, AreBrokenAtBlanks) {
  EXPECT_THAT(inLines("one two three", 8, 3), ElementsAre("one two", "three"));
}

TEST(Lines, OfALongWordAreBrokenInIt) {
  EXPECT_THAT(inLines("abcdefgh", 3, 3), ElementsAre("abc", "def", "gh"));
}

TEST(Lines, CountCharactersNotBytes) {
  EXPECT_THAT(inLines("äöüß", 4, 1), ElementsAre("äöüß"));
}

TEST(Lines, SayThatSomethingIsCutOff) {
  EXPECT_THAT(inLines("abcdefgh", 3, 2), ElementsAre("abc", "de…"));
}

TEST(Lines, OfNothingAreNone) {
  EXPECT_THAT(inLines("", 3, 2), ElementsAre());
}

}  // namespace
