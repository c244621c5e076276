// How the plug-in calls the host, tried on tables written here.
#include <gtest/gtest.h>

#include "hostapi/ai_art_set_suite.h"
#include "hostapi/ai_art_style_suite.h"
#include "hostapi/ai_layer_suite.h"
#include "hostapi/sp_plugins_suite.h"
#include "plugin/suites.h"

namespace {

using namespace hostapi;

constexpr AIErr kCode = fourCC("TEST");

int callsMade = 0;

template <class Handle>
Handle someHandle() {
  static int thing = 0;
  return reinterpret_cast<Handle>(&thing);
}

/// Holds tables that are empty except for what a test puts in.
class SuiteCall : public testing::Test {
 protected:
  SuiteCall() {
    callsMade = 0;
    heldSuite<AILayerSuite> = &layers;
    heldSuite<AIArtSetSuite> = &sets;
    heldSuite<AIArtStyleSuite> = &styles;
    heldSuite<SPPluginsSuite> = &plugins;
  }
  ~SuiteCall() override {
    heldSuite<AILayerSuite> = nullptr;
    heldSuite<AIArtSetSuite> = nullptr;
    heldSuite<AIArtStyleSuite> = nullptr;
    heldSuite<SPPluginsSuite> = nullptr;
  }

  AILayerSuite layers{};
  AIArtSetSuite sets{};
  AIArtStyleSuite styles{};
  SPPluginsSuite plugins{};
};

TEST_F(SuiteCall, WithANullHandleIsNotMade) {
  layers.SetCurrentLayer = [](AILayerHandle) { return ++callsMade, kNoErr; };
  EXPECT_EQ(call(&AILayerSuite::SetCurrentLayer, AILayerHandle{}), fourCC("PARM"));
  EXPECT_EQ(callsMade, 0);
  EXPECT_EQ(call(&AILayerSuite::SetCurrentLayer, someHandle<AILayerHandle>()), 0);
  EXPECT_EQ(callsMade, 1);
}

TEST_F(SuiteCall, WithANullHandleAmongOthersIsNotMade) {
  sets.LayerArtSet = [](AILayerHandle, AIArtSet) { return ++callsMade, kNoErr; };
  styles.SetArtStyle = [](AIArtHandle, AIArtStyleHandle) { return ++callsMade, kNoErr; };
  EXPECT_EQ(call(&AIArtSetSuite::LayerArtSet, someHandle<AILayerHandle>(), AIArtSet{}),
            fourCC("PARM"));
  EXPECT_EQ(call(&AIArtSetSuite::LayerArtSet, AILayerHandle{}, someHandle<AIArtSet>()),
            fourCC("PARM"));
  EXPECT_EQ(call(&AIArtStyleSuite::SetArtStyle, someHandle<AIArtHandle>(), AIArtStyleHandle{}),
            fourCC("PARM"));
  EXPECT_EQ(callsMade, 0);
}

TEST_F(SuiteCall, PassesOnALiteralNull) {
  layers.InsertLayer = [](AILayerHandle reference, std::int16_t, AILayerHandle* layer) {
    EXPECT_EQ(reference, nullptr);
    *layer = someHandle<AILayerHandle>();
    return kNoErr;
  };
  AILayerHandle layer = nullptr;
  EXPECT_EQ(call(&AILayerSuite::InsertLayer, nullptr, kPlaceAboveAll, &layer), 0);
  EXPECT_NE(layer, nullptr);
}

TEST_F(SuiteCall, ToAMissingFunctionSaysSoWhateverItsHandles) {
  EXPECT_EQ(call(&AILayerSuite::SetCurrentLayer, AILayerHandle{}), fourCC("S!Fd"));
  heldSuite<AILayerSuite> = nullptr;
  EXPECT_EQ(call(&AILayerSuite::SetCurrentLayer, AILayerHandle{}), fourCC("S!Fd"));
}

TEST_F(SuiteCall, ThatFailsGivesBackNoHandleAndNoNumber) {
  layers.GetFirstLayer = [](AILayerHandle* layer) {
    *layer = someHandle<AILayerHandle>();
    return kCode;
  };
  layers.CountLayers = [](std::int32_t* count) {
    *count = 77;
    return kCode;
  };
  layers.LayerHasArt = [](AILayerHandle, AIBoolean* hasArt) {
    *hasArt = 0;
    return kCode;
  };
  AILayerHandle layer = nullptr;
  EXPECT_EQ(call(&AILayerSuite::GetFirstLayer, &layer), kCode);
  EXPECT_EQ(layer, nullptr);
  std::int32_t count = 0;
  EXPECT_EQ(call(&AILayerSuite::CountLayers, &count), kCode);
  EXPECT_EQ(count, 0);
  AIBoolean hasArt = 1;
  EXPECT_EQ(call(&AILayerSuite::LayerHasArt, someHandle<AILayerHandle>(), &hasArt), kCode);
  EXPECT_EQ(hasArt, 1) << "the value from before the call";
}

TEST_F(SuiteCall, ThatSucceedsGivesBackBoth) {
  sets.CountArtSet = [](AIArtSet, std::uint64_t* count) {
    *count = 0x100000002;
    return kNoErr;
  };
  layers.GetFirstLayer = [](AILayerHandle* layer) {
    *layer = someHandle<AILayerHandle>();
    return kNoErr;
  };
  std::uint64_t count = 0;
  EXPECT_EQ(call(&AIArtSetSuite::CountArtSet, someHandle<AIArtSet>(), &count), 0);
  EXPECT_EQ(count, 0x100000002U);
  AILayerHandle layer = nullptr;
  EXPECT_EQ(call(&AILayerSuite::GetFirstLayer, &layer), 0);
  EXPECT_EQ(layer, someHandle<AILayerHandle>());
}

}  // namespace
