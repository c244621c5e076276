// The system's limits for a process.
#include "platform/limits.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

TEST(CanOpenFiles, IsTrueUpToWhatTheLimitLeaves) {
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  rlimit lower = before;
  lower.rlim_cur = 64;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &lower), 0);
  for (int i = 0; i < 64; ++i)
    EXPECT_TRUE(platform::canOpenFiles(3)) << "the files that were tried are closed again";
  EXPECT_FALSE(platform::canOpenFiles(64));
  EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
}

}  // namespace
