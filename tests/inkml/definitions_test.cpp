#include "inkml/definitions.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tinyxml.h>

#include "tests/support/ink/xml_text.h"

namespace {

using inktest::printed;
using inktest::XmlTree;
using Orvo::Brush;
using Orvo::Channel;
using Orvo::InkContext;
using Orvo::InkMLDefinitions;
using Orvo::TraceFormat;
using testing::ElementsAre;
using testing::IsEmpty;

template <class T>
std::string written(const T& object) {
  TiXmlDocument xml;
  EXPECT_TRUE(object.write(xml));
  return printed(xml);
}

// Whether the root of the text can be read.
template <class T>
bool readRoot(T& object, const std::string& text) {
  return object.read(XmlTree(text).root());
}

TEST(ElementNames, AreThoseOfTheFormat) {
  EXPECT_EQ(Channel().getName(), "channel");
  EXPECT_EQ(TraceFormat().getName(), "traceFormat");
  EXPECT_EQ(Brush().getName(), "brush");
  EXPECT_EQ(InkMLDefinitions().getName(), "definitions");
}

TEST(FreshChannel, HasItsDefaults) {
  const Channel channel;
  EXPECT_EQ(channel.name.value, "none");
  EXPECT_EQ(channel.type.value, Channel::INTEGER);
  EXPECT_EQ(channel.min.value, 0);
  EXPECT_EQ(channel.max.value, 0);
  EXPECT_EQ(channel.units.value, "0.01mm");
}

TEST(WrittenChannel, HasTheNameTheUnitAndTheRangeThatItWasMadeWith) {
  EXPECT_EQ(written(Channel("X", "0.1mm", -5, 7)),
            "<channel name=\"X\" min=\"-5\" max=\"7\" units=\"0.1mm\" />\n");
}

TEST(WrittenChannel, HasNoType) {
  EXPECT_EQ(written(Channel()), "<channel name=\"none\" min=\"0\" max=\"0\" units=\"0.01mm\" />\n");
  Channel channel;
  channel.name.value = "X & Y";
  channel.type.value = Channel::BOOLEAN;
  channel.min.value = INT32_MIN;
  channel.max.value = INT32_MAX;
  channel.units.value = "dev";
  EXPECT_EQ(written(channel),
            "<channel name=\"X &amp; Y\" min=\"-2147483648\" max=\"2147483647\" "
            "units=\"dev\" />\n");
}

TEST(ReadChannel, TakesAllFiveAttributes) {
  Channel channel;
  EXPECT_TRUE(
      readRoot(channel, "<channel units='mm' max='12.9' min='-5' type='DECIMAL' name='F'/>"));
  EXPECT_EQ(channel.name.value, "F");
  EXPECT_EQ(channel.type.value, Channel::DECIMAL);
  EXPECT_EQ(channel.min.value, -5);
  EXPECT_EQ(channel.max.value, 12);
  EXPECT_EQ(channel.units.value, "mm");
}

TEST(ReadChannel, RecognisesThreeTypesByTheirExactSpelling) {
  const auto typeOf = [](const std::string& spelling) {
    Channel channel;
    EXPECT_TRUE(
        readRoot(channel, "<channel name='' min='abc' max='' units='' type='" + spelling + "'/>"));
    EXPECT_EQ(channel.min.value, 0);
    return channel.type.value;
  };
  EXPECT_EQ(typeOf("INTEGER"), Channel::INTEGER);
  EXPECT_EQ(typeOf("DECIMAL"), Channel::DECIMAL);
  EXPECT_EQ(typeOf("BOOLEAN"), Channel::BOOLEAN);
  EXPECT_EQ(typeOf("decimal"), Channel::INTEGER);
  EXPECT_EQ(typeOf(""), Channel::INTEGER);
}

TEST(ReadChannel, KeepsItsTypeWhenTheOneInTheFileIsUnknown) {
  Channel channel;
  channel.type.value = Channel::BOOLEAN;
  EXPECT_TRUE(readRoot(channel, "<channel name='n' type='x' min='1' max='2' units='u'/>"));
  EXPECT_EQ(channel.type.value, Channel::BOOLEAN);
}

TEST(ReadChannel, StopsAtTheFirstMissingAttributeAndKeepsWhatCameBefore) {
  Channel channel;
  EXPECT_FALSE(readRoot(channel, "<channel type='DECIMAL' min='1' max='2' units='u'/>"));
  EXPECT_EQ(channel.type.value, Channel::INTEGER);
  EXPECT_FALSE(readRoot(channel, "<channel name='a' min='1' max='2' units='u'/>"));
  EXPECT_EQ(channel.name.value, "a");
  EXPECT_EQ(channel.min.value, 0);
  EXPECT_FALSE(readRoot(channel, "<channel name='b' type='DECIMAL' max='2' units='u'/>"));
  EXPECT_EQ(channel.type.value, Channel::DECIMAL);
  EXPECT_EQ(channel.max.value, 0);
  EXPECT_FALSE(readRoot(channel, "<channel name='c' type='DECIMAL' min='1' units='u'/>"));
  EXPECT_EQ(channel.min.value, 1);
  EXPECT_FALSE(readRoot(channel, "<channel name='d' type='DECIMAL' min='1' max='2'/>"));
  EXPECT_EQ(channel.max.value, 2);
  EXPECT_EQ(channel.units.value, "0.01mm");
}

TEST(WrittenFormat, HasItsChannelsInOrder) {
  TraceFormat format;
  EXPECT_EQ(written(format), "<traceFormat id=\"\" />\n");
  format.id = "f";
  format.resize(2);
  format.back().name.value = "Y";
  EXPECT_EQ(written(format),
            "<traceFormat id=\"f\">\n"
            "    <channel name=\"none\" min=\"0\" max=\"0\" units=\"0.01mm\" />\n"
            "    <channel name=\"Y\" min=\"0\" max=\"0\" units=\"0.01mm\" />\n"
            "</traceFormat>\n");
}

TEST(ReadFormat, NeedsAnIdAndKeepsNoChannels) {
  TraceFormat format;
  EXPECT_FALSE(readRoot(format, "<traceFormat name='f'/>"));
  EXPECT_TRUE(readRoot(format,
                       "<traceFormat id='f'><channel name='X' type='INTEGER' min='0' "
                       "max='1' units='mm'/></traceFormat>"));
  EXPECT_EQ(format.id, "f");
  EXPECT_TRUE(format.empty());
}

TEST(ReadFormat, DoesNotKeepTheChannelsBesideItEither) {
  const XmlTree tree(
      "<definitions><channel name='X' type='INTEGER' min='0' max='1' units='mm'/>"
      "<channel/><traceFormat id='f'/></definitions>");
  TraceFormat format;
  EXPECT_TRUE(format.read(tree.named("traceFormat")));
  EXPECT_TRUE(format.empty());
}

TEST(CopiedFormat, HasItsOwnChannels) {
  TraceFormat format;
  format.resize(1);
  TraceFormat copy(format);
  copy.front().name.value = "copy";
  EXPECT_EQ(format.front().name.value, "none");
  EXPECT_EQ(copy.size(), 1U);
}

TEST(FreshBrush, HasItsDefaults) {
  const Brush brush;
  EXPECT_EQ(brush.color.value, "Black");
  EXPECT_EQ(brush.width.value, 1U);
  EXPECT_EQ(brush.height.value, 10U);
  EXPECT_EQ(brush.transparency.value, 100U);
  EXPECT_FALSE(brush.antialiased.value);
  EXPECT_TRUE(brush.fittocurve.value);
  EXPECT_TRUE(brush.ignorePressure.value);
  EXPECT_EQ(brush.pentip.value, "Ball");
  EXPECT_EQ(brush.id, "none");
}

TEST(WrittenBrush, HasIgnorePressureUnderBothNames) {
  EXPECT_EQ(written(Brush()),
            "<brush id=\"none\">\n"
            "    <annotationXML>\n"
            "        <color>Black</color>\n"
            "        <width>1</width>\n"
            "        <height>10</height>\n"
            "        <transparency>100</transparency>\n"
            "        <antialiased>True</antialiased>\n"
            "        <fittocurve>True</fittocurve>\n"
            "        <ignorePressure>True</ignorePressure>\n"
            "        <pentip>Ball</pentip>\n"
            "    </annotationXML>\n"
            "</brush>\n");
}

TEST(WrittenBrush, NeverHasAntialiased) {
  Brush brush;
  brush.antialiased.value = true;
  brush.fittocurve.value = false;
  brush.ignorePressure.value = false;
  brush.width.value = 4294967295U;
  brush.height.value = 2147483648U;
  brush.transparency.value = 4294967294U;
  brush.pentip.value = "";
  EXPECT_EQ(written(brush),
            "<brush id=\"none\">\n"
            "    <annotationXML>\n"
            "        <color>Black</color>\n"
            "        <width>-1</width>\n"
            "        <height>-2147483648</height>\n"
            "        <transparency>-2</transparency>\n"
            "        <antialiased>False</antialiased>\n"
            "        <fittocurve>False</fittocurve>\n"
            "        <ignorePressure>False</ignorePressure>\n"
            "        <pentip></pentip>\n"
            "    </annotationXML>\n"
            "</brush>\n");
}

TEST(BrushReference, EqualsOnlyAReferenceToTheSameBrush) {
  Brush one;
  Brush twin;
  EXPECT_FALSE(Orvo::Property<Brush*>(&one) == Orvo::Property<Brush*>(&twin));
  EXPECT_TRUE(Orvo::Property<Brush*>(&one) == Orvo::Property<Brush*>(&one));
}

// A brush "b" with these properties, read as part of definitions.
Brush readBrush(const std::string& properties) {
  InkMLDefinitions definitions;
  const XmlTree tree("<ink><definitions><brush id='b'><annotationXML>" + properties +
                     "</annotationXML></brush></definitions></ink>");
  EXPECT_TRUE(definitions.read(tree.named("definitions")));
  EXPECT_EQ(definitions.brushes.size(), 1U);
  return definitions.brushes.front();
}

TEST(ReadBrush, TakesAllProperties) {
  const Brush brush = readBrush(
      "<color>Red</color><width>3</width><height>4</height>"
      "<transparency>50</transparency><antialiased>True</antialiased>"
      "<fittocurve>true</fittocurve><ignorePressure>True</ignorePressure>"
      "<pentip>Nib</pentip>");
  EXPECT_EQ(brush.id, "b");
  EXPECT_EQ(brush.color.value, "Red");
  EXPECT_EQ(brush.width.value, 3U);
  EXPECT_EQ(brush.height.value, 4U);
  EXPECT_EQ(brush.transparency.value, 50U);
  EXPECT_TRUE(brush.antialiased.value);
  EXPECT_TRUE(brush.fittocurve.value);
  EXPECT_EQ(brush.pentip.value, "Nib");
}

TEST(ReadBrush, IsEmptyZeroOrFalseWhereAPropertyIsMissing) {
  const Brush brush = readBrush("<color>Red</color>");
  EXPECT_EQ(brush.color.value, "Red");
  EXPECT_EQ(brush.width.value, 0U);
  EXPECT_EQ(brush.height.value, 0U);
  EXPECT_EQ(brush.transparency.value, 0U);
  EXPECT_FALSE(brush.antialiased.value);
  EXPECT_FALSE(brush.fittocurve.value);
  EXPECT_TRUE(brush.ignorePressure.value);
  EXPECT_EQ(brush.pentip.value, "");
}

TEST(ReadBrush, TakesAntialiasedFromIgnorePressure) {
  const Brush crossed = readBrush(
      "<ignorePressure>true</ignorePressure>"
      "<antialiased>False</antialiased>");
  EXPECT_TRUE(crossed.antialiased.value);
  EXPECT_TRUE(crossed.ignorePressure.value);
  const Brush other = readBrush(
      "<antialiased>True</antialiased>"
      "<ignorePressure>False</ignorePressure>");
  EXPECT_FALSE(other.antialiased.value);
  EXPECT_TRUE(other.ignorePressure.value);
  EXPECT_FALSE(readBrush("<antialiased>True</antialiased>").antialiased.value);
}

TEST(ReadBrush, LeavesIgnorePressureAsItWas) {
  const XmlTree tree(
      "<a><brush id='b'><annotationXML><ignorePressure>True</ignorePressure>"
      "</annotationXML></brush></a>");
  Brush brush;
  brush.ignorePressure.value = false;
  EXPECT_TRUE(brush.read(tree.named("brush")));
  EXPECT_FALSE(brush.ignorePressure.value);
}

TEST(ReadBrush, ComparesFlagsExactly) {
  for (const char* text : {"TRUE", "1", "yes", "&#x20;true", "tru", "<![CDATA[ true]]>", ""}) {
    EXPECT_FALSE(readBrush("<fittocurve>" + std::string(text) + "</fittocurve>").fittocurve.value)
        << text;
  }
  EXPECT_TRUE(readBrush("<fittocurve> true </fittocurve>").fittocurve.value);
  EXPECT_TRUE(readBrush("<fittocurve><![CDATA[True]]></fittocurve>").fittocurve.value);
}

TEST(ReadBrush, TakesTheWholeNumberAtTheStartOfAText) {
  const Brush brush = readBrush(
      "<width>-1</width><height>7.9</height>"
      "<transparency>4000000000</transparency>");
  EXPECT_EQ(brush.width.value, 4294967295U);
  EXPECT_EQ(brush.height.value, 7U);
  EXPECT_EQ(brush.transparency.value, 4000000000U);
}

TEST(ReadBrush, FindsPropertiesDirectlyInTheBrushFirst) {
  InkMLDefinitions definitions;
  const XmlTree tree(
      "<ink><definitions><brush id='b'><annotationXML><color>In</color>"
      "</annotationXML><color>Sib</color></brush></definitions></ink>");
  EXPECT_TRUE(definitions.read(tree.named("definitions")));
  EXPECT_EQ(definitions.brushes.front().color.value, "Sib");
}

TEST(ReadBrush, NeedsAnIdAndThenProperties) {
  Brush brush;
  EXPECT_FALSE(readRoot(brush, "<brush><annotationXML/></brush>"));
  EXPECT_EQ(brush.id, "none");
  EXPECT_FALSE(readRoot(brush, "<brush id='b'/>"));
  EXPECT_EQ(brush.id, "b");
  EXPECT_EQ(brush.color.value, "Black");
  EXPECT_FALSE(readRoot(brush, "<brush id='b'><annotationxml/></brush>"));
}

TEST(ReadBrush, TakesACommentAsItsProperties) {
  const XmlTree tree(
      "<a><brush id='b'><!--annotationXML--><annotationXML><color>Red</color>"
      "</annotationXML></brush></a>");
  Brush brush;
  EXPECT_TRUE(brush.read(tree.named("brush")));
  EXPECT_EQ(brush.color.value, "");
}

class Definitions : public testing::Test {
 protected:
  bool read(const std::string& content) {
    const XmlTree tree("<ink><definitions>" + content + "</definitions></ink>");
    return definitions_.read(tree.named("definitions"));
  }

  std::vector<std::string> brushIds() const {
    std::vector<std::string> ids;
    for (const Brush& brush : definitions_.brushes)
      ids.push_back(brush.id);
    return ids;
  }

  std::vector<std::string> formatIds() const {
    std::vector<std::string> ids;
    for (const TraceFormat& format : definitions_.traceFormats)
      ids.push_back(format.id);
    return ids;
  }

  std::vector<std::string> contextIds() const {
    std::vector<std::string> ids;
    for (const InkContext& context : definitions_.contexts)
      ids.push_back(context.id);
    return ids;
  }

  InkMLDefinitions definitions_;
};

std::string brush(const std::string& id) {
  return "<brush id='" + id + "'><annotationXML/></brush>";
}

std::string format(const std::string& id) {
  return "<traceFormat id='" + id + "'/>";
}

TEST_F(Definitions, AreWrittenWithFormatsFirstThenBrushesThenContexts) {
  definitions_.traceFormats.emplace_back().id = "f";
  definitions_.brushes.emplace_back().id = "b";
  definitions_.contexts.push_back({&definitions_.traceFormats.front(), nullptr, "c"});
  definitions_.contexts.push_back({nullptr, &definitions_.brushes.front(), ""});
  definitions_.contexts.push_back(
      {&definitions_.traceFormats.front(), &definitions_.brushes.front(), "d"});
  EXPECT_EQ(written(definitions_),
            "<definitions>\n"
            "    <traceFormat id=\"f\" />\n"
            "    <brush id=\"b\">\n"
            "        <annotationXML>\n"
            "            <color>Black</color>\n"
            "            <width>1</width>\n"
            "            <height>10</height>\n"
            "            <transparency>100</transparency>\n"
            "            <antialiased>True</antialiased>\n"
            "            <fittocurve>True</fittocurve>\n"
            "            <ignorePressure>True</ignorePressure>\n"
            "            <pentip>Ball</pentip>\n"
            "        </annotationXML>\n"
            "    </brush>\n"
            "    <context id=\"c\" traceFormatRef=\"#f\" />\n"
            "    <context brushRef=\"#b\" />\n"
            "    <context id=\"d\" brushRef=\"#b\" traceFormatRef=\"#f\" />\n"
            "</definitions>\n");
}

TEST_F(Definitions, AreOneElementWhenEmpty) {
  EXPECT_EQ(written(definitions_), "<definitions />\n");
}

TEST_F(Definitions, AreReadInDocumentOrderKindByKind) {
  EXPECT_TRUE(read("<context id='c' brushRef='#b2' traceFormatRef='#f1'/>" + brush("b1") +
                   format("f1") + brush("b2") + format("f2")));
  EXPECT_THAT(brushIds(), ElementsAre("b1", "b2"));
  EXPECT_THAT(formatIds(), ElementsAre("f1", "f2"));
  ASSERT_THAT(contextIds(), ElementsAre("c"));
  EXPECT_EQ(definitions_.contexts.front().brush.value, &definitions_.brushes.back());
  EXPECT_EQ(definitions_.contexts.front().traceFormat.value, &definitions_.traceFormats.front());
}

TEST_F(Definitions, SkipBrushesAndFormatsThatCannotBeRead) {
  EXPECT_TRUE(read("<brush><annotationXML/></brush><brush id='x'/>" + brush("b") +
                   "<traceFormat/>" + format("f") + "<Brush id='y'><annotationXML/></Brush>"));
  EXPECT_THAT(brushIds(), ElementsAre("b"));
  EXPECT_THAT(formatIds(), ElementsAre("f"));
}

TEST_F(Definitions, TakeBrushesOnlyFromTheirOwnChildren) {
  EXPECT_FALSE(read("<x>" + brush("b") + "</x><context id='c'></context>"));
  EXPECT_THAT(brushIds(), IsEmpty());
}

TEST_F(Definitions, KeepWhatCameBeforeAContextThatFails) {
  const std::string good = "<context id='good' brushRef='#b' traceFormatRef='#f'/>";
  EXPECT_FALSE(read(good + "<context brushRef='#b' traceFormatRef='#f'/>" + good + brush("b") +
                    format("f")));
  EXPECT_THAT(contextIds(), ElementsAre("good"));
  EXPECT_THAT(brushIds(), ElementsAre("b"));
  EXPECT_THAT(formatIds(), ElementsAre("f"));
}

TEST_F(Definitions, FailForAContextWithoutId) {
  EXPECT_FALSE(read(brush("b") + format("f") + "<context brushRef='#b' traceFormatRef='#f'/>"));
}

TEST_F(Definitions, FailForAReferenceWithoutANumberSign) {
  EXPECT_FALSE(
      read(brush("b1") + format("f") + "<context id='c' brushRef='b1' traceFormatRef='#f'/>"));
  EXPECT_FALSE(
      read(brush("b") + format("f1") + "<context id='c' brushRef='#b' traceFormatRef='f1'/>"));
  EXPECT_FALSE(read(brush("") + format("f") + "<context id='c' brushRef='' traceFormatRef='#f'/>"));
  EXPECT_FALSE(read(brush("b") + format("") + "<context id='c' brushRef='#b' traceFormatRef=''/>"));
  EXPECT_FALSE(read(brush("b") + format("f") +
                    "<context id='c' brushRef='other.kvo#b' traceFormatRef='#f'/>"));
  EXPECT_THAT(contextIds(), IsEmpty());
}

TEST_F(Definitions, FailForAReferenceToSomethingThatDoesNotExist) {
  EXPECT_FALSE(read("<context id='c'/>"));
  EXPECT_FALSE(read(format("f") + "<context id='c' brushRef='#b' traceFormatRef='#f'/>"));
  EXPECT_FALSE(read(brush("b") + "<context id='c' brushRef='#b' traceFormatRef='#g'/>"));
  EXPECT_FALSE(read("<context id='c' brushRef='#B' traceFormatRef='#f'/>"));
  EXPECT_THAT(contextIds(), IsEmpty());
}

TEST_F(Definitions, TakeAMissingReferenceAsTheEmptyId) {
  EXPECT_FALSE(read(brush("b") + format("") + "<context id='c'/>"));
  EXPECT_TRUE(read(brush("") + "<context id='c'/>"));
  ASSERT_THAT(contextIds(), ElementsAre("c"));
  EXPECT_EQ(definitions_.contexts.front().brush.value->id, "");
}

TEST_F(Definitions, TakeANumberSignAloneAsTheEmptyIdToo) {
  EXPECT_TRUE(read(brush("") + format("") + "<context id='c' brushRef='#' traceFormatRef='#'/>"));
  EXPECT_THAT(contextIds(), ElementsAre("c"));
}

TEST_F(Definitions, AcceptAnEmptyContextIdAndWriteItWithoutOne) {
  EXPECT_TRUE(
      read(brush("b") + format("f") + "<context id='' brushRef='#b' traceFormatRef='#f'/>"));
  EXPECT_THAT(contextIds(), ElementsAre(""));
  EXPECT_NE(written(definitions_).find("<context brushRef=\"#b\" traceFormatRef=\"#f\" />"),
            std::string::npos);
}

TEST_F(Definitions, ResolveAReferenceToTheFirstWithItsId) {
  EXPECT_TRUE(read(brush("b") + brush("b") + format("f") + format("f") +
                   "<context id='c' brushRef='#b' traceFormatRef='#f'/>"));
  EXPECT_EQ(definitions_.contexts.front().brush.value, &definitions_.brushes.front());
  EXPECT_EQ(definitions_.contexts.front().traceFormat.value, &definitions_.traceFormats.front());
}

TEST_F(Definitions, AreDoubledWhenReadTwice) {
  const std::string content =
      brush("b") + format("f") + "<context id='c' brushRef='#b' traceFormatRef='#f'/>";
  EXPECT_TRUE(read(content));
  EXPECT_TRUE(read(content));
  EXPECT_THAT(brushIds(), ElementsAre("b", "b"));
  EXPECT_THAT(formatIds(), ElementsAre("f", "f"));
  EXPECT_THAT(contextIds(), ElementsAre("c", "c"));
  EXPECT_EQ(definitions_.contexts.back().brush.value, &definitions_.brushes.front());
}

TEST_F(Definitions, AddNothingForAMissingElement) {
  EXPECT_TRUE(definitions_.read(nullptr));
  EXPECT_THAT(brushIds(), IsEmpty());
  EXPECT_THAT(formatIds(), IsEmpty());
  EXPECT_THAT(contextIds(), IsEmpty());
}

TEST_F(Definitions, AddNothingForANodeOfAnotherKind) {
  const XmlTree tree("<ink><!--definitions--><brush id='b'><annotationXML/></brush></ink>");
  EXPECT_TRUE(definitions_.read(tree.root()->FirstChild()));
  EXPECT_THAT(brushIds(), IsEmpty());
}

// Texts that all have the same hash in the standard library: of two blocks of eight bytes, the
// second undoes what the first did.
std::vector<std::string> textsOfOneHash(std::size_t count) {
  constexpr std::uint64_t kFactor = 0xC6A4A7935BD1E995;
  constexpr std::uint64_t kInverse = 0x5F7A0EA7E59B19BD;
  static_assert(kFactor * kInverse == 1);
  constexpr std::uint64_t kStart = 0xC70F6907 ^ (16 * kFactor);
  const auto fold = [](std::uint64_t value) { return value ^ (value >> 47U); };
  std::vector<std::string> texts;
  for (std::uint64_t first = 0; first < count; ++first) {
    const std::uint64_t state = (kStart ^ (fold(first * kFactor) * kFactor)) * kFactor;
    const std::array<std::uint64_t, 2> blocks{first, fold(state * kInverse) * kInverse};
    std::string& text = texts.emplace_back(sizeof blocks, '\0');
    std::memcpy(text.data(), blocks.data(), sizeof blocks);
  }
  return texts;
}

TEST_F(Definitions, WithManyContextsAreReadInLinearTime) {
  std::string content;
  for (int i = 0; i < 20'000; ++i) {
    const std::string id = std::to_string(i);
    content += brush(id);
    content += format(id);
    content.append("<context id='c' brushRef='#").append(id);
    content.append("' traceFormatRef='#").append(id).append("'/>");
  }
  EXPECT_TRUE(read(content));
  EXPECT_EQ(definitions_.contexts.size(), 20'000U);
  EXPECT_EQ(definitions_.contexts.back().brush.value, &definitions_.brushes.back());
}

TEST_F(Definitions, WithIdsMadeToCollideAreReadInLinearTime) {
  const std::vector<std::string> ids = textsOfOneHash(200'000);
  const std::hash<std::string_view> hash;
  ASSERT_TRUE(std::ranges::all_of(
      ids, [&](const std::string& id) { return hash(id) == hash(ids.front()); }));
  for (const std::string& id : ids)
    definitions_.brushes.emplace_back().id = id;
  EXPECT_TRUE(
      read(brush("b") + format("f") + "<context id='c' brushRef='#b' traceFormatRef='#f'/>"));
  EXPECT_EQ(definitions_.contexts.back().brush.value, &definitions_.brushes.back());
}

}  // namespace
