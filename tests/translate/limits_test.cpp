#include <gtest/gtest.h>

#include "tests/translate/translated.h"
#include "translate/xml_source.h"

namespace {

using namespace translatetest;

std::string repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i)
    all += text;
  return all;
}

TEST(Refused, IsWhatIsNoInkML) {
  EXPECT_EQ(problemOf(""), "the file is empty");
  EXPECT_EQ(problemOf(" \n"), "there is no element in it");
  EXPECT_EQ(problemOf("<svg/>"), "its root is \"svg\", not \"ink\"");
  EXPECT_EQ(problemOf("<ink xmlns='http://example.org/'/>"),
            "its root is \"ink\" of another namespace, not InkML's");
  EXPECT_EQ(problemOf("PK\x03\x04 rest"), "it is a ZIP archive, not InkML");
  EXPECT_EQ(problemOf(std::string("\0\x01\x02\x03", 4)), "it is a binary file, not InkML");
  EXPECT_EQ(problemOf("hello"), "it is a text without XML, not InkML");
}

TEST(Refused, IsWhatIsNotWellFormedWithItsLine) {
  const Translation cut = translate::translateInk("<ink>\n<trace>1 2");
  EXPECT_EQ(cut.problem, "it breaks off before its end");
  EXPECT_EQ(cut.line, 2);
  const Translation crossed = translate::translateInk("<ink>\n\n<a></b></ink>");
  EXPECT_EQ(crossed.problem, "it is not well-formed XML: mismatched tag");
  EXPECT_EQ(crossed.line, 3);
  EXPECT_NE(problemOf("<ink></ink><ink></ink>"), "");
}

TEST(Limits, OfDepth) {
  const auto nested = [](int depth) {
    return "<ink>" + repeated("<traceGroup>", depth - 1) + repeated("</traceGroup>", depth - 1) +
           "</ink>";
  };
  EXPECT_EQ(translate::translateInk(nested(translate::kDeepestNesting)).problem, "");
  EXPECT_EQ(problemOf(nested(translate::kDeepestNesting + 1)),
            "its elements are nested more than 500 deep");
}

TEST(Limits, OfAttributes) {
  const auto withAttributes = [](int count) {
    std::string text = "<ink";
    for (int i = 0; i < count; ++i)
      text += " a" + std::to_string(i) + "='1'";
    return text + "/>";
  };
  EXPECT_EQ(translate::translateInk(withAttributes(translate::kMostAttributes)).problem, "");
  EXPECT_EQ(problemOf(withAttributes(translate::kMostAttributes + 1)),
            "an element has more than 10,000 attributes");
}

TEST(Limits, OfEntities) {
  std::string laughs = "<!DOCTYPE ink [<!ENTITY a0 'ha ha ha ha ha '>";
  for (int i = 1; i < 12; ++i) {
    const std::string before = "&a" + std::to_string(i - 1) + ";";
    laughs += "<!ENTITY a" + std::to_string(i) + " '" + repeated(before, 10) + "'>";
  }
  EXPECT_EQ(problemOf(laughs + "]><ink><trace>&a11;</trace></ink>"),
            "its entities grow to far more text than the document has");
  std::string many = "<!DOCTYPE ink [";
  for (int i = 0; i <= translate::kMostEntities; ++i)
    many += "<!ENTITY e" + std::to_string(i) + " '1'>";
  EXPECT_EQ(problemOf(many + "]><ink/>"), "it declares more than 200 entities");
}

TEST(Entities, OfTheDocumentItselfAreRead) {
  EXPECT_EQ(onlyPlaces("<!DOCTYPE ink [<!ENTITY two '2'>]><ink>" + std::string(kMillimetres) +
                       "<trace>1 &two;</trace></ink>"),
            (Places{{10, 20}}));
}

TEST(Entities, FromOutsideAreNeverFetchedAndSaid) {
  const std::string text = "<!DOCTYPE ink [<!ENTITY out SYSTEM 'file:///etc/hostname'>]><ink>" +
                           std::string(kMillimetres) + "<trace>1 2&out;</trace></ink>";
  EXPECT_EQ(onlyPlaces(text), (Places{{10, 20}}));
  EXPECT_EQ(remarked(text, RemarkKind::outsideText), 1U);
}

TEST(Limits, OfLongChainsOfReferencesTakeLittleTime) {
  std::string chain = "<definitions>";
  constexpr int kLength = 20'000;
  for (int i = 0; i < kLength; ++i) {
    const std::string id = std::to_string(i);
    const std::string next = std::to_string(i + 1);
    for (const char* element : {"context", "brush", "timestamp"}) {
      chain.append("<").append(element).append(" xml:id='").append(1, *element).append(id);
      chain.append("' ").append(element).append("Ref='#").append(1, *element).append(next);
      chain.append("'/>");
    }
  }
  EXPECT_EQ(
      translated(inMillimetres(chain + "</definitions><trace contextRef='#c0'>1 1</trace>")).traces,
      1U);
}

TEST(Limits, OfViewsOfViewsTakeLittleTime) {
  std::string views = "<definitions><trace xml:id='v0'>1 1</trace>";
  constexpr int kDepth = 90;
  for (int i = 1; i < kDepth; ++i) {
    const std::string below = "<traceView traceDataRef='#v" + std::to_string(i - 1) + "'/>";
    views.append("<traceView xml:id='v").append(std::to_string(i)).append("'>");
    views.append(below).append(below).append("</traceView>");
  }
  const Translation result =
      translated(inMillimetres(views + "</definitions><traceView traceDataRef='#v40'/>"));
  EXPECT_EQ(result.traces, 1U);
}

}  // namespace
