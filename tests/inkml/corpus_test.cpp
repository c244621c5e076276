// The files that the fuzzer kept, and the samples.

#include <filesystem>
#include <gtest/gtest.h>
#include <tinyxml.h>

#include "inkml/document_serializer.h"
#include "inkml/file_check.h"
#include "inkml/ink_reading.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/ink/xml_text.h"
#include "tests/support/pen/text_file.h"

namespace {

using inktest::pointsOf;
using Orvo::InkFailure;
using Orvo::InkReading;
using Kind = Orvo::InkProblemKind;

int depthOf(const TiXmlNode& node) {
  int deepest = 0;
  for (const TiXmlElement* child = node.FirstChildElement(); child;
       child = child->NextSiblingElement()) {
    deepest = std::max(deepest, 1 + depthOf(*child));
  }
  return deepest;
}

void expectConsistentReading(const std::string& text) {
  const Orvo::FileCheck found = Orvo::checkBytes(text, Orvo::XmlEncoding::utf8);
  const InkReading reading = Orvo::readInk(inktest::openText(text).get());
  ASSERT_EQ(reading.document->complete.value, reading.report.failure == InkFailure::none);
  if (found.refusal != Orvo::FileRefusal::none) return;
  TiXmlDocument xml;
  const bool loaded = inktest::load(text, xml);
  ASSERT_EQ(loaded, reading.report.failure != InkFailure::brokenXml);
  ASSERT_LE(depthOf(xml), found.scan.depth);
  if (loaded) {
    ASSERT_EQ(depthOf(xml), found.scan.depth);
  }
}

TEST(Corpus, EveryFileIsEitherCompleteOrHasAFailure) {
  std::size_t count = 0;
  std::size_t complete = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PENWICK_INK_CORPUS)) {
    const std::string text = pentest::readText(entry.path());
    expectConsistentReading(text);
    ASSERT_FALSE(testing::Test::HasFailure()) << entry.path();
    if (Orvo::readInk(inktest::openText(text).get()).document->complete.value) ++complete;
    ++count;
  }
  EXPECT_GT(count, 100U);
  EXPECT_GT(complete, 20U);
}

InkReading readSample(const char* name) {
  return Orvo::readInk((std::filesystem::path(PENWICK_SAMPLES) / name).wstring().c_str());
}

// Every stroke of a sample is drawn: it has two points or more, each later than the one before.
void expectDrawnStrokes(const Orvo::Document& document) {
  for (const Orvo::Layer& layer : document) {
    EXPECT_EQ(layer.annotations().size(), 1U);
    EXPECT_GT(layer.size(), 0U);
    for (const Orvo::Stroke& stroke : layer) {
      ASSERT_GE(stroke.size(), 2U);
      const auto points = pointsOf(stroke);
      for (std::size_t i = 1; i < points.size(); ++i) {
        ASSERT_GT(points[i].time, points[i - 1].time);
        ASSERT_LE(points[i].x, 2100);
        ASSERT_LE(points[i].y, 2970);
      }
    }
  }
}

TEST(Samples, AreReadWithoutProblems) {
  const std::pair<const char*, std::size_t> samples[] = {
      {"harbour.kvo", 9}, {"melody.kvo", 3}, {"teapot.inkml", 4}};
  for (const auto& [name, layers] : samples) {
    SCOPED_TRACE(name);
    const InkReading reading = readSample(name);
    EXPECT_EQ(reading.report.failure, InkFailure::none);
    EXPECT_TRUE(reading.report.problems.empty());
    EXPECT_EQ(reading.document->size(), layers);
    expectDrawnStrokes(*reading.document);
  }
}

TEST(Samples, TheHarbourHasBrushesContextsAndAnnotations) {
  const InkReading reading = readSample("harbour.kvo");
  EXPECT_EQ(reading.definitions->brushes.size(), 2U);
  EXPECT_EQ(reading.definitions->contexts.size(), 2U);
  EXPECT_EQ(reading.document->annotations().at("title"), "Harbour in the morning");
  EXPECT_EQ(reading.document->annotations().at("place"), "Harbour & town, from the old pier");
}

TEST(Samples, TheOneOfAnotherProgramIsCompleteWithoutLayers) {
  const InkReading reading = readSample("other-program.inkml");
  EXPECT_EQ(reading.report.failure, InkFailure::none);
  EXPECT_TRUE(reading.document->complete.value);
  EXPECT_EQ(reading.document->size(), 0U);
  EXPECT_EQ(reading.report.nameSpace, "http://www.w3.org/2003/InkML");
  ASSERT_NE(reading.report.find(Kind::otherGroups), nullptr);
  EXPECT_EQ(reading.report.find(Kind::otherGroups)->detail, "traceGroup");
  EXPECT_NE(reading.report.find(Kind::skippedBrushes), nullptr);
}

}  // namespace
