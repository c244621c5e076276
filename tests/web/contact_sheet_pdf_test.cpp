// The parts of a contact sheet in PDF. How its pages look is seen through the command.
#include "web/contact_sheet_pdf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/web/cards.h"
#include "web/png_image.h"
#include "web/win_ansi.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using webtest::soundCard;

std::string bigEndian(std::uint32_t number) {
  std::string bytes;
  for (const unsigned shift : {24U, 16U, 8U, 0U})
    bytes += static_cast<char>(number >> shift & 0xFFU);
  return bytes;
}

std::string chunk(const std::string& type, const std::string& data) {
  return bigEndian(static_cast<std::uint32_t>(data.size())) + type + data + "sum.";
}

// The header says 8 bits a channel, the colour type, and the interlacing.
std::string pngFile(char colorType, char interlacing = 0) {
  const std::string header =
      bigEndian(3) + bigEndian(2) + std::string{8, colorType, 0, 0, interlacing};
  return "\x89PNG\r\n\x1A\n" + chunk("IHDR", header) + chunk("IDAT", "ab") + chunk("pHYs", "x") +
         chunk("IDAT", "c") + chunk("IEND", "");
}

TEST(PngImage, HasTheSizeAndThePixelsOfAllItsChunks) {
  const auto image = web::readPng(pngFile(2));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->width, 3);
  EXPECT_EQ(image->height, 2);
  EXPECT_EQ(image->channels, 3);
  EXPECT_EQ(image->pixels, "abc");
}

TEST(PngImage, MayBeGrey) {
  EXPECT_EQ(web::readPng(pngFile(0))->channels, 1);
}

TEST(PngImage, IsOpaqueAndNotInterlaced) {
  EXPECT_FALSE(web::readPng(pngFile(4)));
  EXPECT_FALSE(web::readPng(pngFile(6)));
  EXPECT_FALSE(web::readPng(pngFile(2, 1)));
}

TEST(PngImage, CannotBeReadFromDamagedBytes) {
  const std::string file = pngFile(2);
  EXPECT_FALSE(web::readPng(""));
  EXPECT_FALSE(web::readPng("GIF89a"));
  EXPECT_FALSE(web::readPng(file.substr(0, 8)));
  EXPECT_FALSE(web::readPng(file.substr(0, 40)));
}

TEST(WinAnsi, HasTheCharactersOfWesternLanguages) {
  const web::WinAnsi text = web::toWinAnsi("Zürich – 3 €");
  EXPECT_EQ(text.bytes, "Z\xFCrich \x96 3 \x80");
  EXPECT_FALSE(text.hasGaps);
}

TEST(WinAnsi, SaysWhereItLacksACharacter) {
  const web::WinAnsi text = web::toWinAnsi("灯台 1");
  EXPECT_EQ(text.bytes, "?? 1");
  EXPECT_TRUE(text.hasGaps);
}

TEST(WinAnsi, TakesBytesThatAreNoCharacters) {
  EXPECT_EQ(web::toWinAnsi("a\xFF\nb").bytes, "a? b");
}

TEST(ContactSheetPdf, HasAPageForEveryTwentyCards) {
  const auto pagesOf = [](std::size_t cards) {
    return web::contactSheetPdf(std::vector<web::Card>(cards, soundCard()), "Drawings").bytes;
  };
  EXPECT_THAT(pagesOf(20), HasSubstr("/Count 1"));
  EXPECT_THAT(pagesOf(21), HasSubstr("/Count 2"));
  EXPECT_THAT(pagesOf(0), HasSubstr("/Count 1"));
}

TEST(ContactSheetPdf, CountsTheCardsWhoseNamesItCannotWrite) {
  web::Card card = soundCard();
  card.name = "灯台.pnx";
  const auto pages = web::contactSheetPdf({card, soundCard(), card}, "Drawings");
  EXPECT_EQ(pages.cardsWithGaps, 2U);
  EXPECT_EQ(pages.problem, "");
  EXPECT_THAT(pages.bytes, StartsWith("%PDF-1."));
}

}  // namespace
