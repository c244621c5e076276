// What is true of every document, tested on a thousand random ones.

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>

#include "inkml/definitions.h"
#include "inkml/document_serializer.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/support/pen/text_file.h"
#include "text/format.h"

namespace {

using inktest::InkDice;
using inktest::makePoint;
using inktest::pointsOf;
using inktest::Seven;
using Orvo::Document;
using Orvo::DocumentSerializer;
using Orvo::InkMLDefinitions;
using Orvo::Layer;
using Orvo::Stroke;

constexpr unsigned kSeeds = 1000;

// What becomes of a text in a file: the library condenses plain blanks (other white space is
// written as references and kept), and has no node for a text of white space only.
std::optional<std::string> throughFile(const std::string& text) {
  std::string condensed;
  for (const char c : text) {
    if (c == ' ' && (condensed.empty() || condensed.back() == ' ')) continue;
    condensed += c;
  }
  if (!condensed.empty() && condensed.back() == ' ') condensed.pop_back();
  if (condensed.find_first_not_of(" \t\n\v\f\r") == std::string::npos) return std::nullopt;
  return condensed;
}

std::map<std::string, std::string> throughFile(const std::map<std::string, std::string>& all) {
  std::map<std::string, std::string> read;
  for (const auto& [type, text] : all) {
    if (const auto kept = throughFile(text)) read[type] = *kept;
  }
  return read;
}

std::int32_t wholeNumber(const std::string& text) {
  return static_cast<std::int32_t>(std::strtoll(text.c_str(), nullptr, 10));
}

double throughFile(double value) {
  return wholeNumber(text::format("%.6g", value));
}

Seven throughFile(const Seven& point) {
  return {throughFile(point.x),
          throughFile(point.y),
          throughFile(point.z),
          point.pressure,
          point.tiltX,
          point.tiltY,
          point.time};
}

// What must come back: the strokes that have points, with their boxes computed again.
Document throughFile(const Document& document) {
  Document read;
  for (const Layer& layer : document) {
    Layer readLayer;
    for (const Stroke& stroke : layer) {
      if (stroke.size() == 0) continue;
      Stroke readStroke;
      for (const Seven& point : pointsOf(stroke))
        readStroke.append(makePoint(throughFile(point)));
      readLayer.append(readStroke);
    }
    readLayer.annotations() = throughFile(layer.annotations());
    read.append(readLayer);
  }
  read.annotations() = throughFile(document.annotations());
  return read;
}

template <class T>
void expectSameBox(const Orvo::Region<T>& found, const Orvo::Region<T>& expected) {
  const auto& [min, max] = found.bounds();
  const auto& [otherMin, otherMax] = expected.bounds();
  ASSERT_EQ(inktest::sevenOf(min.value), inktest::sevenOf(otherMin.value));
  ASSERT_EQ(inktest::sevenOf(max.value), inktest::sevenOf(otherMax.value));
}

void expectSame(const Layer& found, const Layer& expected) {
  ASSERT_EQ(found.size(), expected.size());
  ASSERT_EQ(found.annotations(), expected.annotations());
  expectSameBox(found, expected);
  auto other = expected.begin();
  for (const Stroke& stroke : found) {
    ASSERT_EQ(pointsOf(stroke), pointsOf(*other));
    expectSameBox(stroke, *other++);
  }
}

void expectSame(const Document& found, const Document& expected) {
  ASSERT_EQ(found.size(), expected.size());
  ASSERT_EQ(found.annotations(), expected.annotations());
  expectSameBox(found, expected);
  auto other = expected.begin();
  for (const Layer& layer : found)
    expectSame(layer, *other++);
}

std::string textThroughFile(const std::string& text) {
  return throughFile(text).value_or("");
}

void expectSameBrush(const Orvo::Brush& found, const Orvo::Brush& written) {
  ASSERT_EQ(found.id, written.id);
  ASSERT_EQ(found.color.value, textThroughFile(written.color.value));
  ASSERT_EQ(found.width.value, written.width.value);
  ASSERT_EQ(found.height.value, written.height.value);
  ASSERT_EQ(found.transparency.value, written.transparency.value);
  ASSERT_EQ(found.fittocurve.value, written.fittocurve.value);
  ASSERT_EQ(found.pentip.value, textThroughFile(written.pentip.value));
  // The flags cross: one is written under both names and read into the other.
  ASSERT_EQ(found.antialiased.value, written.ignorePressure.value);
  ASSERT_TRUE(found.ignorePressure.value);
}

void expectSameDefinitions(const InkMLDefinitions& found, const InkMLDefinitions& written) {
  ASSERT_EQ(found.brushes.size(), written.brushes.size());
  auto brush = written.brushes.begin();
  for (const Orvo::Brush& read : found.brushes)
    expectSameBrush(read, *brush++);
  ASSERT_EQ(found.traceFormats.size(), written.traceFormats.size());
  auto format = written.traceFormats.begin();
  for (const Orvo::TraceFormat& read : found.traceFormats) {
    ASSERT_EQ(read.id, format++->id);
    ASSERT_TRUE(read.empty());
  }
}

class Laws : public testing::Test {
 protected:
  std::string write(Document document, InkMLDefinitions& definitions) const {
    DocumentSerializer serializer(&document);
    forgetFile();
    EXPECT_TRUE(serializer.write(path().string().c_str(), definitions));
    return pentest::readText(path());
  }

  bool read(Document& document, InkMLDefinitions& definitions) const {
    DocumentSerializer serializer(&document);
    return serializer.read(path().string().c_str(), definitions);
  }

  std::filesystem::path path() const { return folder_ / "a.kvo"; }

  // On some file systems it takes much longer to overwrite a file than to create one.
  void forgetFile() const { std::filesystem::remove(path()); }

 private:
  pentest::TemporaryFolder folder_;
};

TEST_F(Laws, WhatWasWrittenIsReadWithItsKnownLosses) {
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    InkDice dice(seed);
    const Document document = dice.document();
    InkMLDefinitions definitions;
    dice.fill(definitions);
    write(document, definitions);
    Document again;
    InkMLDefinitions definitionsAgain;
    ASSERT_TRUE(read(again, definitionsAgain));
    ASSERT_TRUE(again.complete.value);
    expectSame(again, throughFile(document));
    expectSameDefinitions(definitionsAgain, definitions);
    ASSERT_FALSE(HasFatalFailure());
  }
}

TEST_F(Laws, WrittenContextsFindTheirBrushAndFormatAgain) {
  std::size_t contexts = 0;
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    InkDice dice(seed);
    InkMLDefinitions definitions;
    dice.fill(definitions);
    // A context with an empty id is written without one, and then fails to be read.
    for (Orvo::InkContext& context : definitions.contexts)
      context.id += "c";
    write({}, definitions);
    Document again;
    InkMLDefinitions definitionsAgain;
    ASSERT_TRUE(read(again, definitionsAgain));
    ASSERT_EQ(definitionsAgain.contexts.size(), definitions.contexts.size());
    auto written = definitions.contexts.begin();
    for (const Orvo::InkContext& context : definitionsAgain.contexts) {
      ASSERT_EQ(context.id, written->id);
      ASSERT_EQ(context.brush.value->id, written->brush.value->id);
      ASSERT_EQ(context.traceFormat.value->id, written->traceFormat.value->id);
      ++written;
      ++contexts;
    }
  }
  EXPECT_GT(contexts, kSeeds / 2);
}

TEST_F(Laws, TheBytesStayTheSameFromTheSecondTimeOn) {
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    InkDice dice(seed);
    InkMLDefinitions definitions;
    dice.fill(definitions);
    write(dice.document(), definitions);
    Document second;
    InkMLDefinitions secondDefinitions;
    ASSERT_TRUE(read(second, secondDefinitions));
    const std::string bytes = write(second, secondDefinitions);
    Document third;
    InkMLDefinitions thirdDefinitions;
    ASSERT_TRUE(read(third, thirdDefinitions));
    ASSERT_EQ(write(third, thirdDefinitions), bytes) << seed;
  }
}

TEST_F(Laws, ReadingTwiceDoublesEverything) {
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    InkDice dice(seed);
    const Document document = dice.document();
    InkMLDefinitions definitions;
    dice.fill(definitions);
    write(document, definitions);
    Document once;
    InkMLDefinitions definitionsOnce;
    ASSERT_TRUE(read(once, definitionsOnce));
    Document twice;
    InkMLDefinitions definitionsTwice;
    ASSERT_TRUE(read(twice, definitionsTwice));
    ASSERT_TRUE(read(twice, definitionsTwice));
    ASSERT_EQ(twice.size(), 2 * once.size());
    ASSERT_EQ(twice.annotations(), once.annotations());
    ASSERT_EQ(definitionsTwice.brushes.size(), 2 * definitionsOnce.brushes.size());
    ASSERT_EQ(definitionsTwice.traceFormats.size(), 2 * definitionsOnce.traceFormats.size());
    ASSERT_EQ(definitionsTwice.contexts.size(), 2 * definitionsOnce.contexts.size());
    std::size_t index = 0;
    for (const Layer& layer : twice) {
      Layer expected;
      ASSERT_TRUE(once.at(index++ % once.size(), expected));
      expectSame(layer, expected);
      ASSERT_FALSE(HasFatalFailure()) << seed;
    }
  }
}

TEST_F(Laws, TheSameIsWrittenForBothKindsOfPath) {
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    InkDice dice(seed);
    Document document = dice.document();
    InkMLDefinitions definitions;
    dice.fill(definitions);
    const std::string narrow = write(document, definitions);
    DocumentSerializer serializer(&document);
    forgetFile();
    ASSERT_TRUE(serializer.write(path().wstring().c_str(), definitions));
    ASSERT_EQ(pentest::readText(path()), narrow) << seed;
  }
}

}  // namespace
