#include "web/contact_sheet_pdf.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>
#include <vector>

#include "web/card_words.h"
#include "web/png_image.h"
#include "web/win_ansi.h"

namespace web {

namespace {

using Handle = QPDFObjectHandle;

// A4, in points.
constexpr int kPageWidth = 595;
constexpr int kPageHeight = 842;
constexpr int kMargin = 30;
constexpr int kTitleHeight = 24;

constexpr std::size_t kColumns = 4;
constexpr std::size_t kRows = 5;
constexpr std::size_t kCardsOfPage = kColumns * kRows;
constexpr int kGap = 8;
constexpr int kCardWidth = (kPageWidth - 2 * kMargin - 3 * kGap) / 4;
constexpr int kCardHeight = (kPageHeight - 2 * kMargin - kTitleHeight - 4 * kGap) / 5;
constexpr int kLineHeight = 8;
constexpr int kLines = 5;
constexpr int kPaperHeight = kCardHeight - kLines * kLineHeight - 4;

/// So many letters of the font fit into a line of a card, as a rule; what is longer is clipped.
constexpr std::size_t kLettersOfLine = 36;

struct Place {
  int left;
  int bottom;
};

Place placeOf(std::size_t card) {
  const int column = static_cast<int>(card % kColumns);
  const int row = static_cast<int>(card / kColumns);
  return {kMargin + column * (kCardWidth + kGap),
          kPageHeight - kMargin - kTitleHeight - (row + 1) * kCardHeight - row * kGap};
}

std::string number(double value) {
  // In hundredths, so that no locale has a say.
  const long hundredths = static_cast<long>(value * 100);
  std::string digits = std::to_string(hundredths % 100);
  return std::to_string(hundredths / 100) + "." + std::string(2 - digits.size(), '0') + digits;
}

std::string rectangle(int left, int bottom, int width, int height) {
  return std::to_string(left) + " " + std::to_string(bottom) + " " + std::to_string(width) + " " +
         std::to_string(height) + " re";
}

class Pages {
 public:
  Pages(const std::vector<Card>& cards, const std::string& title) {
    pdf_.emptyPDF();
    font_ = pdf_.makeIndirectObject(Handle::parse(
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>"));
    const std::size_t pages =
        std::max<std::size_t>(1, (cards.size() + kCardsOfPage - 1) / kCardsOfPage);
    for (std::size_t i = 0; i < pages; ++i) {
      addPage(cards, i * kCardsOfPage,
              title + ", page " + std::to_string(i + 1) + " of " + std::to_string(pages));
    }
  }

  SheetPages result() {
    QPDFWriter writer(pdf_);
    writer.setOutputMemory();
    writer.setDeterministicID(true);
    writer.setCompressStreams(true);
    writer.write();
    const std::unique_ptr<Buffer> buffer(writer.getBuffer());
    return {{reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()}, {}, gaps_};
  }

 private:
  void addPage(const std::vector<Card>& cards, std::size_t first, const std::string& heading) {
    content_.clear();
    images_ = Handle::newDictionary();
    write(heading, 10, {kMargin, kPageHeight - kMargin - 10});
    for (std::size_t i = 0; i < kCardsOfPage && first + i < cards.size(); ++i)
      addCard(cards[first + i], placeOf(i), "/I" + std::to_string(i));

    Handle page = Handle::parse("<< /Type /Page >>");
    page.replaceKey("/MediaBox", Handle::parse("[0 0 " + std::to_string(kPageWidth) + " " +
                                               std::to_string(kPageHeight) + "]"));
    Handle resources = Handle::parse("<< /Font << >> >>");
    resources.getKey("/Font").replaceKey("/F", font_);
    resources.replaceKey("/XObject", images_);
    page.replaceKey("/Resources", resources);
    page.replaceKey("/Contents", Handle::newStream(&pdf_, content_));
    pdf_.addPage(pdf_.makeIndirectObject(page), false);
  }

  void addCard(const Card& card, Place place, const std::string& name) {
    const int paperBottom = place.bottom + kCardHeight - kPaperHeight;
    content_ += "q " + rectangle(place.left, place.bottom, kCardWidth, kCardHeight) + " W n ";
    if (const auto image = readPng(card.picture)) {
      addImage(*image, {place.left, paperBottom}, name);
    }
    bool hasGaps = false;
    int line = paperBottom;
    for (const std::string& words : linesOf(card))
      hasGaps = write(words, 7, {place.left + 3, line -= kLineHeight}) || hasGaps;
    content_ +=
        "Q 0.7 G 0.5 w " + rectangle(place.left, place.bottom, kCardWidth, kCardHeight) + " S\n";
    if (hasGaps) ++gaps_;
  }

  // In the middle of its paper, with a margin.
  void addImage(const PngImage& image, Place paper, const std::string& name) {
    constexpr double kInset = 4;
    const double scale = std::min((kCardWidth - 2 * kInset) / image.width,
                                  (kPaperHeight - 2 * kInset) / image.height);
    const double width = image.width * scale;
    const double height = image.height * scale;
    images_.replaceKey(name, imageOf(image));
    content_ += "q " + number(width) + " 0 0 " + number(height) + " " +
                number(paper.left + (kCardWidth - width) / 2) + " " +
                number(paper.bottom + (kPaperHeight - height) / 2) + " cm " + name + " Do Q\n";
  }

  // The rows keep the filters that they have in the PNG file.
  Handle imageOf(const PngImage& image) {
    const std::string width = std::to_string(image.width);
    Handle stream = Handle::newStream(&pdf_);
    stream.replaceDict(
        Handle::parse("<< /Type /XObject /Subtype /Image /BitsPerComponent 8 /Width " + width +
                      " /Height " + std::to_string(image.height) + " /ColorSpace " +
                      (image.channels == 1 ? "/DeviceGray" : "/DeviceRGB") + " >>"));
    stream.replaceStreamData(
        image.pixels, Handle::newName("/FlateDecode"),
        Handle::parse("<< /Predictor 15 /BitsPerComponent 8 /Columns " + width + " /Colors " +
                      std::to_string(image.channels) + " >>"));
    return stream;
  }

  static std::vector<std::string> linesOf(const Card& card) {
    std::vector<std::string> lines = inLines(card.name, kLettersOfLine, 2);
    for (const std::string& fact : factsOf(card)) {
      for (std::string& line : inLines(fact, kLettersOfLine, kLines))
        lines.push_back(std::move(line));
    }
    if (lines.size() > kLines) {
      lines.resize(kLines);
      lines.back() += "…";
    }
    return lines;
  }

  /// Whether the font lacks any of the characters.
  bool write(const std::string& words, int size, Place place) {
    const WinAnsi encoded = toWinAnsi(words);
    content_ += "BT /F " + std::to_string(size) + " Tf " + std::to_string(place.left) + " " +
                std::to_string(place.bottom) + " Td " + Handle::newString(encoded.bytes).unparse() +
                " Tj ET\n";
    return encoded.hasGaps;
  }

  QPDF pdf_;
  Handle font_;
  Handle images_;
  std::string content_;
  std::size_t gaps_ = 0;
};

}  // namespace

SheetPages contactSheetPdf(const std::vector<Card>& cards, const std::string& title) {
  try {
    return Pages(cards, title).result();
  } catch (const std::exception& problem) {
    return {{}, problem.what(), 0};
  }
}

}  // namespace web
