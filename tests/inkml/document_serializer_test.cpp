#include "inkml/document_serializer.h"

#include <chrono>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <tinyxml.h>

#include "inkml/definitions.h"
#include "inkml/xml_helpers.h"
#include "platform/paths.h"
#include "tests/support/ink/element_with_hook.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/ink/xml_text.h"
#include "tests/support/pen/temporary_folder.h"
#include "tests/support/pen/text_file.h"

namespace {

using inktest::ElementWithHook;
using inktest::makeLayer;
using inktest::makeStroke;
using inktest::pointsOf;
using inktest::Seven;
using inktest::shapeOf;
using Orvo::appendTextElement;
using Orvo::Document;
using Orvo::DocumentSerializer;
using Orvo::InkMLDefinitions;
using Orvo::IXmlSerializable;
using Orvo::linkChild;
using pentest::readText;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Shape = std::vector<std::vector<std::size_t>>;

std::string wholeFile(const std::string& content) {
  return pentest::asInTextFile("<?xml version=\"1.0\" ?>\n<ink>\n" + content + "</ink>\n");
}

class WholeDocument : public testing::Test {
 protected:
  std::filesystem::path path(const char* name = "a.kvo") const { return folder_ / name; }
  std::string narrowPath() const { return path().string(); }

  void putFile(const std::string& text) const { std::ofstream(path(), std::ios::binary) << text; }

  bool readWide() { return serializer_.read(path().wstring().c_str(), definitions_); }
  bool readNarrow() { return serializer_.read(narrowPath().c_str(), definitions_); }
  bool read(const std::string& text) {
    putFile(text);
    return readWide();
  }

  std::string written() {
    EXPECT_TRUE(serializer_.write(path().wstring().c_str(), definitions_));
    return readText(path());
  }

  Document document_;
  InkMLDefinitions definitions_;
  DocumentSerializer serializer_{&document_};

 private:
  pentest::TemporaryFolder folder_;
};

class WrittenDocument : public WholeDocument {};

TEST_F(WrittenDocument, HasOnlyTheDefinitionsWhenEmpty) {
  EXPECT_EQ(written(), wholeFile("    <definitions />\n"));
}

TEST_F(WrittenDocument, HasDefinitionsAnnotationsAndGroupsInThisOrder) {
  document_.annotations()["k"] = "T & x";
  document_.annotations()["a"] = "first";
  document_.append(makeLayer({makeStroke({{1, 2, 0.5, 3, -4, 5, 6}}), makeStroke({})}));
  document_.append(Orvo::Layer());
  definitions_.traceFormats.emplace_back().id = "f";
  EXPECT_EQ(written(),
            wholeFile("    <definitions>\n"
                      "        <traceFormat id=\"f\" />\n"
                      "    </definitions>\n"
                      "    <annotation type=\"a\">first</annotation>\n"
                      "    <annotation type=\"k\">T &amp; x</annotation>\n"
                      "    <tracegroup id=\"layer0\">\n"
                      "        <trace contextRef=\"#default-context\">1 2 0.5 3 -4 5 6</trace>\n"
                      "        <trace contextRef=\"#default-context\"></trace>\n"
                      "    </tracegroup>\n"
                      "    <tracegroup id=\"layer1\" />\n"));
}

TEST_F(WrittenDocument, IsTheSameForBothKindsOfPath) {
  document_.append(makeLayer({makeStroke({{1, 2}})}));
  const std::string wide = written();
  EXPECT_TRUE(serializer_.write(narrowPath().c_str(), definitions_));
  EXPECT_EQ(readText(path()), wide);
}

TEST_F(WrittenDocument, ReplacesTheFileThatWasThere) {
  putFile(std::string(10'000, 'x'));
  EXPECT_EQ(written(), wholeFile("    <definitions />\n"));
}

TEST_F(WrittenDocument, NeedsAnExistingFolder) {
  const std::filesystem::path missing = path("missing") / "a.kvo";
  EXPECT_FALSE(serializer_.write(missing.wstring().c_str(), definitions_));
  EXPECT_FALSE(serializer_.write(missing.string().c_str(), definitions_));
  EXPECT_FALSE(std::filesystem::exists(missing.parent_path()));
}

TEST_F(WrittenDocument, CanHaveAnyFileName) {
  const std::wstring name = path().wstring() + L"t\u00e9\u4e2d \U0001F58B.kvo";
  EXPECT_TRUE(serializer_.write(name.c_str(), definitions_));
  EXPECT_TRUE(serializer_.read(name.c_str(), definitions_));
}

#ifdef __linux__
TEST_F(WrittenDocument, FailsOnAFullDevice) {
  EXPECT_FALSE(serializer_.write(L"/dev/full", definitions_));
  document_.append(makeLayer({makeStroke({{1, 2}})}));
  for (int i = 0; i < 2000; ++i)
    document_.back().append(makeStroke({{1, 2}}));
  EXPECT_FALSE(serializer_.write(L"/dev/full", definitions_));
  EXPECT_FALSE(serializer_.write("/dev/full", definitions_));
}
#endif

// Definitions that can be neither written nor read.
class Failing : public IXmlSerializable {
 public:
  Failing() : IXmlSerializable("failing") {}
  bool write(TiXmlNode& parent) const override {
    parent.LinkEndChild(std::make_unique<TiXmlElement>("wrote").release());
    return false;
  }
  bool read(const TiXmlNode* element) override {
    ++reads;
    last = element;
    return false;
  }

  int reads = 0;
  const TiXmlNode* last = nullptr;
};

TEST_F(WrittenDocument, IgnoresDefinitionsThatFail) {
  Failing failing;
  EXPECT_TRUE(serializer_.write(path().wstring().c_str(), failing));
  EXPECT_EQ(readText(path()), wholeFile("    <wrote />\n"));
}

TEST_F(WrittenDocument, IsATreeWithADeclarationAndARoot) {
  TiXmlDocument xml;
  EXPECT_TRUE(serializer_.buildTree(xml, definitions_));
  ASSERT_NE(xml.FirstChild(), nullptr);
  const TiXmlDeclaration* declaration = xml.FirstChild()->ToDeclaration();
  ASSERT_NE(declaration, nullptr);
  EXPECT_STREQ(declaration->Version(), "1.0");
  EXPECT_STREQ(declaration->Encoding(), "");
  EXPECT_STREQ(declaration->Standalone(), "");
  EXPECT_STREQ(xml.RootElement()->Value(), "ink");
}

class ReadDocument : public WholeDocument {};

TEST_F(ReadDocument, IsCompleteAndEmptyForAnEmptyRoot) {
  EXPECT_FALSE(document_.complete.value);
  EXPECT_TRUE(read("<ink/>"));
  EXPECT_TRUE(document_.complete.value);
  EXPECT_EQ(document_.size(), 0U);
  EXPECT_THAT(document_.annotations(), IsEmpty());
}

TEST_F(ReadDocument, HasALayerForEachGroupInDocumentOrder) {
  EXPECT_TRUE(
      read("<ink><tracegroup id='layer5'><trace contextRef='#c'>1 2</trace></tracegroup>"
           "<tracegroup id='layer0'><trace contextRef='#c'>3 4,5 6</trace>"
           "<trace contextRef='#c'>7 8</trace></tracegroup></ink>"));
  EXPECT_EQ(shapeOf(document_), (Shape{{1}, {2, 1}}));
  EXPECT_THAT(pointsOf(document_.back().back()), ElementsAre(Seven{7, 8}));
}

TEST_F(ReadDocument, HasOneStrokeOfTwoWhenTheOtherLacksItsContext) {
  EXPECT_TRUE(
      read("<ink><tracegroup id='layer2'><trace contextRef='#c'>1 2</trace>"
           "<trace>3 4</trace></tracegroup></ink>"));
  EXPECT_EQ(shapeOf(document_), (Shape{{1}}));
}

TEST_F(ReadDocument, HasAnEmptyLayerForAGroupWithoutLayerId) {
  EXPECT_TRUE(
      read("<ink><tracegroup><trace contextRef='#c'>1 2</trace></tracegroup>"
           "<tracegroup id='group1'><trace contextRef='#c'>1 2</trace></tracegroup></ink>"));
  EXPECT_EQ(shapeOf(document_), (Shape{{}, {}}));
}

TEST_F(ReadDocument, HasABoxThatReachesToTheOriginForAnEmptyLayer) {
  EXPECT_TRUE(
      read("<ink><tracegroup id='layer0'><trace contextRef='#c'>30 40</trace></tracegroup>"
           "<tracegroup/></ink>"));
  EXPECT_EQ(document_.bounds().minCorner.value.x.value, 0);
  EXPECT_EQ(document_.bounds().maxCorner.value.x.value, 30);
}

TEST_F(ReadDocument, HasOnlyGroupsOfTheExactNameDirectlyInTheRoot) {
  EXPECT_TRUE(
      read("<ink><traceGroup id='layer0'/><ink:tracegroup id='layer0'/>"
           "<x><tracegroup id='layer0'/></x>"
           "<tracegroup id='layer0'><tracegroup id='layer1'/></tracegroup></ink>"));
  EXPECT_EQ(shapeOf(document_), (Shape{{}}));
}

TEST_F(ReadDocument, ReplacesAnAnnotationByALaterOneOfTheSameType) {
  EXPECT_TRUE(
      read("<ink><annotation type='a'>1</annotation><annotation type='b'>2</annotation>"
           "<annotation type='a'>3</annotation></ink>"));
  EXPECT_THAT(document_.annotations(), ElementsAre(Pair("a", "3"), Pair("b", "2")));
}

TEST_F(ReadDocument, SkipsAnnotationsWithoutTypeOrText) {
  EXPECT_TRUE(
      read("<ink><annotation>1</annotation><annotation type='a'/>"
           "<annotation type='b'><!--2--></annotation>"
           "<annotation type='c'><i>3</i></annotation>"
           "<annotation type='d'><![CDATA[]]></annotation></ink>"));
  EXPECT_THAT(document_.annotations(), ElementsAre(Pair("d", "")));
}

TEST_F(ReadDocument, KeepsTheWhiteSpaceOfATreeInMemory) {
  document_.append(inktest::makeLayer({Orvo::Stroke()}));
  document_.annotations() = {{"a", "  x \n y "}, {"e", ""}};
  TiXmlDocument xml;
  ASSERT_TRUE(serializer_.buildTree(xml, definitions_));
  Document again;
  EXPECT_TRUE(DocumentSerializer(&again).read(xml, definitions_));
  EXPECT_EQ(shapeOf(again), (Shape{{0}}));
  EXPECT_EQ(again.annotations(), document_.annotations());
}

TEST_F(ReadDocument, NeedsARootOfExactlyThatName) {
  for (const char* text : {"<inkml/>", "<ink:ink/>", "<Ink/>", "<a><ink/></a>", "<!-- ink -->",
                           "<?xml version='1.0'?>"}) {
    EXPECT_FALSE(read(text)) << text;
    EXPECT_FALSE(document_.complete.value);
  }
}

TEST_F(ReadDocument, IsThatOfTheFirstRootOfThatName) {
  EXPECT_TRUE(read("<!--c--><other/><ink><tracegroup id='layer0'/></ink><ink/>"));
  EXPECT_EQ(document_.size(), 1U);
}

TEST_F(ReadDocument, TakesACommentAsItsRoot) {
  EXPECT_TRUE(read("<!--ink--><ink><tracegroup id='layer0'/></ink>"));
  EXPECT_TRUE(document_.complete.value);
  EXPECT_EQ(document_.size(), 0U);
}

TEST_F(ReadDocument, MayHaveANamespace) {
  EXPECT_TRUE(read("<ink xmlns='http://www.w3.org/2003/InkML'><tracegroup id='layer0'/></ink>"));
  EXPECT_EQ(document_.size(), 1U);
}

TEST_F(ReadDocument, TakesItsDefinitionsFromTheFirstNodeOfThatValue) {
  const std::string brush = "<brush id='b'><annotationXML/></brush>";
  EXPECT_TRUE(read("<ink><tracegroup id='layer0'/><definitions>" + brush +
                   "</definitions><definitions>" + brush + "</definitions></ink>"));
  EXPECT_EQ(definitions_.brushes.size(), 1U);
  EXPECT_TRUE(read("<ink><!--definitions--><definitions>" + brush + "</definitions></ink>"));
  EXPECT_EQ(definitions_.brushes.size(), 1U);
  EXPECT_TRUE(read("<ink>definitions<definitions>" + brush + "</definitions></ink>"));
  EXPECT_EQ(definitions_.brushes.size(), 1U);
}

TEST_F(ReadDocument, IgnoresDefinitionsThatFail) {
  Failing failing;
  putFile("<ink><tracegroup id='layer0'/></ink>");
  EXPECT_TRUE(serializer_.read(path().wstring().c_str(), failing));
  EXPECT_EQ(failing.reads, 1);
  EXPECT_EQ(failing.last, nullptr);
  EXPECT_EQ(document_.size(), 1U);
  EXPECT_TRUE(read("<ink><definitions><context/></definitions><tracegroup id='layer0'/></ink>"));
  EXPECT_EQ(document_.size(), 2U);
}

TEST_F(ReadDocument, IsDoubledWhenReadTwice) {
  const std::string text =
      "<ink><definitions><brush id='b'><annotationXML/></brush><traceFormat id='f'/>"
      "<context id='c' brushRef='#b' traceFormatRef='#f'/></definitions>"
      "<annotation type='a'>1</annotation><tracegroup id='layer0'>"
      "<trace contextRef='#c'>1 2</trace></tracegroup></ink>";
  EXPECT_TRUE(read(text));
  EXPECT_TRUE(readNarrow());
  EXPECT_EQ(shapeOf(document_), (Shape{{1}, {1}}));
  EXPECT_EQ(definitions_.brushes.size(), 2U);
  EXPECT_EQ(definitions_.traceFormats.size(), 2U);
  EXPECT_EQ(definitions_.contexts.size(), 2U);
  EXPECT_THAT(document_.annotations(), ElementsAre(Pair("a", "1")));
}

TEST_F(ReadDocument, FailsForATextThatDoesNotParse) {
  for (const char* text : {"", "   ", "junk", "<ink>", "<ink></Ink>", "<ink a='1' a='2'/>",
                           "<ink><a></ink>", "\xEF\xBB\xBF", "text<ink/>"}) {
    EXPECT_FALSE(read(text)) << text;
    EXPECT_FALSE(readNarrow()) << text;
  }
  EXPECT_FALSE(document_.complete.value);
}

TEST_F(ReadDocument, FailsForAMissingFileAndAFolder) {
  EXPECT_FALSE(readWide());
  EXPECT_FALSE(readNarrow());
  std::filesystem::create_directory(path());
  EXPECT_FALSE(readWide());
  EXPECT_FALSE(readNarrow());
}

TEST_F(ReadDocument, MayHaveAByteOrderMarkAndAnyLineEnds) {
  for (const char* text : {"\xEF\xBB\xBF<ink><tracegroup id='layer0'/></ink>",
                           "<ink>\r\n<tracegroup id='layer0'/>\r\n</ink>\r\n",
                           "<ink>\r<tracegroup id='layer0'/>\r</ink>"}) {
    Document document;
    DocumentSerializer serializer(&document);
    putFile(text);
    EXPECT_TRUE(serializer.read(path().wstring().c_str(), definitions_));
    EXPECT_EQ(document.size(), 1U);
  }
}

TEST_F(ReadDocument, IsUtf8FromAWidePathWhateverTheFileDeclares) {
  putFile(
      "<?xml version='1.0' encoding='ISO-8859-1'?>"
      "<ink><annotation type='a'>\xE2\x82\xAC &#x20AC;</annotation></ink>");
  EXPECT_TRUE(readWide());
  EXPECT_THAT(document_.annotations(), ElementsAre(Pair("a", "\xE2\x82\xAC \xE2\x82\xAC")));
}

TEST_F(ReadDocument, HasTheDeclaredEncodingFromANarrowPath) {
  putFile(
      "<?xml version='1.0' encoding='ISO-8859-1'?>"
      "<ink><annotation type='a'>\xE4 &#xE4;</annotation></ink>");
  EXPECT_TRUE(readNarrow());
  EXPECT_THAT(document_.annotations(), ElementsAre(Pair("a", "\xE4 \xE4")));
}

// In UTF-8 the byte F0 swallows the closing tag after it, so these elements nest; in other
// encodings it does not.
std::string openedInUtf8(int levels) {
  std::string text;
  for (int i = 0; i < levels; ++i)
    text += "<a>\xF0</a>";
  return text;
}

std::string nestedInUtf8(int levels) {
  std::string text = openedInUtf8(levels);
  for (int i = 0; i < levels; ++i)
    text += "</a>";
  return text;
}

std::string inkDeclaredAs(const std::string& encoding, const std::string& content) {
  return "<?xml version='1.0' encoding='" + encoding + "'?><ink>" + content + "</ink>";
}

TEST_F(ReadDocument, IsCheckedInTheDeclaredEncodingFromANarrowPath) {
  putFile(inkDeclaredAs("ISO-8859-1", openedInUtf8(600)));
  EXPECT_TRUE(readNarrow());
  for (const char* name : {"UTF-8", "utf-8", "Utf-8", "uTf8", "UTF-8x"}) {
    putFile(inkDeclaredAs(name, nestedInUtf8(400)));
    EXPECT_TRUE(readNarrow()) << name;
    putFile(inkDeclaredAs(name, nestedInUtf8(600)));
    EXPECT_FALSE(readNarrow()) << name;
  }
}

TEST_F(ReadDocument, IsCheckedAsUtf8FromAWidePathWhateverTheFileDeclares) {
  EXPECT_TRUE(read(inkDeclaredAs("ISO-8859-1", nestedInUtf8(400))));
  EXPECT_FALSE(read(inkDeclaredAs("ISO-8859-1", nestedInUtf8(600))));
}

TEST_F(ReadDocument, KeepsWhatItHasWhenALaterFileFails) {
  EXPECT_TRUE(read("<ink><tracegroup id='layer0'/></ink>"));
  EXPECT_FALSE(read("<ink>"));
  EXPECT_EQ(document_.size(), 1U);
  EXPECT_TRUE(document_.complete.value);
}

TEST_F(ReadDocument, MayNestFiveHundredDeepAndNoDeeper) {
  const auto nested = [](int levels) {
    std::string text;
    for (int i = 1; i < levels; ++i)
      text += "<a>";
    text = "<ink>" + text;
    for (int i = 1; i < levels; ++i)
      text += "</a>";
    return text + "</ink>";
  };
  EXPECT_TRUE(read(nested(500)));
  EXPECT_TRUE(readNarrow());
  EXPECT_FALSE(read(nested(501)));
  EXPECT_FALSE(readNarrow());
}

TEST_F(ReadDocument, MayHaveTenThousandAttributesOnAnElementAndNoMore) {
  const auto withAttributes = [](int count) {
    std::string text = "<ink";
    for (int i = 0; i < count; ++i)
      text += " a" + std::to_string(i) + "=''";
    return text + "/>";
  };
  EXPECT_FALSE(read(withAttributes(10'001)));
  EXPECT_FALSE(readNarrow());
  EXPECT_FALSE(document_.complete.value);
  EXPECT_TRUE(read(withAttributes(10'000)));
  EXPECT_TRUE(readNarrow());
}

TEST_F(ReadDocument, MayNotEndInsideACharacter) {
  for (const char* text : {"<ink>\xF0", "<ink/><a b=\"\xE2", "<ink/>\xC3", "<ink/>\xE2\x82"}) {
    EXPECT_FALSE(read(text));
    EXPECT_FALSE(readNarrow());
  }
}

// Definitions that run an action when they are read.
class Hook : public IXmlSerializable {
 public:
  explicit Hook(std::function<void()> action)
      : IXmlSerializable("definitions"), action_(std::move(action)) {}
  bool write(TiXmlNode&) const override { return true; }
  bool read(const TiXmlNode*) override {
    action_();
    return true;
  }

 private:
  std::function<void()> action_;
};

// A document of one group "layer7" with one trace. The hook is called while the trace is read.
class TreeWithHook {
 public:
  explicit TreeWithHook(std::function<void()> hook) {
    group_.SetAttribute("id", "layer7");
    auto& trace = linkChild(group_, std::make_unique<ElementWithHook>("trace", std::move(hook)));
    trace.SetAttribute("contextRef", "#c");
    linkChild(trace, std::make_unique<TiXmlText>("1 2"));
  }

  TiXmlDocument& document() { return xml_; }
  TiXmlElement& ink() { return ink_; }
  TiXmlElement& group() { return group_; }

 private:
  TiXmlDocument xml_;
  TiXmlElement& ink_ = linkChild(xml_, std::make_unique<TiXmlElement>("ink"));
  TiXmlElement& group_ = linkChild(ink_, std::make_unique<TiXmlElement>("tracegroup"));
};

void appendAnnotation(TiXmlElement& parent) {
  appendTextElement(parent, "annotation", "1").SetAttribute("type", "a");
}

class AbortedRead : public WholeDocument {
 protected:
  // Aborts while the definitions are read.
  bool readAborted(const std::string& text) {
    putFile(text);
    Hook hook([this] { serializer_.aborted = true; });
    return serializer_.read(path().wstring().c_str(), hook);
  }
};

TEST_F(AbortedRead, FailsAtTheNextGroupOrAnnotation) {
  EXPECT_FALSE(readAborted("<ink><tracegroup id='layer0'/></ink>"));
  EXPECT_FALSE(readAborted("<ink><annotation type='a'>1</annotation></ink>"));
  EXPECT_EQ(document_.size(), 0U);
  EXPECT_THAT(document_.annotations(), IsEmpty());
  EXPECT_FALSE(document_.complete.value);
}

TEST_F(AbortedRead, SucceedsWhenThereIsNeither) {
  EXPECT_TRUE(readAborted("<ink><definitions/></ink>"));
  EXPECT_TRUE(document_.complete.value);
}

TEST_F(AbortedRead, FailsAtOnceForANarrowPath) {
  serializer_.aborted = true;
  Failing failing;
  putFile("<ink/>");
  EXPECT_FALSE(serializer_.read(narrowPath().c_str(), failing));
  EXPECT_EQ(failing.reads, 0);
  EXPECT_TRUE(serializer_.read(path().wstring().c_str(), failing));
  EXPECT_EQ(failing.reads, 1);
}

TEST_F(AbortedRead, StaysAborted) {
  serializer_.aborted = true;
  EXPECT_FALSE(read("<ink><tracegroup id='layer0'/></ink>"));
  EXPECT_FALSE(read("<ink><tracegroup id='layer0'/></ink>"));
  EXPECT_TRUE(serializer_.aborted);
}

TEST_F(AbortedRead, IsNotAbortedAndHasNoLayerAtFirst) {
  EXPECT_FALSE(serializer_.aborted);
  EXPECT_EQ(serializer_.currentLayerSerializer, nullptr);
  EXPECT_TRUE(read("<ink><annotation type='a'>1</annotation></ink>"));
  EXPECT_EQ(serializer_.currentLayerSerializer, nullptr);
  EXPECT_TRUE(read("<ink><tracegroup id='layer0'/></ink>"));
  EXPECT_NE(serializer_.currentLayerSerializer, nullptr);
}

TEST_F(AbortedRead, FailsWhenItIsCancelledBeforeTheFirstGroup) {
  putFile("<ink><tracegroup id='layer0'/></ink>");
  Hook hook([this] { serializer_.cancel(); });
  EXPECT_FALSE(serializer_.read(path().wstring().c_str(), hook));
  EXPECT_TRUE(serializer_.aborted);
}

TEST_F(AbortedRead, CanBeCancelledAfterTheLastLayer) {
  EXPECT_TRUE(read("<ink><tracegroup id='layer0'/></ink>"));
  serializer_.cancel();
  EXPECT_TRUE(serializer_.aborted);
}

// Cancels from another thread while the layer is read.
class CancelledLayer : public WholeDocument {
 protected:
  bool readAndCancel() { return serializer_.read(tree_.document(), definitions_); }

  TreeWithHook tree_{[this] { std::thread([this] { serializer_.cancel(); }).join(); }};
};

TEST_F(CancelledLayer, IsDroppedAndTheReadSucceedsWhenNothingFollowsIt) {
  // No further group or annotation checks for it.
  EXPECT_TRUE(readAndCancel());
  EXPECT_TRUE(document_.complete.value);
  EXPECT_EQ(document_.size(), 0U);
}

TEST_F(CancelledLayer, FailsTheReadAtTheAnnotationAfterIt) {
  appendAnnotation(tree_.ink());
  EXPECT_FALSE(readAndCancel());
  EXPECT_FALSE(document_.complete.value);
  EXPECT_EQ(document_.size(), 0U);
  EXPECT_THAT(document_.annotations(), IsEmpty());
}

TEST_F(CancelledLayer, FailsTheReadAtTheGroupAfterIt) {
  linkChild(tree_.ink(), std::make_unique<TiXmlElement>("tracegroup"));
  EXPECT_FALSE(readAndCancel());
  EXPECT_EQ(document_.size(), 0U);
}

TEST_F(CancelledLayer, IsDroppedAtItsOwnAnnotation) {
  appendAnnotation(tree_.group());
  EXPECT_TRUE(readAndCancel());
  EXPECT_EQ(document_.size(), 0U);
}

// What the document serializer says about the layer that it works on.
class CurrentLayerSerializer : public WholeDocument {
 protected:
  // A serializer that is not in use: if it is aborted, the pointer was used when it should not have
  // been.
  Orvo::Layer otherLayer_;
  Orvo::LayerSerializer other_{"tracegroup", &otherLayer_, 0};
};

TEST_F(CurrentLayerSerializer, IsTheOneThatReadsAndIsKeptAfterwards) {
  const Orvo::LayerSerializer* seen = nullptr;
  TreeWithHook tree([&] {
    if (seen != nullptr) return;
    seen = serializer_.currentLayerSerializer;
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->getName(), "tracegroup");
    EXPECT_EQ(seen->index, 7U);
    EXPECT_FALSE(seen->aborted);
    serializer_.cancel();
    EXPECT_TRUE(seen->aborted);
  });
  EXPECT_TRUE(serializer_.read(tree.document(), definitions_));
  ASSERT_NE(seen, nullptr);
  EXPECT_EQ(serializer_.currentLayerSerializer, seen);
}

TEST_F(CurrentLayerSerializer, IsADifferentOneForEachLayer) {
  std::vector<std::uint32_t> indices;
  const auto note = [&] {
    const std::uint32_t index = serializer_.currentLayerSerializer->index;
    if (indices.empty() || indices.back() != index) indices.push_back(index);
  };
  TreeWithHook tree(note);
  auto& second = linkChild(tree.ink(), std::make_unique<TiXmlElement>("tracegroup"));
  second.SetAttribute("id", "layer3");
  linkChild(second, std::make_unique<ElementWithHook>("trace", note));
  EXPECT_TRUE(serializer_.read(tree.document(), definitions_));
  EXPECT_THAT(indices, ElementsAre(7U, 3U));
}

TEST_F(CurrentLayerSerializer, IsNotUsedBeforeARead) {
  serializer_.currentLayerSerializer = &other_;
  serializer_.cancel();
  EXPECT_FALSE(other_.aborted);
}

TEST_F(CurrentLayerSerializer, IsNotUsedAfterAReadThatSucceedsOrFails) {
  for (const char* text : {"<ink><tracegroup id='layer0'/></ink>", "<ink>", "<other/>"}) {
    read(text);
    serializer_.currentLayerSerializer = &other_;
    serializer_.cancel();
    EXPECT_FALSE(other_.aborted) << text;
  }
}

TEST_F(CurrentLayerSerializer, IsSetByAWriteAndNotUsedAfterIt) {
  written();
  EXPECT_EQ(serializer_.currentLayerSerializer, nullptr);
  document_.append(makeLayer({makeStroke({{1, 2}})}));
  written();
  EXPECT_NE(serializer_.currentLayerSerializer, nullptr);
  serializer_.currentLayerSerializer = &other_;
  serializer_.cancel();
  EXPECT_FALSE(other_.aborted);
}

// Cancels its own reading when it gets its first layer.
class CancellingDocument : public Document {
 public:
  void append(const Orvo::Layer& layer) override {
    Document::append(layer);
    serializer->cancel();
  }
  DocumentSerializer* serializer = nullptr;
};

TEST_F(AbortedRead, KeepsTheLayersReadSoFar) {
  TiXmlDocument xml;
  ASSERT_TRUE(
      inktest::load("<ink><tracegroup id='layer0'><trace contextRef='#c'>1 2</trace>"
                    "</tracegroup><tracegroup id='layer1'/></ink>",
                    xml));
  CancellingDocument document;
  DocumentSerializer serializer(&document);
  document.serializer = &serializer;
  InkMLDefinitions definitions;
  EXPECT_FALSE(serializer.read(xml, definitions));
  ASSERT_EQ(document.size(), 1U);
  EXPECT_EQ(document.back().size(), 1U);
  EXPECT_FALSE(document.complete.value);
}

TEST_F(AbortedRead, CanBeCancelledAtAnyMoment) {
  std::string text = "<ink>";
  for (int i = 0; i < 2000; ++i)
    text += "<tracegroup id='layer0'><trace contextRef='#c'>1 2</trace></tracegroup>";
  TiXmlDocument xml;
  ASSERT_TRUE(inktest::load(text + "</ink>", xml));
  for (int attempt = 0; attempt < 20; ++attempt) {
    Document document;
    DocumentSerializer serializer(&document);
    std::thread other;
    Hook hook([&] {
      other = std::thread([&, attempt] {
        std::this_thread::sleep_for(std::chrono::microseconds(attempt * 40));
        serializer.cancel();
      });
    });
    const bool whole = serializer.read(xml, hook);
    other.join();
    EXPECT_EQ(document.complete.value, whole);
    EXPECT_TRUE(!whole || document.size() >= 1999U);
  }
}

}  // namespace
