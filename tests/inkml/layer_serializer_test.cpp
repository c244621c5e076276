#include "inkml/layer_serializer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tinyxml.h>

#include "inkml/xml_helpers.h"
#include "tests/support/ink/element_with_hook.h"
#include "tests/support/ink/ink_builder.h"
#include "tests/support/ink/xml_text.h"

namespace {

using inktest::ElementWithHook;
using inktest::makeLayer;
using inktest::makeStroke;
using inktest::pointsOf;
using inktest::printed;
using inktest::Seven;
using inktest::XmlTree;
using Orvo::appendTextElement;
using Orvo::Layer;
using Orvo::LayerSerializer;
using Orvo::linkChild;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

std::string written(Layer layer, std::uint32_t index) {
  TiXmlDocument xml;
  EXPECT_TRUE(LayerSerializer("tracegroup", &layer, index).write(xml));
  return printed(xml);
}

TEST(WrittenLayer, HasItsAnnotationsBeforeItsTraces) {
  Layer layer = makeLayer({makeStroke({{1, 2}}), makeStroke({})});
  layer.annotations()["b"] = "B & C";
  layer.annotations()["a"] = "";
  EXPECT_EQ(written(layer, 7),
            "<tracegroup id=\"layer7\">\n"
            "    <annotation type=\"a\"></annotation>\n"
            "    <annotation type=\"b\">B &amp; C</annotation>\n"
            "    <trace contextRef=\"#default-context\">1 2 0 0 0 0 0</trace>\n"
            "    <trace contextRef=\"#default-context\"></trace>\n"
            "</tracegroup>\n");
}

TEST(WrittenLayer, HasItsIndexAsASignedNumber) {
  EXPECT_EQ(written({}, 0), "<tracegroup id=\"layer0\" />\n");
  EXPECT_EQ(written({}, 4294967295U), "<tracegroup id=\"layer-1\" />\n");
}

TEST(WrittenLayer, HasTheNameOfItsSerializerAndTracesNamedTrace) {
  Layer layer = makeLayer({makeStroke({{1, 2}})});
  TiXmlDocument xml;
  EXPECT_TRUE(LayerSerializer("group", &layer, 0).write(xml));
  EXPECT_EQ(printed(xml),
            "<group id=\"layer0\">\n"
            "    <trace contextRef=\"#default-context\">1 2 0 0 0 0 0</trace>\n"
            "</group>\n");
}

class ReadLayer : public testing::Test {
 protected:
  bool read(const std::string& attributes, const std::string& content) {
    const XmlTree tree("<tracegroup " + attributes + ">" + content + "</tracegroup>");
    return serializer_.read(tree.root());
  }
  bool read(const std::string& content) { return read("id='layer0'", content); }

  std::vector<std::size_t> strokeSizes() const {
    std::vector<std::size_t> sizes;
    for (const Orvo::Stroke& stroke : layer_)
      sizes.push_back(stroke.size());
    return sizes;
  }

  Layer layer_;
  LayerSerializer serializer_{"tracegroup", &layer_, 99};
};

constexpr const char* kTwoTraces =
    "<trace contextRef='#c'>1 2,3 4</trace><trace contextRef='#c'>5 6</trace>";

TEST_F(ReadLayer, HasItsTracesInDocumentOrder) {
  EXPECT_TRUE(read(kTwoTraces));
  EXPECT_THAT(strokeSizes(), ElementsAre(2, 1));
  EXPECT_THAT(pointsOf(layer_.back()), ElementsAre(Seven{5, 6}));
}

TEST_F(ReadLayer, TakesItsIndexFromTheId) {
  const std::pair<const char*, std::uint32_t> cases[] = {{"layer7", 7},  {"layerX", 0},
                                                         {"layer", 0},   {"layer12abc", 12},
                                                         {"layer 5", 5}, {"layer-1", 4294967295U},
                                                         {"layers", 0}};
  for (const auto& [id, index] : cases) {
    EXPECT_TRUE(read("id='" + std::string(id) + "'", ""));
    EXPECT_EQ(serializer_.index, index) << id;
  }
}

TEST_F(ReadLayer, StaysEmptyWithoutALayerId) {
  for (const char* attributes : {"", "id='group1'", "id='Layer0'", "id=' layer0'", "id=''",
                                 "id='laye'", "Id='layer0'", "xml:id='layer0'"}) {
    EXPECT_TRUE(read(attributes, std::string(kTwoTraces) + "<annotation type='t'>x</annotation>"))
        << attributes;
    EXPECT_EQ(layer_.size(), 0U) << attributes;
    EXPECT_THAT(layer_.annotations(), IsEmpty());
  }
  EXPECT_EQ(serializer_.index, 99U);
}

TEST_F(ReadLayer, DropsTracesThatCannotBeRead) {
  EXPECT_TRUE(read("<trace>1 2</trace><trace contextRef='#c'>3 4</trace><trace contextRef='#c'/>"));
  EXPECT_THAT(strokeSizes(), ElementsAre(1));
  EXPECT_THAT(pointsOf(layer_.back()), ElementsAre(Seven{3, 4}));
}

TEST_F(ReadLayer, KeepsTracesOfCommasAsEmptyStrokesWhoseBoxReachesToTheOrigin) {
  EXPECT_TRUE(read("<trace contextRef='#c'>10 20</trace><trace contextRef='#c'>,</trace>"));
  EXPECT_THAT(strokeSizes(), ElementsAre(1, 0));
  EXPECT_EQ(layer_.bounds().minCorner.value.x.value, 0);
  EXPECT_EQ(layer_.bounds().maxCorner.value.x.value, 10);
}

TEST_F(ReadLayer, DoesNotLookIntoNestedGroups) {
  EXPECT_TRUE(read("<tracegroup id='layer1'>" + std::string(kTwoTraces) + "</tracegroup>"));
  EXPECT_EQ(layer_.size(), 0U);
}

TEST_F(ReadLayer, IgnoresTracesOfAnotherSpelling) {
  EXPECT_TRUE(read("<Trace contextRef='#c'>1 2</Trace><ink:trace contextRef='#c'>1</ink:trace>"));
  EXPECT_EQ(layer_.size(), 0U);
}

TEST_F(ReadLayer, HasItsAnnotationsByType) {
  EXPECT_TRUE(
      read("<annotation type='b'>1</annotation><annotation type='a'>2</annotation>"
           "<annotation type='b'>3</annotation>"));
  EXPECT_THAT(layer_.annotations(), ElementsAre(Pair("a", "2"), Pair("b", "3")));
}

TEST_F(ReadLayer, SkipsAnnotationsWithoutTypeOrText) {
  EXPECT_TRUE(
      read("<annotation>1</annotation><annotation type='a'/>"
           "<annotation type='b'><!--2--></annotation>"
           "<annotation type='c'><i/>3</annotation>"));
  EXPECT_THAT(layer_.annotations(), IsEmpty());
}

TEST_F(ReadLayer, TakesAnEmptyCdataAsAnEmptyAnnotation) {
  EXPECT_TRUE(
      read("<annotation type='a'><![CDATA[]]></annotation>"
           "<annotation type=''><![CDATA[ x ]]></annotation>"));
  EXPECT_THAT(layer_.annotations(), ElementsAre(Pair("", " x "), Pair("a", "")));
}

TEST_F(ReadLayer, AddsToTheStrokesItHas) {
  EXPECT_TRUE(read(kTwoTraces));
  EXPECT_TRUE(read(kTwoTraces));
  EXPECT_THAT(strokeSizes(), ElementsAre(2, 1, 2, 1));
}

TEST_F(ReadLayer, StopsOnceItIsAborted) {
  serializer_.aborted = true;
  EXPECT_FALSE(read(kTwoTraces));
  EXPECT_FALSE(read("<annotation type='a'>1</annotation>"));
  EXPECT_FALSE(read(""));
  EXPECT_EQ(layer_.size(), 0U);
  EXPECT_THAT(layer_.annotations(), IsEmpty());
}

// Reads three elements of this name, and is aborted while it reads the second.
class AbortedLayer : public ReadLayer {
 protected:
  bool readThree(const char* name, const char* attribute) {
    TiXmlElement root("ink");
    TiXmlElement& group = linkChild(root, std::make_unique<TiXmlElement>("tracegroup"));
    group.SetAttribute("id", "layer0");
    appendTextElement(group, name, "1").SetAttribute(attribute, "a");
    auto& second = linkChild(group, std::make_unique<ElementWithHook>(name, [this] {
                               if (layer_.size() + layer_.annotations().size() == 1)
                                 serializer_.aborted = true;
                             }));
    second.SetAttribute(attribute, "b");
    linkChild(second, std::make_unique<TiXmlText>("2"));
    appendTextElement(group, name, "3").SetAttribute(attribute, "c");
    return serializer_.read(&group);
  }
};

TEST_F(AbortedLayer, StopsBeforeTheNextTraceAndKeepsTheStrokesReadSoFar) {
  EXPECT_FALSE(readThree("trace", "contextRef"));
  EXPECT_THAT(strokeSizes(), ElementsAre(1, 1));
  EXPECT_THAT(pointsOf(layer_.back()), ElementsAre(Seven{2}));
}

TEST_F(AbortedLayer, StopsBeforeTheNextAnnotationAndKeepsThoseReadSoFar) {
  EXPECT_FALSE(readThree("annotation", "type"));
  EXPECT_THAT(layer_.annotations(), ElementsAre(Pair("a", "1"), Pair("b", "2")));
}

TEST_F(ReadLayer, SucceedsWithoutALayerIdEvenWhenAborted) {
  serializer_.aborted = true;
  EXPECT_TRUE(read("id='group1'", kTwoTraces));
  EXPECT_TRUE(read("", kTwoTraces));
}

TEST_F(ReadLayer, StaysEmptyForANullElement) {
  EXPECT_TRUE(serializer_.read(nullptr));
  EXPECT_EQ(layer_.size(), 0U);
}

}  // namespace
