#include "rescue/ink_rescue.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "inkml/ink_reading.h"

namespace {

using rescue::InkRescue;
using rescue::LeftOut;
using rescue::rescueInkDocument;
using testing::ElementsAre;
using testing::HasSubstr;

// Times of the points of each stroke of each layer, as the plug-in's reader finds them.
using Times = std::vector<std::uint32_t>;
using Layers = std::vector<std::vector<Times>>;

Layers timesOf(const std::string& document) {
  const Orvo::InkReading reading = Orvo::readInk(document);
  EXPECT_TRUE(reading.document->complete.value);
  EXPECT_TRUE(reading.report.problems.empty());
  Layers layers;
  for (Orvo::Layer& layer : *reading.document) {
    layers.emplace_back();
    for (Orvo::Stroke& stroke : layer) {
      Times& times = layers.back().emplace_back();
      for (const Orvo::Point& point : stroke)
        times.push_back(point.timestamp.value);
    }
  }
  return layers;
}

// A point of a steady line: 0.3 mm and 8 ticks behind the one before it.
std::string point(int number) {
  return std::to_string(1000 + 3 * number) + " " + std::to_string(2000 + 3 * number) +
         " 0 500 -20 30 " + std::to_string(8000 + 8 * number);
}

std::string points(int first, int last) {
  std::string text;
  for (int i = first; i <= last; ++i)
    text += (i == first ? "" : ",") + point(i);
  return text;
}

Times times(int first, int last) {
  Times all;
  for (int i = first; i <= last; ++i)
    all.push_back(static_cast<std::uint32_t>(8000 + 8 * i));
  return all;
}

std::string trace(int first, int last) {
  return "        <trace contextRef=\"#default-context\">" + points(first, last) + "</trace>\n";
}

std::string layer(int number, const std::string& content) {
  return "    <tracegroup id=\"layer" + std::to_string(number) + "\">\n" + content +
         "    </tracegroup>\n";
}

const std::string kDeclaration = "<?xml version=\"1.0\" ?>\n";
const std::string kFormat =
    "        <traceFormat id=\"pen\">\n"
    "            <channel name=\"X\" type=\"INTEGER\" min=\"0\" max=\"2100\" units=\"0.1mm\" />\n"
    "            <channel name=\"Y\" type=\"INTEGER\" min=\"0\" max=\"2970\" units=\"0.1mm\" />\n"
    "            <channel name=\"Z\" type=\"INTEGER\" min=\"0\" max=\"9\" units=\"0.1mm\" />\n"
    "            <channel name=\"F\" type=\"INTEGER\" min=\"0\" max=\"1023\" units=\"dev\" />\n"
    "            <channel name=\"OTx\" type=\"INTEGER\" min=\"-90\" max=\"90\" units=\"deg\" />\n"
    "            <channel name=\"OTy\" type=\"INTEGER\" min=\"-90\" max=\"90\" units=\"deg\" />\n"
    "            <channel name=\"T\" type=\"INTEGER\" min=\"0\" max=\"999999\" units=\"ms\" />\n"
    "        </traceFormat>\n";
const std::string kBrush =
    "        <brush id=\"ink\">\n            <annotationXML>\n"
    "                <color>DarkBlue</color>\n                <width>3</width>\n"
    "                <height>4</height>\n                <transparency>90</transparency>\n"
    "                <antialiased>False</antialiased>\n                "
    "<fittocurve>True</fittocurve>\n"
    "                <ignorePressure>False</ignorePressure>\n                "
    "<pentip>Brush</pentip>\n"
    "            </annotationXML>\n        </brush>\n";
const std::string kContext =
    "        <context id=\"default-context\" brushRef=\"#ink\" traceFormatRef=\"#pen\" />\n";
const std::string kDefinitions =
    "    <definitions>\n" + kFormat + kBrush + kContext + "    </definitions>\n";

std::string document(const std::string& layers) {
  return kDeclaration + "<ink>\n" + kDefinitions + layers + "</ink>\n";
}

std::string twoLayers() {
  return document(layer(0, trace(0, 19) + trace(40, 59)) + layer(1, trace(80, 99)));
}

// The document with `text` instead of the first `what` behind the first `after`.
std::string with(std::string document, const std::string& what, const std::string& text,
                 const std::string& after = "") {
  const std::size_t place = document.find(what, document.find(after));
  EXPECT_NE(place, document.npos) << what;
  return document.replace(place, what.size(), text);
}

TEST(InkRescue, LeavesSoundDocumentsAsTheyAre) {
  for (const std::string& sound :
       {twoLayers(), std::string("<ink/>"), std::string("<ink><!-- c --><x/></ink>\r\n"),
        document(layer(0, "<trace contextRef='#c'>1 2,3 4 5, 9 9 9 9 9 9 9</trace>"))}) {
    const InkRescue result = rescueInkDocument(sound);
    EXPECT_TRUE(result.sound);
    EXPECT_TRUE(result.saved);
    EXPECT_EQ(result.bytes, sound);
    EXPECT_TRUE(result.leftOut.empty());
  }
  EXPECT_EQ(rescueInkDocument(twoLayers()).pointsKept, 60U);
}

TEST(InkRescue, RefusesWhatIsNoInkDocument) {
  for (const std::string& other :
       {std::string(), std::string("1 2 3 4 5 6 7,1 2 3 4 5 6 8"), std::string(5000, '\0'),
        std::string("<html><body>1 2 3 4 5 6 7</body></html>"), std::string("<svg id=\"a\"/>x")}) {
    const InkRescue result = rescueInkDocument(other);
    EXPECT_FALSE(result.saved) << other;
    EXPECT_TRUE(result.bytes.empty());
  }
}

TEST(InkRescue, KeepsTheWholePointsOfACutDocument) {
  const std::string whole = twoLayers();
  const std::size_t place = whole.find(point(85)) + 6;
  const InkRescue result = rescueInkDocument(whole.substr(0, place));
  EXPECT_EQ(timesOf(result.bytes), (Layers{{times(0, 19), times(40, 59)}, {times(80, 84)}}));
  EXPECT_EQ(result.pointsKept, 45U);
  ASSERT_EQ(result.leftOut.size(), 1U);
  EXPECT_EQ(result.leftOut.front().reason, LeftOut::junkBehind);
  EXPECT_EQ(result.leftOut.front().end, place);
}

TEST(InkRescue, DropsALastNumberThatIsCut) {
  const std::string whole = twoLayers();
  const std::size_t place = whole.find(point(85)) + point(85).size() - 1;
  const InkRescue result = rescueInkDocument(whole.substr(0, place));
  EXPECT_EQ(timesOf(result.bytes)[1], std::vector<Times>{times(80, 84)});
}

TEST(InkRescue, KeepsWholeTracesAndDefinitionsByteForByte) {
  const InkRescue result = rescueInkDocument(with(twoLayers(), point(45), "1 2 \x01"));
  EXPECT_THAT(result.bytes, HasSubstr(trace(0, 19)));
  EXPECT_THAT(result.bytes, HasSubstr(trace(80, 99)));
  EXPECT_THAT(result.bytes, HasSubstr(kDefinitions));
  EXPECT_EQ(result.definitionsPutIn, 0U);
}

TEST(InkRescue, EndsAStrokeWhereBytesAreMissing) {
  const InkRescue result = rescueInkDocument(with(twoLayers(), "," + points(44, 50) + ",",
                                                  ",13\x02"
                                                  "5,"));
  EXPECT_EQ(timesOf(result.bytes),
            (Layers{{times(0, 19), times(40, 43), times(51, 59)}, {times(80, 99)}}));
  EXPECT_EQ(result.strokesBroken, 1U);
}

TEST(InkRescue, GoesOnAcrossASinglePointThatIsLost) {
  const InkRescue result = rescueInkDocument(with(twoLayers(), point(45), "1135 21?5 0 500 1 2 3"));
  ASSERT_EQ(timesOf(result.bytes)[0].size(), 2U);
  EXPECT_EQ(timesOf(result.bytes)[0][1].size(), 19U);
  EXPECT_EQ(result.strokesBroken, 0U);
}

TEST(InkRescue, DividesStrokesWhoseTagsAreLost) {
  const std::string tags = "</trace>\n        <trace contextRef=\"#default-context\">";
  for (const std::string& left : {std::string(tags.size(), '\0'), std::string("</tr\xFF\xFFxt\">"),
                                  std::string("</trace>\n        <tr"), std::string("<trace "),
                                  std::string(tags.size(), '\xFF')}) {
    const InkRescue result = rescueInkDocument(with(twoLayers(), tags, left));
    EXPECT_EQ(timesOf(result.bytes), (Layers{{times(0, 19), times(40, 59)}, {times(80, 99)}}))
        << left;
  }
}

TEST(InkRescue, DividesLayersWhoseTagsAreDamaged) {
  const std::string tags = "</tracegroup>\n    <tracegroup id=\"layer1\">";
  for (const char* left :
       {"</tracegro\x01p>\n    <traceg\x02oup id=\"layer1\">",
        "</trac\x01\x01\x01\x01\x01\x01\x01\x01\x01\x01\x01group id=\"layer1\">"}) {
    const InkRescue result = rescueInkDocument(with(twoLayers(), tags, left));
    EXPECT_EQ(timesOf(result.bytes), (Layers{{times(0, 19), times(40, 59)}, {times(80, 99)}}))
        << left;
  }
}

TEST(InkRescue, LeavesOutARunThatStandsThereTwice) {
  const std::string run = points(44, 50).substr(5) + ",11";
  const std::string damaged = with(twoLayers(), run, run + run);
  const InkRescue result = rescueInkDocument(damaged);
  EXPECT_EQ(timesOf(result.bytes), timesOf(twoLayers()));
  ASSERT_EQ(result.leftOut.size(), 1U);
  EXPECT_EQ(result.leftOut.front().reason, LeftOut::doubled);
  EXPECT_EQ(result.leftOut.front().end - result.leftOut.front().begin, run.size());
}

TEST(InkRescue, EndsAStrokeWhereTimeRunsBackwards) {
  const std::string whole = twoLayers();
  const std::string swapped = points(50, 54) + "," + points(44, 49);
  const std::string damaged = with(with(whole, points(44, 54), swapped), "</ink>", "</i\x01k>");
  EXPECT_EQ(timesOf(rescueInkDocument(damaged).bytes)[0],
            (std::vector<Times>{times(0, 19), times(40, 43), times(50, 54), times(44, 49),
                                times(55, 59)}));
}

TEST(InkRescue, PutsMissingDefinitionsIn) {
  const InkRescue result = rescueInkDocument(
      "cut away\n" +
      layer(0, trace(0, 9) + "<trace contextRef=\"#other\">" + points(20, 29) + "</trace>") +
      "</ink>");
  EXPECT_EQ(timesOf(result.bytes), (Layers{{times(0, 9), times(20, 29)}}));
  EXPECT_THAT(result.bytes, HasSubstr("<context id=\"default-context\""));
  EXPECT_THAT(result.bytes, HasSubstr("<context id=\"other\""));
  EXPECT_EQ(result.definitionsPutIn, 4U);
  const Orvo::InkReading reading = Orvo::readInk(result.bytes);
  EXPECT_EQ(reading.definitions->contexts.size(), 2U);
  EXPECT_EQ(reading.definitions->brushes.size(), 1U);
  EXPECT_EQ(reading.definitions->traceFormats.size(), 1U);
}

TEST(InkRescue, MendsADamagedBrush) {
  const InkRescue result =
      rescueInkDocument(with(twoLayers(), "<brush id=\"ink\">", "<bru\x01h id=\"ink\">"));
  const Orvo::InkReading reading = Orvo::readInk(result.bytes);
  ASSERT_EQ(reading.definitions->brushes.size(), 1U);
  EXPECT_EQ(reading.definitions->brushes.front().id, "ink");
  EXPECT_EQ(reading.definitions->brushes.front().color.value, "DarkBlue");
  EXPECT_EQ(reading.definitions->brushes.front().height.value, 4U);
  EXPECT_EQ(result.definitionsMended, 1U);
  EXPECT_EQ(result.definitionsPutIn, 0U);
}

TEST(InkRescue, MendsADamagedFormat) {
  const InkRescue result =
      rescueInkDocument(with(twoLayers(), "<channel name=\"F\"", "<cha\xFFnel name=\"F\""));
  EXPECT_THAT(result.bytes, HasSubstr("max=\"2970\""));
  EXPECT_THAT(result.bytes, HasSubstr("<channel name=\"F\""));
  EXPECT_EQ(result.definitionsMended, 1U);
  EXPECT_EQ(timesOf(result.bytes), timesOf(twoLayers()));
}

TEST(InkRescue, LeavesJunkInFrontAndBehindOut) {
  const std::string front = "Content-Length: 4711\r\n\r\n";
  const std::string behind(100, '\x07');
  const InkRescue result = rescueInkDocument(front + twoLayers() + behind);
  EXPECT_EQ(result.bytes, twoLayers());
  EXPECT_THAT(result.leftOut,
              ElementsAre(rescue::Stretch{0, front.size() - 4, LeftOut::junkInFront},
                          rescue::Stretch{front.size() + twoLayers().size(),
                                          front.size() + twoLayers().size() + behind.size(),
                                          LeftOut::junkBehind}));
}

TEST(InkRescue, MakesAFurtherDocumentFurtherLayers) {
  const InkRescue result = rescueInkDocument(twoLayers() + twoLayers());
  Layers expected = timesOf(twoLayers());
  const Layers once = expected;
  expected.insert(expected.end(), once.begin(), once.end());
  EXPECT_EQ(timesOf(result.bytes), expected);
  EXPECT_EQ(result.furtherDocuments, 1U);
  EXPECT_THAT(result.bytes, HasSubstr("<tracegroup id=\"layer3\">"));
}

std::string contextTo(const std::string& brush) {
  return "<context id=\"default-context\" brushRef=\"#" + brush + "\" traceFormatRef=\"#pen\" />";
}

TEST(InkRescue, KeepsTheDefinitionsOfAFurtherDocumentUnderAnotherId) {
  const std::string further = with(twoLayers(), "DarkBlue", "Red");
  const InkRescue result = rescueInkDocument(twoLayers() + further);
  EXPECT_EQ(result.definitionsRenamed, 2U);
  EXPECT_THAT(result.bytes,
              HasSubstr(with(with(kBrush, "DarkBlue", "Red"), "\"ink\"", "\"ink-2\"")));
  EXPECT_THAT(result.bytes,
              HasSubstr(with(contextTo("ink-2"), "default-context", "default-context-2")));
  EXPECT_THAT(result.bytes, HasSubstr(contextTo("ink")));
  const std::size_t second = result.bytes.find("\"layer2\"");
  EXPECT_EQ(result.bytes.find("default-context-2\">"),
            result.bytes.find("default-context-2\">", second));
  EXPECT_EQ(result.bytes.find("default-context\">", second), std::string::npos);
  const Orvo::InkReading reading = Orvo::readInk(result.bytes);
  EXPECT_EQ(reading.definitions->brushes.size(), 2U);
  EXPECT_EQ(reading.definitions->traceFormats.size(), 1U);
  EXPECT_EQ(result.pointsKept, 120U);
}

TEST(InkRescue, KeepsTheSameDefinitionsOfAFurtherDocumentOnce) {
  const InkRescue result = rescueInkDocument(twoLayers() + twoLayers());
  EXPECT_EQ(result.definitionsRenamed, 0U);
  EXPECT_THAT(result.bytes, HasSubstr(kDefinitions));
}

TEST(InkRescue, GivesEachOfThreeDocumentsADefinitionOfItsOwn) {
  const InkRescue result = rescueInkDocument(twoLayers() + with(twoLayers(), "DarkBlue", "Red") +
                                             with(twoLayers(), "DarkBlue", "Green"));
  const Orvo::InkReading reading = Orvo::readInk(result.bytes);
  std::vector<std::string> brushes;
  for (const auto& brush : reading.definitions->brushes)
    brushes.push_back(brush.id + " " + brush.color.value);
  EXPECT_THAT(brushes, ElementsAre("ink DarkBlue", "ink-2 Red", "ink-3 Green"));
}

TEST(InkRescue, LeavesBytesOutThatNoReaderTakes) {
  const std::string annotation =
      "<annotation type=\"title\">A\x01"
      "BC & D\xFF</annotation>\n";
  const std::string damaged = with(twoLayers(), "    <tracegroup", annotation + "<tracegroup");
  EXPECT_TRUE(rescueInkDocument(damaged).sound);
  const InkRescue result = rescueInkDocument(with(damaged, "</ink>", ""));
  EXPECT_THAT(result.bytes, HasSubstr("<annotation type=\"title\">ABC &amp; D</annotation>"));
  EXPECT_EQ(timesOf(result.bytes), timesOf(twoLayers()));
}

TEST(InkRescue, RoundsFractionsWhereTheyAreUsual) {
  const InkRescue result = rescueInkDocument(document(layer(
      0, "<trace contextRef=\"#default-context\">1.4 2.6 0 5 6 7 8,-1.6 2 0 5 6 7 16</trace>")));
  EXPECT_THAT(result.bytes, HasSubstr(">1 3 0 5 6 7 8,-2 2 0 5 6 7 16<"));
  EXPECT_EQ(result.pointsRounded, 2U);
}

TEST(InkRescue, DoesNotTouchDocumentsOfAnotherForm) {
  const InkRescue result = rescueInkDocument(
      "<ink><traceGroup><trace brushRef=\"#br0\">105.00 220.00, 105.00 219.80</trace></traceGroup>"
      "</ink>");
  EXPECT_FALSE(result.saved);
  EXPECT_TRUE(result.isOtherForm);
}

// The text, which is ASCII but for U+20AC, in UTF-16 with the low byte first or behind.
std::string inUtf16(const std::string& text, bool isLittleEndian) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isEuro = text.compare(i, 3, "\xE2\x82\xAC") == 0;
    const char high = isEuro ? '\x20' : '\0';
    const char low = isEuro ? '\xAC' : text[i];
    bytes += isLittleEndian ? low : high;
    bytes += isLittleEndian ? high : low;
    if (isEuro) i += 2;
  }
  return bytes;
}

std::string declaring(const std::string& encoding, const std::string& text) {
  const std::string annotation = "<annotation type=\"title\">" + text + "</annotation>\n";
  return with(with(twoLayers(), "\"1.0\" ", "\"1.0\" encoding=\"" + encoding + "\""),
              "    <tracegroup", annotation + "    <tracegroup");
}

TEST(InkRescue, ConvertsUtf16OfEitherOrderWithAndWithoutAMark) {
  const std::string marks[] = {"\xFE\xFF", "\xFF\xFE"};
  for (const bool isLittleEndian : {false, true}) {
    for (const bool hasMark : {false, true}) {
      const InkRescue result =
          rescueInkDocument((hasMark ? marks[isLittleEndian ? 1 : 0] : "") +
                            inUtf16(declaring("UTF-16", "5 \xE2\x82\xAC"), isLittleEndian));
      EXPECT_EQ(result.bytes, declaring("UTF-8", "5 \xE2\x82\xAC"));
      EXPECT_TRUE(result.saved);
      EXPECT_FALSE(result.sound);
      EXPECT_EQ(result.pointsKept, 60U);
      ASSERT_TRUE(result.encoding.has_value());
      EXPECT_EQ(nameOf(*result.encoding), "UTF-16");
      EXPECT_TRUE(result.leftOut.empty());
    }
  }
}

TEST(InkRescue, ConvertsTheEncodingsOfOneByteThatDocumentsDeclare) {
  // 0x80 is U+20AC in Windows-1252 alone; 0xE9 is U+00E9 in both.
  for (const auto& [declared, name, text] :
       {std::array{"ISO-8859-1", "Latin-1", "\xC2\x80 \xC3\xA9"},
        std::array{"latin1", "Latin-1", "\xC2\x80 \xC3\xA9"},
        std::array{"windows-1252", "Windows-1252", "\xE2\x82\xAC \xC3\xA9"}}) {
    const InkRescue result = rescueInkDocument(declaring(declared, "\x80 \xE9"));
    EXPECT_EQ(result.bytes, declaring("UTF-8", text));
    ASSERT_TRUE(result.encoding.has_value());
    EXPECT_EQ(nameOf(*result.encoding), name);
  }
  // Without any such byte the plug-in reads it as it is.
  EXPECT_TRUE(rescueInkDocument(declaring("ISO-8859-1", "e")).sound);
}

TEST(InkRescue, MendsDamageInUtf16AndSaysWhereItIs) {
  const std::string sound = declaring("UTF-16", "e");
  const std::size_t place = sound.find(point(45));
  std::string damaged = inUtf16(sound, true);
  damaged.replace(2 * place, 2 * point(45).size(), 2 * point(45).size(), '\x07');
  const InkRescue result = rescueInkDocument(damaged);
  ASSERT_EQ(timesOf(result.bytes)[0].size(), 2U);
  EXPECT_EQ(timesOf(result.bytes)[0][1].size(), 19U);
  ASSERT_EQ(result.leftOut.size(), 1U);
  EXPECT_EQ(result.leftOut[0].begin / 2, place);
  // With the comma behind it.
  EXPECT_EQ(result.leftOut[0].end / 2, place + point(45).size() + 1);
}

TEST(InkRescue, GoesOnWhereAByteOfUtf16IsMissing) {
  for (const bool isLittleEndian : {false, true}) {
    const std::string sound = declaring("UTF-16", "e");
    std::string damaged = inUtf16(sound, isLittleEndian);
    damaged.erase(2 * sound.find(point(45)) + 5, 1);
    const InkRescue result = rescueInkDocument(damaged);
    EXPECT_GE(result.pointsKept, 58U);
    EXPECT_EQ(timesOf(result.bytes)[1], std::vector<Times>{times(80, 99)});
  }
}

// A point of the steady line that lies far away.
std::string farPoint(int number) {
  return "9000 9000 0 500 -20 30 " + std::to_string(8000 + 8 * number);
}

TEST(InkRescue, TakesAStrayPointOfASoundDocumentForDamageWhereThatIsWanted) {
  const std::string inside = with(twoLayers(), point(45), farPoint(45));
  EXPECT_TRUE(rescueInkDocument(inside).sound);
  const InkRescue result = rescueInkDocument(inside, rescue::Mend::doubtful);
  EXPECT_FALSE(result.sound);
  Times expected = times(40, 44);
  for (const std::uint32_t time : times(46, 59))
    expected.push_back(time);
  EXPECT_EQ(timesOf(result.bytes)[0], (std::vector<Times>{times(0, 19), expected}));
  EXPECT_EQ(result.pointsDropped, 1U);
}

TEST(InkRescue, TakesAStrayPointAtEitherEndOfAStrokeForDamageToo) {
  const std::string first = with(twoLayers(), point(40), farPoint(40));
  EXPECT_EQ(timesOf(rescueInkDocument(first, rescue::Mend::doubtful).bytes)[0][1], times(41, 59));
  const std::string last = with(twoLayers(), point(59), farPoint(59));
  EXPECT_EQ(timesOf(rescueInkDocument(last, rescue::Mend::doubtful).bytes)[0][1], times(40, 58));
}

TEST(InkRescue, LeavesASoundDocumentAloneThatLooksSoundEvenWhereDoubtfulOnesAreMended) {
  const InkRescue result = rescueInkDocument(twoLayers(), rescue::Mend::doubtful);
  EXPECT_TRUE(result.sound);
  EXPECT_EQ(result.bytes, twoLayers());
}

// The document without its end, so that it is damaged.
std::string cut(const std::string& document) {
  return with(document, "</ink>\n", "");
}

TEST(InkRescue, KeepsCommentsButNoneThatTheReaderTakesForAnElement) {
  const std::string comments =
      "    <!-- drawn in May -->\n    <!--definitions-->\n    <!--ink-->\n    <!--a & b-->\n";
  const InkRescue result =
      rescueInkDocument(cut(with(twoLayers(), "    <tracegroup", comments + "    <tracegroup")));
  EXPECT_THAT(result.bytes, HasSubstr("    <!-- drawn in May -->\n"));
  EXPECT_EQ(result.bytes.find("<!--d"), std::string::npos);
  EXPECT_EQ(result.bytes.find("<!--ink"), std::string::npos);
  EXPECT_EQ(result.bytes.find("<!--a"), std::string::npos);
  EXPECT_EQ(timesOf(result.bytes), timesOf(twoLayers()));
}

TEST(InkRescue, LeavesOutACommentWithoutAnEnd) {
  const InkRescue result = rescueInkDocument(cut(twoLayers()) + "<!-- never <!-- ended");
  EXPECT_EQ(result.bytes, twoLayers());
  ASSERT_EQ(result.leftOut.size(), 1U);
  EXPECT_EQ(result.leftOut.front().reason, LeftOut::junkBehind);
}

TEST(InkRescue, GivesATraceTheContextThatItsDamagedReferenceMeant) {
  const std::string damaged =
      with(twoLayers(), "\"#default-context\"", "\"#default-conuext\"", "<trace ");
  const InkRescue result = rescueInkDocument(cut(damaged));
  EXPECT_EQ(result.bytes, twoLayers());
  EXPECT_EQ(result.definitionsPutIn, 0U);
}

TEST(InkRescue, TakesARareReferenceForADamagedOneWhereNoContextIsLeft) {
  const std::string strokes = trace(0, 19) + trace(40, 59) + trace(80, 99);
  const std::string rare = with(trace(120, 139), "default-context", "default-c0ntext");
  const InkRescue result =
      rescueInkDocument("<ink>\n" + layer(0, strokes + rare) + layer(1, trace(160, 179)));
  EXPECT_THAT(result.bytes, HasSubstr(trace(120, 139)));
  EXPECT_EQ(result.definitionsPutIn, 3U);
}

// Where the comma is lost, the first point ends as the one before it leads to expect. Nothing
// behind the second one proves that its first number is whole.
TEST(InkRescue, KeepsTheFirstOfTwoPointsBetweenWhichTheCommaIsLost) {
  const std::string both = point(45) + "," + point(46);
  const std::string joined = point(45) + " " + point(46);
  const InkRescue result = rescueInkDocument(cut(with(twoLayers(), both, joined)));
  Times expected = times(40, 45);
  for (const std::uint32_t time : times(47, 59))
    expected.push_back(time);
  EXPECT_EQ(timesOf(result.bytes)[0], (std::vector<Times>{times(0, 19), expected}));
  EXPECT_EQ(result.strokesBroken, 0U);
}

TEST(InkRescue, DropsAPointWithANumberThatNoReaderTakes) {
  // A sign too many, a pressure below zero, a time above 32 bits, a fraction among whole numbers,
  // and a number with letters in it.
  for (const char* bad : {"+-1135 2135 0 500 -20 30 8360", "1135 2135 0 -500 -20 30 8360",
                          "1135 2135 0 500 -20 30 4294967296", "1135.5 2135 0 500 -20 30 8360",
                          "1135 2135 0 5e -20 30 8360", "1135 2135 0 500 -20 2147483648 8360"}) {
    const InkRescue result = rescueInkDocument(cut(with(twoLayers(), point(45), bad)));
    EXPECT_EQ(timesOf(result.bytes)[0][1].size(), 19U) << bad;
    EXPECT_EQ(result.pointsKept, 59U) << bad;
  }
}

TEST(InkRescue, KeepsALayerWithoutStrokesAndGivesOneWithoutANameANewOne) {
  const std::string layers = "    <tracegroup id=\"layer0\"/>\n    <tracegroup id=\"a\"/>\n" +
                             with(layer(7, trace(0, 19)), "layer7", "x") + layer(8, trace(40, 59));
  const InkRescue result = rescueInkDocument(cut(document(layers)));
  EXPECT_EQ(result.bytes,
            document("    <tracegroup id=\"layer0\"/>\n    <tracegroup id=\"layer1\">\n"
                     "    </tracegroup>\n" +
                     layer(2, trace(0, 19)) + layer(8, trace(40, 59))));
}

TEST(InkRescue, QuotesATypeInWhichAQuotationMarkStands) {
  const std::string annotation = "<annotation type='a\"b'>A & B</annotation>\n";
  const InkRescue result =
      rescueInkDocument(cut(with(twoLayers(), "    <tracegroup", annotation + "<tracegroup")));
  EXPECT_THAT(result.bytes, HasSubstr("<annotation type=\"a&quot;b\">A &amp; B</annotation>"));
}

TEST(InkRescue, KeepsADeclarationOfUtf8AloneAndNoneOfAnotherEncoding) {
  for (const auto& [declared, kept] :
       {std::array{"encoding=\"UTF-8\"", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ink>"},
        std::array{"encoding=\"koi8-r\"", "<?xml version=\"1.0\" ?>\n<ink>"}}) {
    const std::string damaged = with(twoLayers(), "\"1.0\" ", std::string("\"1.0\" ") + declared);
    EXPECT_TRUE(rescueInkDocument(cut(damaged)).bytes.starts_with(kept)) << declared;
  }
}

TEST(InkRescue, KeepsReferencesToCharactersAndMendsWhatOnlyLooksLikeOne) {
  const std::string annotation =
      "    <annotation type=\"t\">&lt;&#65;&#x4f;&#xG;&#;&#x110000;&#0;&nbsp;&#6</annotation>\n";
  const InkRescue result =
      rescueInkDocument(cut(with(twoLayers(), "    <tracegroup", annotation + "    <tracegroup")));
  EXPECT_THAT(result.bytes, HasSubstr(">&lt;&#65;&#x4f;&amp;#xG;&amp;#;&amp;#x110000;&amp;#0;"
                                      "&amp;nbsp;&amp;#6</annotation>"));
}

TEST(InkRescue, LeavesOutBytesThatAreNotUtf8AndByteOrderMarks) {
  // U+00E9, U+20AC and U+1F600; a lone second byte, two cut characters, one that is too large, a
  // byte order mark and a delete.
  const std::string kept = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
  const std::string text = kept + "\x80\xC3" + "a\xE2\x82" + "b\xF5\xEF\xBB\xBF" + "c\x7F";
  const std::string annotation = "    <annotation type=\"t\">" + text + "</annotation>\n";
  const InkRescue result =
      rescueInkDocument(cut(with(twoLayers(), "    <tracegroup", annotation + "    <tracegroup")));
  EXPECT_THAT(result.bytes, HasSubstr(">" + kept + "abc</annotation>"));
}

TEST(InkRescue, ConvertsPairsOfSurrogatesAndMarksLoneOnes) {
  std::string text = declaring("UTF-16", "@@@");
  std::string damaged = inUtf16(text, false);
  const std::size_t place = 2 * text.find("@@@");
  // U+1F600 as a pair, then a high surrogate alone.
  damaged.replace(place, 6, "\xD8\x3D\xDE\x00\xD8\x3D", 6);
  const InkRescue result = rescueInkDocument(damaged);
  EXPECT_EQ(result.bytes, declaring("UTF-8", "\xF0\x9F\x98\x80\xEF\xBF\xBD"));
}

TEST(InkRescue, GivesABrushAndAFormatThatLostTheirIdsTheOnesThatAreWanted) {
  const std::string damaged = with(with(twoLayers(), "<brush id=\"ink\">", "<brush>"),
                                   "<traceFormat id=\"pen\">", "<traceFormat>");
  const Orvo::InkReading reading = Orvo::readInk(rescueInkDocument(cut(damaged)).bytes);
  ASSERT_EQ(reading.definitions->brushes.size(), 1U);
  EXPECT_EQ(reading.definitions->brushes.front().id, "ink");
  EXPECT_EQ(reading.definitions->brushes.front().color.value, "DarkBlue");
  ASSERT_EQ(reading.definitions->traceFormats.size(), 1U);
}

TEST(InkRescue, KeepsTheFirstOfTwoContextsWithOneId) {
  const std::string second =
      "        <context id=\"default-context\" brushRef=\"#none\" traceFormatRef=\"#pen\" />\n";
  const InkRescue result = rescueInkDocument(cut(with(twoLayers(), kContext, kContext + second)));
  EXPECT_EQ(result.bytes, twoLayers());
}

TEST(InkRescue, RefersToTheOnlyBrushWhereAContextNamesNone) {
  const InkRescue result =
      rescueInkDocument(cut(with(twoLayers(), " brushRef=\"#ink\"", "", "<context")));
  EXPECT_EQ(result.bytes, twoLayers());
}

TEST(InkRescue, TakesADocumentThatDeclaresOtherChannelsForOneOfAnotherProgram) {
  const std::string other =
      "<ink><definitions><traceFormat id=\"f\"><channel name=\"X\" units=\"cm\"/>"
      "<channel name=\"Y\" units=\"cm\"/></traceFormat></definitions>"
      "<tracegroup id=\"layer0\"><trace>1 2,3 4</trace>";
  EXPECT_TRUE(rescueInkDocument(other).isOtherForm);
  EXPECT_FALSE(rescueInkDocument(other).saved);
}

TEST(InkRescue, LeavesOutTheHeaderOfAFurtherDocumentWithItsAnnotation) {
  const std::string annotated = with(twoLayers(), "    <tracegroup",
                                     "    <annotation type=\"t\">T</annotation>\n    <tracegroup");
  const InkRescue result = rescueInkDocument(twoLayers() + annotated);
  EXPECT_EQ(result.furtherDocuments, 1U);
  EXPECT_EQ(result.bytes.find("annotation type"), std::string::npos);
  std::size_t headers = 0;
  for (const rescue::Stretch& stretch : result.leftOut)
    headers += stretch.reason == LeftOut::headerPacket ? 1U : 0U;
  // The declaration, the start of the root element, and the annotation.
  EXPECT_EQ(headers, 3U);
}

TEST(InkRescue, LeavesOutARunInsideATagThatStandsThereTwice) {
  const std::string run = "contextRef=\"#default-";
  const InkRescue result = rescueInkDocument(with(twoLayers(), run, run + run));
  EXPECT_EQ(result.bytes, twoLayers());
  ASSERT_EQ(result.leftOut.size(), 1U);
  EXPECT_EQ(result.leftOut.front().reason, LeftOut::doubled);
  EXPECT_EQ(result.leftOut.front().end - result.leftOut.front().begin, run.size());
}

TEST(InkRescue, CallsNoRunDoubledWhereLeavingItOutMendsNothing) {
  const std::string junk = "1x2y3z4w1x2y3z4w\x02";
  const InkRescue result = rescueInkDocument(with(twoLayers(), point(45), junk));
  EXPECT_EQ(timesOf(result.bytes)[0][1].size(), 19U);
  ASSERT_EQ(result.leftOut.size(), 1U);
  EXPECT_EQ(result.leftOut.front().reason, LeftOut::unreadable);
}

std::string annotated(const std::string& annotation) {
  return cut(with(twoLayers(), "    <tracegroup", annotation + "\n    <tracegroup"));
}

TEST(InkRescue, KeepsAnAnnotationWithACommaAndOneWhoseEndIsLost) {
  for (const char* kept :
       {"<annotation type=\"t\">A, B</annotation>", "<annotation type=\"t\">A</annotation>"}) {
    EXPECT_THAT(rescueInkDocument(annotated(kept)).bytes, HasSubstr(kept));
  }
  const InkRescue result = rescueInkDocument(annotated("<annotation type=\"t\">A"));
  EXPECT_THAT(result.bytes, HasSubstr("<annotation type=\"t\">A"));
  EXPECT_EQ(timesOf(result.bytes), timesOf(twoLayers()));
}

TEST(InkRescue, LeavesOutAnAnnotationWithoutATypeOrWithoutAText) {
  for (const char* lost : {"<annotation>A</annotation>", "<annotation type=\"t\"></annotation>",
                           "<annotation type=\"t\">  </annotation>", "<annotation type=\"t\"/>"}) {
    EXPECT_EQ(rescueInkDocument(annotated(lost)).bytes, twoLayers()) << lost;
  }
}

TEST(InkRescue, GivesATraceWithoutAReferenceTheContextThatIsThere) {
  const std::string one = with(document(layer(0, trace(0, 19))), "default-context", "mine");
  const InkRescue result = rescueInkDocument(with(one, "<trace ",
                                                  "<tr\x01"
                                                  "ce "));
  EXPECT_THAT(result.bytes, HasSubstr("<trace contextRef=\"#mine\">" + points(0, 19)));
  EXPECT_EQ(result.definitionsPutIn, 0U);
}

TEST(InkRescue, TakesAContextWithAnEndTagOfItsOwn) {
  const std::string open = with(kContext, " />", ">");
  for (const char* end : {"</context>\n", "  \n</context>\n", ""}) {
    const InkRescue result = rescueInkDocument(cut(with(twoLayers(), kContext, open + end)));
    EXPECT_EQ(result.bytes, twoLayers()) << end;
  }
  EXPECT_EQ(rescueInkDocument(cut(with(twoLayers(), kContext, kContext + "</context>"))).bytes,
            twoLayers());
}

TEST(InkRescue, MendsDefinitionsInWhichTheDocumentEnds) {
  const std::string layers = "<ink>\n" + layer(0, trace(0, 19));
  for (const std::string& end :
       {std::string("<definitions><traceFormat id=\"pen\"><channel name=\"X\" units=\"0.1mm\" />"),
        std::string("<definitions><brush id=\"ink\"><annotationXML><color>Red"),
        std::string("<definitions><context id=\"default-context\" brushRef=\"#ink\">")}) {
    const InkRescue result = rescueInkDocument(layers + end);
    EXPECT_EQ(timesOf(result.bytes), Layers{{times(0, 19)}}) << end;
    const Orvo::InkReading reading = Orvo::readInk(result.bytes);
    EXPECT_EQ(reading.definitions->brushes.size(), 1U);
    EXPECT_EQ(reading.definitions->traceFormats.size(), 1U);
    EXPECT_EQ(reading.definitions->contexts.size(), 1U);
  }
}

TEST(InkRescue, DividesAStrokeAtALeapOfTheClockAndDropsAPointThatFitsNeitherSide) {
  const std::string late = with(point(59), "8472", "99999");
  EXPECT_EQ(timesOf(rescueInkDocument(cut(with(twoLayers(), point(59), late))).bytes)[0],
            (std::vector<Times>{times(0, 19), times(40, 58), {99999}}));
  const std::string wrong = with(with(points(50, 51), "8400", "99999"), "8408", "5");
  EXPECT_EQ(timesOf(rescueInkDocument(cut(with(twoLayers(), points(50, 51), wrong))).bytes)[0],
            (std::vector<Times>{times(0, 19), times(40, 49), {5}, times(52, 59)}));
}

TEST(InkRescue, MendsTagsWhoseAttributesAreDamaged) {
  // An attribute twice, one without a value, without a quotation mark, without a blank in front.
  const std::string tag = "<trace contextRef=\"#default-context\">";
  for (const char* damaged :
       {"<trace contextRef=\"#default-context\" contextRef=\"#default-context\">",
        "<trace contextRef>", "<trace contextRef=#default-context>",
        "<trace contextRef=\"#default-context\"type=\"a\">",
        "<trace contextRef=\"#default-context>", "<trace 1=\"2\">"}) {
    const InkRescue result = rescueInkDocument(cut(with(twoLayers(), tag, damaged)));
    EXPECT_EQ(timesOf(result.bytes), timesOf(twoLayers())) << damaged;
  }
}

}  // namespace
