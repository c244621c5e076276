#include "inkml/ink_reading.h"

#include <fstream>
#include <gtest/gtest.h>

#include "tests/support/ink/ink_builder.h"
#include "tests/support/pen/temporary_folder.h"

namespace {

using Orvo::InkFailure;
using Orvo::InkProblem;
using Orvo::InkReading;
using Kind = Orvo::InkProblemKind;

class Reading : public testing::Test {
 protected:
  InkReading read(const std::string& text) const {
    const std::filesystem::path path = folder_ / "a.kvo";
    std::ofstream(path, std::ios::binary) << text;
    return Orvo::readInk(path.wstring().c_str());
  }

  // The only problem of a text that opens.
  InkProblem onlyProblem(const std::string& text) const {
    const InkReading reading = read(text);
    EXPECT_EQ(reading.report.failure, InkFailure::none) << text;
    EXPECT_TRUE(reading.document->complete.value);
    EXPECT_EQ(reading.report.problems.size(), 1U) << text;
    return reading.report.problems.empty() ? InkProblem{} : reading.report.problems.front();
  }

  void expectProblem(const std::string& text, Kind kind, std::uint64_t count, int line,
                     const std::string& detail = "") const {
    const InkProblem problem = onlyProblem(text);
    EXPECT_EQ(problem.kind, kind) << text;
    EXPECT_EQ(problem.count, count) << text;
    EXPECT_EQ(problem.line, line) << text;
    EXPECT_EQ(problem.detail, detail) << text;
  }

  InkFailure failureOf(const std::string& text) const {
    const InkReading reading = read(text);
    EXPECT_FALSE(reading.document->complete.value);
    return reading.report.failure;
  }

  pentest::TemporaryFolder folder_;
};

// What a reading found, for comparing two.
std::string summaryOf(const InkReading& reading) {
  std::string summary = std::to_string(reading.document->complete.value) + " " +
                        std::to_string(reading.document->size()) + " " +
                        std::to_string(static_cast<int>(reading.report.failure)) + " " +
                        std::to_string(reading.report.line) + " " +
                        std::to_string(reading.report.traces) + " " + reading.report.libraryText;
  for (const InkProblem& problem : reading.report.problems)
    summary += " " + std::to_string(static_cast<int>(problem.kind)) + ":" +
               std::to_string(problem.line) + ":" + std::to_string(problem.count);
  return summary;
}

std::string inLayer(const std::string& content) {
  return "<ink>\n<tracegroup id='layer0'>\n" + content + "</tracegroup>\n</ink>\n";
}

TEST_F(Reading, GivesDocumentAndDefinitionsWithoutProblems) {
  const InkReading reading = read(
      "<?xml version=\"1.0\" ?>\n<ink><definitions><brush id='b'><annotationXML/></brush>"
      "<traceFormat id='f'/><context id='c' brushRef='#b' traceFormatRef='#f'/></definitions>"
      "<annotation type='t'>x</annotation>"
      "<tracegroup id='layer0'><trace contextRef='#c'>1 2 3 4 -5 +6 7, 8 9</trace>"
      "</tracegroup></ink>\n");
  EXPECT_EQ(reading.report.failure, InkFailure::none);
  EXPECT_TRUE(reading.report.problems.empty());
  EXPECT_EQ(reading.report.rootName, "ink");
  EXPECT_EQ(reading.report.nameSpace, "");
  EXPECT_TRUE(reading.document->complete.value);
  EXPECT_EQ(inktest::shapeOf(*reading.document), (std::vector<std::vector<std::size_t>>{{2}}));
  EXPECT_EQ(reading.definitions->contexts.size(), 1U);
}

TEST_F(Reading, ReportsAFileThatCannotBeOpened) {
  const InkReading reading = Orvo::readInk((folder_ / "missing.kvo").wstring().c_str());
  EXPECT_EQ(reading.report.failure, InkFailure::cannotOpen);
  EXPECT_FALSE(reading.document->complete.value);
  EXPECT_NE(reading.definitions, nullptr);
}

#ifdef __linux__
TEST_F(Reading, ReportsAFolder) {
  EXPECT_EQ(Orvo::readInk(folder_.path().wstring().c_str()).report.failure, InkFailure::unreadable);
}
#endif

TEST_F(Reading, ReportsAFileThatIsTooLarge) {
  const std::filesystem::path path = folder_ / "a.kvo";
  std::ofstream(path).put('<');
  std::filesystem::resize_file(path, 0x80000000U);
  const InkReading reading = Orvo::readInk(path.wstring().c_str());
  EXPECT_EQ(reading.report.failure, InkFailure::tooLarge);
  EXPECT_EQ(reading.report.size, 0x80000000);
}

TEST_F(Reading, ReportsTheLineOfAnElementNestedTooDeep) {
  std::string text = "<ink>\n";
  for (int i = 0; i < 500; ++i)
    text += "<a>\n";
  const InkReading reading = read(text);
  EXPECT_EQ(reading.report.failure, InkFailure::tooDeep);
  EXPECT_EQ(reading.report.line, 501);
}

TEST_F(Reading, ReportsTheLineOfAnElementWithTooManyAttributes) {
  std::string text = "<ink>\n\n<a\n";
  for (int i = 0; i <= 10'000; ++i)
    text += " b=''\n";
  const InkReading reading = read(text + "/></ink>");
  EXPECT_EQ(reading.report.failure, InkFailure::tooManyAttributes);
  EXPECT_EQ(reading.report.line, 3);
  EXPECT_FALSE(reading.document->complete.value);
}

TEST_F(Reading, ReportsACharacterThatIsCut) {
  const InkReading reading = read("<ink>\n\n\xC3");
  EXPECT_EQ(reading.report.failure, InkFailure::cutCharacter);
  EXPECT_EQ(reading.report.line, 3);
  EXPECT_FALSE(reading.document->complete.value);
}

TEST_F(Reading, ReportsTheLineAndTheWordsOfTheLibrary) {
  const InkReading reading = read("<ink>\n<a b='1' b='2'/>\n</ink>");
  EXPECT_EQ(reading.report.failure, InkFailure::brokenXml);
  EXPECT_EQ(reading.report.line, 2);
  EXPECT_NE(reading.report.libraryText, "");
  EXPECT_TRUE(reading.report.problems.empty());
}

TEST_F(Reading, ReportsAnEmptyFileAndItsSize) {
  const InkReading reading = read("");
  EXPECT_EQ(reading.report.failure, InkFailure::brokenXml);
  EXPECT_EQ(reading.report.size, 0);
}

TEST_F(Reading, ReportsTheRootThatIsNotInk) {
  const InkReading reading = read("<ink:ink xmlns:ink='x'><ink:trace/></ink:ink>");
  EXPECT_EQ(reading.report.failure, InkFailure::noInk);
  EXPECT_EQ(reading.report.rootName, "ink:ink");
  const InkReading none = read("<!--c-->");
  EXPECT_EQ(none.report.failure, InkFailure::noInk);
  EXPECT_EQ(none.report.rootName, "");
}

TEST_F(Reading, ReportsADocumentTypeThatHidesTheRoot) {
  const InkReading reading = read("<!DOCTYPE ink [\n<!ENTITY e \"v\">\n]>\n<ink/>");
  EXPECT_EQ(reading.report.failure, InkFailure::noInk);
  ASSERT_NE(reading.report.find(Kind::documentTypeSubset), nullptr);
  EXPECT_EQ(reading.report.find(Kind::documentTypeSubset)->line, 3);
  EXPECT_EQ(reading.report.find(Kind::textAfterRoot), nullptr);
}

TEST_F(Reading, ReportsAnInstructionOrDeclarationThatHidesTheRoot) {
  EXPECT_NE(read("<?pi > ?><ink/>").report.find(Kind::instructionWithEnd), nullptr);
  EXPECT_NE(read("<?xml version ?><ink/>").report.find(Kind::brokenDeclaration), nullptr);
}

TEST_F(Reading, ReportsWhatIsIgnoredAfterTheRoot) {
  expectProblem("<ink/>\n\njunk <ink/>", Kind::textAfterRoot, 1, 3);
  expectProblem(std::string("<ink/>\n\0<ink/>", 14), Kind::nulAfterRoot, 1, 2);
  expectProblem("<ink/>\n<other/><ink/>", Kind::furtherRoots, 2, 2, "other");
}

TEST_F(Reading, ReportsNodesThatAreTakenForElements) {
  const InkReading reading = read("\n<!--ink-->\n<ink/>");
  ASSERT_NE(reading.report.find(Kind::noElementAsRoot), nullptr);
  EXPECT_EQ(reading.report.find(Kind::noElementAsRoot)->line, 2);
  EXPECT_EQ(reading.report.find(Kind::furtherRoots)->detail, "ink");
  const InkReading definitions = read("<ink>\n<!--definitions--><definitions/></ink>");
  ASSERT_NE(definitions.report.find(Kind::noElementAsDefinitions), nullptr);
  EXPECT_EQ(definitions.report.find(Kind::noElementAsDefinitions)->line, 2);
  EXPECT_NE(definitions.report.find(Kind::furtherDefinitions), nullptr);
  expectProblem(
      "<ink><definitions><brush id='b'>\n<!--annotationXML--><annotationXML><color>Red</color>"
      "</annotationXML></brush></definitions></ink>",
      Kind::noElementAsBrushProperties, 1, 2);
  expectProblem(inLayer("<trace contextRef='#c'><!-- pen down -->1 2,3 4</trace>"),
                Kind::tracesOfNoText, 1, 3);
  // The line is that of the comment, not of its trace.
  expectProblem(inLayer("<trace contextRef='#c'>\n\n<!-- pen down -->1 2,3 4</trace>"),
                Kind::tracesOfNoText, 1, 5);
}

TEST_F(Reading, ReportsTextsThatAreInterrupted) {
  expectProblem(inLayer("<trace contextRef='#c'>1 2,3 4\n<!-- more -->,5 6,7 8</trace>"),
                Kind::dividedTexts, 1, 4);
  expectProblem("<ink><annotation type='t'>one<b/>two</annotation></ink>", Kind::dividedTexts, 1,
                1);
}

TEST_F(Reading, ReportsDefinitionsThatAreSkipped) {
  expectProblem("<ink><definitions/>\n<definitions/><definitions/></ink>", Kind::furtherDefinitions,
                2, 2);
  expectProblem("<ink><definitions>\n<traceFormat/></definitions></ink>", Kind::skippedFormats, 1,
                2);
  expectProblem(
      "<ink><definitions><brush id='a'><annotationXML/></brush>\n<brush id='b'/><brush/>"
      "</definitions></ink>",
      Kind::skippedBrushes, 2, 2, "b");
}

TEST_F(Reading, ReportsTheFirstContextThatFails) {
  const auto withContexts = [](const std::string& contexts) {
    return "<ink><definitions><brush id='b'><annotationXML/></brush><traceFormat id='f'/>"
           "<context id='good' brushRef='#b' traceFormatRef='#f'/>\n" +
           contexts + "<context id='lost' brushRef='#b' traceFormatRef='#f'/></definitions></ink>";
  };
  expectProblem(withContexts("<context brushRef='#b' traceFormatRef='#f'/>"),
                Kind::contextWithoutId, 2, 2);
  expectProblem(withContexts("<context id='c' brushRef='b' traceFormatRef='#f'/>"),
                Kind::contextReferenceForm, 2, 2, "b");
  expectProblem(withContexts("<context id='c' brushRef='#b' traceFormatRef='f'/>"),
                Kind::contextReferenceForm, 2, 2, "f");
  expectProblem(withContexts("<context id='c' brushRef='#x' traceFormatRef='#f'/>"),
                Kind::contextBrushMissing, 2, 2, "x");
  expectProblem(withContexts("<context id='c' traceFormatRef='#f'/>"), Kind::contextBrushMissing, 2,
                2, "");
  expectProblem(withContexts("<context id='c' brushRef='#x' traceFormatRef='#y'/>"),
                Kind::contextBrushMissing, 2, 2, "x");
  expectProblem(withContexts("<context id='c' brushRef='#b' traceFormatRef='#y'/>"),
                Kind::contextFormatMissing, 2, 2, "y");
}

TEST_F(Reading, ReportsGroupsAndTracesOfOtherPrograms) {
  expectProblem("<ink>\n<traceGroup id='layer0'/>\n<traceGroup/></ink>", Kind::otherGroups, 2, 2,
                "traceGroup");
  expectProblem("<ink>\n<ink:tracegroup id='layer0'/></ink>", Kind::otherGroups, 1, 2,
                "ink:tracegroup");
  expectProblem("<ink><trace>1 2</trace>\n<trace>3 4</trace></ink>", Kind::looseTraces, 2, 1);
  expectProblem(inLayer("<Trace/>\n<inkml:trace/>\n"), Kind::otherTraces, 2, 3, "Trace");
}

TEST_F(Reading, ReportsTheNamespaceOfTheRoot) {
  EXPECT_EQ(read("<ink xmlns='http://www.w3.org/2003/InkML'/>").report.nameSpace,
            "http://www.w3.org/2003/InkML");
}

TEST_F(Reading, ReportsGroupsWhoseContentIsNotRead) {
  expectProblem("<ink>\n<tracegroup id='group1'/><tracegroup><trace/></tracegroup></ink>",
                Kind::groupsWithoutLayerId, 2, 2, "group1");
  expectProblem(inLayer("<tracegroup id='layer1'/>"), Kind::nestedGroups, 1, 3);
  expectProblem(inLayer("<traceGroup/>"), Kind::nestedGroups, 1, 3);
}

TEST_F(Reading, ReportsTracesThatAreDropped) {
  expectProblem(inLayer("<trace>1 2</trace>\n<trace>3 4</trace>"), Kind::tracesWithoutContext, 2,
                3);
  expectProblem(inLayer("<trace contextRef='#c'/>\n<trace/>"), Kind::tracesWithoutText, 2, 3);
}

TEST_F(Reading, ReportsAnnotationsThatAreSkipped) {
  expectProblem("<ink>\n<annotation>a</annotation><annotation type='t'/></ink>",
                Kind::skippedAnnotations, 2, 2);
  expectProblem(inLayer("<annotation type='t'><b/></annotation>"), Kind::skippedAnnotations, 1, 3);
}

TEST_F(Reading, ReportsTextsThatEndAtANul) {
  expectProblem(inLayer("<trace contextRef='#c'>1 2,3&#0; 4</trace>"), Kind::textsWithNul, 1, 3);
  expectProblem("<ink><annotation type='t'>a&#0;b</annotation></ink>", Kind::textsWithNul, 1, 1);
  expectProblem(
      "<ink><definitions><brush id='b'><annotationXML>\n<color>Re&#0;d</color></annotationXML>"
      "</brush></definitions></ink>",
      Kind::textsWithNul, 1, 2);
}

TEST_F(Reading, ReportsNumbersThatAreReadDifferently) {
  expectProblem(inLayer("<trace contextRef='#c'>1.5 2,3 4e2,5 6.</trace>"), Kind::cutNumbers, 3, 3);
  expectProblem(inLayer("<trace contextRef='#c'>.5 1</trace>"), Kind::cutNumbers, 1, 3);
  expectProblem(inLayer("<trace contextRef='#c'>1 x,'2 3,T 4,- 5</trace>"), Kind::noNumbers, 4, 3);
  expectProblem(inLayer("<trace contextRef='#c'><![CDATA[1\n2 3,4 5x,6 7\n]]></trace>"),
                Kind::otherwiseCutNumbers, 2, 3);
  expectProblem(inLayer("<trace contextRef='#c'>1 2 3 4 5 6 7 8 x,1 2 3 4 5 6 7</trace>"),
                Kind::furtherNumbers, 1, 3);
}

TEST_F(Reading, ReportsNumbersThatOnlyKeepTheirLowBits) {
  // The pressure and the time are unsigned, the others signed.
  expectProblem(inLayer("<trace contextRef='#c'>2147483647 -2147483648 0 4294967295 0 0 4294967295,"
                        "2147483648 0,0 -2147483649,0 0 0 4294967296,0 0 0 0 4294967295,"
                        "99999999999999999999999 0</trace>"),
                Kind::wrappedNumbers, 5, 3);
}

TEST_F(Reading, CountsTheTracesOfGroupsThatAreNotRead) {
  const std::string two = "<trace>1 2</trace><b><x:Trace/></b>";
  EXPECT_EQ(onlyProblem("<ink><traceGroup>" + two + "</traceGroup></ink>").traces, 2U);
  EXPECT_EQ(onlyProblem("<ink><tracegroup>" + two + "</tracegroup></ink>").traces, 2U);
  EXPECT_EQ(onlyProblem(inLayer("<tracegroup id='layer1'>" + two + "</tracegroup>")).traces, 2U);
  EXPECT_EQ(read("<ink>" + two + "<annotation/></ink>").report.traces, 2U);
}

TEST_F(Reading, ReportsTracesInPlacesThatAreNotRead) {
  expectProblem("<ink>\n<definitions><trace/><b><trace/></b></definitions></ink>",
                Kind::wrappedTraces, 2, 2, "definitions");
  expectProblem("<ink><page/>\n<page><traceGroup><trace/></traceGroup></page><b><trace/></b></ink>",
                Kind::wrappedTraces, 2, 2, "page");
  expectProblem(inLayer("<page><trace/></page>"), Kind::wrappedTraces, 1, 3, "page");
  expectProblem(inLayer("<trace contextRef='#c'>1 2<trace/><b><trace/></b></trace>"),
                Kind::tracesInTraces, 2, 3);
  expectProblem(inLayer("<trace contextRef='#c'>1 2<trace/></trace>"), Kind::tracesInTraces, 1, 3);
}

TEST_F(Reading, ReportsWhatIsDrawnDifferentlyFromHowItIsMeant) {
  const auto trace = [](const std::string& points) {
    return inLayer("<trace contextRef='#c'>" + points + "</trace>");
  };
  expectProblem(trace(",,"), Kind::tracesWithoutPoints, 1, 3);
  expectProblem(trace("1 2, ,3 4, ,"), Kind::blankPoints, 2, 3);
  expectProblem(trace("-1 -2 -3 -4 -5 -6 7,1 2 3 4 5 6 -7,1 2 3 -0 5 6 -00"), Kind::negativeNumbers,
                2, 3);
  expectProblem(inLayer("<trace contextRef='#c' type='penUp'>1 2</trace>"), Kind::penUpTraces, 1,
                3);
}

TEST_F(Reading, ReportsChannelsAndUnitsThatAreNotUsed) {
  const auto withFormat = [](const std::string& channels) {
    return "<ink><definitions>\n<traceFormat id='f'>" + channels +
           "</traceFormat></definitions><tracegroup id='layer0'><trace contextRef='#c'>1 2</trace>"
           "</tracegroup></ink>";
  };
  const auto channel = [](const std::string& name) { return "<channel name='" + name + "'/>"; };
  const std::string coordinates = channel("X") + channel("y") + channel("Z");
  const std::string rest = channel("F") + channel("OTx") + channel("OTy") + channel("T");
  expectProblem(withFormat(coordinates), Kind::otherChannels, 1, 2, "X y Z");
  expectProblem(withFormat(rest + coordinates), Kind::otherChannels, 1, 2, "F OTx OTy T X y Z");
  expectProblem(withFormat(coordinates + rest + "<channel/>"), Kind::otherChannels, 1, 2,
                "X y Z F OTx OTy T ?");
  expectProblem(withFormat("<channel name='X' units='cm'/>" + channel("Y") + channel("Z") + rest),
                Kind::otherUnits, 1, 2, "cm");
  for (const std::string& good : {coordinates + rest, std::string()}) {
    EXPECT_TRUE(read(withFormat(good)).report.problems.empty());
  }
  // Where nothing is drawn, nothing is drawn differently.
  EXPECT_TRUE(
      read("<ink><traceFormat>" + channel("X") + "</traceFormat></ink>").report.problems.empty());
}

TEST_F(Reading, ReportsTheDeclaredEncodingWhenItMakesADifference) {
  const auto encodingOf = [this](const std::string& text) { return read(text).report.encoding; };
  EXPECT_EQ(encodingOf("<?xml version='1.0' encoding=\"latin1\"?><ink><!-- \xC3\xA4 --></ink>"),
            "latin1");
  EXPECT_EQ(encodingOf("\xEF\xBB\xBF<?xml version='1.0' encoding='latin1'?><ink>\xC3\xA4</ink>"),
            "latin1");
  EXPECT_EQ(encodingOf("<?xml version='1.0' encoding='latin1'?><ink>\xE4</ink>"), "latin1");
  for (const char* text : {"<?xml version='1.0' encoding='latin1'?><ink/>",
                           "<?xml version='1.0' encoding='utf-8'?><ink><!-- \xC3\xA4 --></ink>",
                           "<?xml version='1.0'?><ink><!-- \xC3\xA4 encoding='latin1' --></ink>",
                           "<ink a='\xC3\xA4 encoding=\"latin1\"'/>"}) {
    EXPECT_EQ(encodingOf(text), "") << text;
  }
}

TEST_F(Reading, ReportsWhetherTheEndOfTheDocumentIsMissing) {
  for (const char* text :
       {"<ink>\n<tracegroup>", "<ink><a></a>", "<ink", "<ink></ink", "<ink></inks"}) {
    EXPECT_TRUE(read(text).report.isCut) << text;
  }
  for (const char* text : {"<ink><!-- x </ink>", "<ink></ink>\n ", "<x:Ink><a></x:Ink>"}) {
    EXPECT_FALSE(read(text).report.isCut) << text;
  }
  const InkReading reading = read(std::string("<ink>\nab\0c", 10));
  EXPECT_FALSE(reading.report.isCut);
  EXPECT_EQ(reading.report.nulLine, 2);
}

TEST_F(Reading, ReportsEachKindOfProblemOnceInAFixedOrder) {
  const InkReading reading = read(
      "<ink><traceGroup/><annotation/><trace/><traceGroup/>"
      "<definitions><brush/></definitions></ink>junk");
  std::vector<Kind> kinds;
  for (const InkProblem& problem : reading.report.problems)
    kinds.push_back(problem.kind);
  EXPECT_EQ(kinds, (std::vector<Kind>{Kind::textAfterRoot, Kind::skippedBrushes, Kind::otherGroups,
                                      Kind::looseTraces, Kind::skippedAnnotations}));
}

TEST_F(Reading, OfBytesFindsWhatTheReadingOfAFileFinds) {
  for (const std::string& text :
       {inLayer("<trace contextRef='#c'>1 2 3,4 5.5 6</trace>\r\n<trace>1</trace>"), std::string(),
        std::string("<ink>\n<trace>"), std::string("<ink/>\r\rtext"), std::string("<other/>"),
        std::string("<ink>\xE2"), std::string("<ink>\0</ink>", 12),
        std::string("\xEF\xBB\xBF<ink/>")}) {
    EXPECT_EQ(summaryOf(Orvo::readInk(std::string_view(text))), summaryOf(read(text))) << text;
  }
}

}  // namespace
