#include "web/contact_sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "tests/web/cards.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using web::Card;
using webtest::soundCard;

std::string sheetOf(const Card& card) {
  return web::contactSheet({card}, "Drawings");
}

TEST(ContactSheet, ShowsThePictureWithItsNameForThoseWhoCannotSeeIt) {
  EXPECT_THAT(sheetOf(soundCard()),
              HasSubstr("width=\"200\" height=\"100\" alt=\"the drawing of cup.pnx\" "
                        "src=\"data:image/png;base64,Zm9v\""));
}

TEST(ContactSheet, LinksToTheRecording) {
  EXPECT_THAT(sheetOf(soundCard()), HasSubstr("<a href=\"drawings/cup.pnx\">cup.pnx</a>"));
}

TEST(ContactSheet, TellsDateSizeLayersAndStrokes) {
  const std::string sheet = sheetOf(soundCard());
  EXPECT_THAT(sheet, HasSubstr("<p>2012-05-31 14:07</p>"));
  EXPECT_THAT(sheet, HasSubstr("<p>210 × 100 mm, 1 layer, 12 strokes</p>"));
  EXPECT_THAT(sheet, HasSubstr("<p>sound</p>"));
}

TEST(ContactSheet, SaysWhatIsWrongWithARecording) {
  Card card = soundCard();
  card.problem = "the file ends inside a packet";
  const std::string sheet = sheetOf(card);
  EXPECT_THAT(sheet, HasSubstr("<p class=\"bad\">the file ends inside a packet</p>"));
  EXPECT_THAT(sheet, HasSubstr("data-bad=\"1\""));
  EXPECT_THAT(sheet, Not(HasSubstr("<p>sound</p>")));
}

TEST(ContactSheet, SaysWhereThereIsNoPicture) {
  Card card = soundCard();
  card.picture.clear();
  const std::string sheet = sheetOf(card);
  EXPECT_THAT(sheet, HasSubstr("no picture"));
  EXPECT_THAT(sheet, Not(HasSubstr("<img")));
  EXPECT_THAT(sheet, Not(HasSubstr("mm,")));
}

TEST(ContactSheet, NoNameCanBecomeMarkup) {
  Card card = soundCard();
  card.name = "<b onload=\"x\">&\n";
  const std::string sheet = web::contactSheet({card}, "a<b");
  EXPECT_THAT(sheet, HasSubstr(">&lt;b onload=&quot;x&quot;&gt;&amp; </a>"));
  EXPECT_THAT(sheet, HasSubstr("<title>a&lt;b</title>"));
  EXPECT_THAT(sheet, Not(HasSubstr("<b onload")));
}

TEST(ContactSheet, MayLoadNothingFromAnywhere) {
  EXPECT_THAT(sheetOf(soundCard()), HasSubstr("content=\"default-src 'none'; img-src data:;"));
}

TEST(ContactSheet, CountsTheRecordingsAlsoWithoutScripts) {
  const std::vector<Card> two(2, soundCard());
  EXPECT_THAT(web::contactSheet(two, "Drawings"), HasSubstr("role=\"status\">2 recordings<"));
}

TEST(UrlOf, EncodesWhatWouldMeanSomethingElseInAUrl) {
  EXPECT_EQ(web::urlOf("a/b-c_d.e~1.pnx"), "a/b-c_d.e~1.pnx");
  EXPECT_EQ(web::urlOf("50% of #1?.pnx"), "50%25%20of%20%231%3F.pnx");
  EXPECT_EQ(web::urlOf("\xC3\xA4"), "%C3%A4");
}

}  // namespace
