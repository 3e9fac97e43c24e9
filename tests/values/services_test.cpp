// Which services are in force.
#include <gtest/gtest.h>

#include <thread>

#include "support/fakes.h"

namespace zentaro::services_test {

TEST(ServicesInForce, AreThoseOfTheInnermostScopeOfTheThread) {
  RegionalSettings* const before = services().regional;
  {
    testing::FakePlatform outer;
    {
      testing::FakePlatform inner;
      EXPECT_EQ(services().regional, &inner.regional);
      RegionalSettings* elsewhere = nullptr;
      std::thread([&elsewhere] { elsewhere = services().regional; }).join();
      EXPECT_EQ(elsewhere, before) << "another thread keeps the system's";
    }
    EXPECT_EQ(services().regional, &outer.regional);
  }
  EXPECT_EQ(services().regional, before);
}

}  // namespace zentaro::services_test
