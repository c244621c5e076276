#include "translate/document_form.h"

#include <gtest/gtest.h>

#include "tests/translate/translated.h"

namespace {

using translate::DocumentForm;
using translate::formOf;

TEST(DocumentForm, OfThePlugInsOwnIsTheSubset) {
  EXPECT_EQ(formOf("<?xml version='1.0' ?><ink><definitions/><tracegroup id='layer0'/></ink>"),
            DocumentForm::subset);
  EXPECT_EQ(formOf("<ink xmlns='http://www.w3.org/2003/InkML'><tracegroup/></ink>"),
            DocumentForm::subset);
}

TEST(DocumentForm, OfTheStandardIsAnother) {
  for (const char* text :
       {"<ink/>", "<ink><trace>1 2</trace></ink>", "<ink><traceGroup/></ink>",
        "<ink><tracegroup/><traceGroup/></ink>", "<ink><tracegroup/><a><traceGroup/></a></ink>",
        "<ink><a><tracegroup/></a></ink>", "<i:ink xmlns:i='x/InkML'><i:tracegroup/></i:ink>",
        "<Ink><tracegroup/></Ink>", "<ink><TRACEGROUP/></ink>"})
    EXPECT_EQ(formOf(text), DocumentForm::other) << text;
}

TEST(DocumentForm, OfAnElementOfAnotherNamespaceDoesNotCount) {
  EXPECT_EQ(
      formOf("<ink><tracegroup><e:traceGroup xmlns:e='http://example.org'/></tracegroup></ink>"),
      DocumentForm::subset);
}

TEST(DocumentForm, OfWhatThePlugInCannotDecodeIsAnother) {
  std::string wide = "\xFF\xFE";
  for (const char c : std::string("<ink><tracegroup/></ink>"))
    wide += {c, '\0'};
  EXPECT_EQ(formOf(wide), DocumentForm::other);
}

TEST(DocumentForm, OfACutDocumentIsThatOfItsBeginning) {
  EXPECT_EQ(formOf("<ink><tracegroup><trace>1"), DocumentForm::subset);
  EXPECT_EQ(formOf("<ink><trace>1"), DocumentForm::other);
}

TEST(DocumentForm, OfAnythingElseIsNone) {
  for (const char* text : {"", "hello", "<svg/>", "<ink xmlns='http://example.org'/>", "<in"})
    EXPECT_EQ(formOf(text), DocumentForm::notInk) << text;
  EXPECT_EQ(formOf("\x1F\x8Bgarbage"), DocumentForm::notInk);
}

}  // namespace
