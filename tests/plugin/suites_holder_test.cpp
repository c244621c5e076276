#include <gtest/gtest.h>

#include "embedded/host.h"
#include "hostapi/ai_layer_suite.h"
#include "plugin/suites.h"

namespace {

// The holder asks the host of the message being handled.
class SuitesHolderOfAHost : public testing::Test {
 protected:
  SuitesHolderOfAHost() { basicSuite = host.basic(); }
  ~SuitesHolderOfAHost() override {
    while (SuitesHolder::acquisitions() > 0)
      SuitesHolder::release();
    basicSuite = nullptr;
  }

  embedded::Host host;
};

TEST_F(SuitesHolderOfAHost, AcquiresEachSuiteOnceHoweverOftenItIsMade) {
  { const SuitesHolder first, second; }
  EXPECT_EQ(SuitesHolder::acquisitions(), 2);
  EXPECT_EQ(host.acquiredSuites(), 104U);
}

TEST_F(SuitesHolderOfAHost, ReleasesEachSuiteOnceAtTheLastRelease) {
  { const SuitesHolder first, second; }
  SuitesHolder::release();
  EXPECT_EQ(SuitesHolder::acquisitions(), 1);
  EXPECT_EQ(host.acquiredSuites(), 104U);
  EXPECT_NE(heldSuite<hostapi::AILayerSuite>, nullptr);
  SuitesHolder::release();
  EXPECT_EQ(SuitesHolder::acquisitions(), 0);
  EXPECT_EQ(host.acquiredSuites(), 0U);
  EXPECT_EQ(heldSuite<hostapi::AILayerSuite>, nullptr);
}

TEST_F(SuitesHolderOfAHost, IgnoresAReleaseWithoutAnAcquisition) {
  SuitesHolder::release();
  EXPECT_EQ(SuitesHolder::acquisitions(), 0);
  EXPECT_EQ(host.journal().count("SP Basic Suite", "ReleaseSuite"), 0U);
}

TEST_F(SuitesHolderOfAHost, AcquiresAgainAfterTheLastRelease) {
  { const SuitesHolder holder; }
  SuitesHolder::release();
  { const SuitesHolder holder; }
  EXPECT_EQ(host.acquiredSuites(), 104U);
}

// Gives a table with every refusal.
class SuitesHolderOfARefusingHost : public SuitesHolderOfAHost {
 protected:
  SuitesHolderOfARefusingHost() {
    refusing_.AcquireSuite = [](const char*, std::int32_t, const void** suite) {
      static const hostapi::AILayerSuite table{};
      *suite = &table;
      return hostapi::kSuiteNotFoundErr;
    };
    basicSuite = &refusing_;
  }

 private:
  hostapi::SPBasicSuite refusing_ = *host.basic();
};

TEST_F(SuitesHolderOfARefusingHost, KeepsNoTableThatComesWithAnErrorCode) {
  { const SuitesHolder holder; }
  EXPECT_EQ(heldSuite<hostapi::AILayerSuite>, nullptr);
}

TEST_F(SuitesHolderOfARefusingHost, BorrowsNoTableThatComesWithAnErrorCode) {
  const BorrowedSuite<hostapi::AILayerSuite> layers;
  EXPECT_EQ(heldSuite<hostapi::AILayerSuite>, nullptr);
}

}  // namespace
