// The exported version queries where a scenario cannot look: how often the system is asked, and what they
// return without a computer.
#include "src/server/mac/os/nvkos.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "src/server/mac/platform/system_version.h"
#include "tests/server/os/nvkos_from_c.h"
#include "tests/server/stub_computer.h"

namespace norvik {
namespace {

struct SystemVersionTest : testing::Test {
  StubComputer computer;
  SystemVersionTest() { std::fill(std::begin(__nvkos_sys_ver), std::end(__nvkos_sys_ver), 0); }
};

TEST_F(SystemVersionTest, IsAskedForOnce) {
  EXPECT_EQ(NVKOS_SystemVersion(nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(NVKOS_SysVerEqual(1, 2), 1);
  EXPECT_EQ(NVKOS_SysVerGreater(0, 9), 1);
  EXPECT_EQ(NVKOS_SysVerEqualOrGreater(1, 3), 0);
  EXPECT_EQ(computer.system.versionQueries, 3);
}

TEST_F(SystemVersionTest, IsNotAskedForAgainAfterAFailedQuery) {
  computer.system.hasVersion = false;
  int32_t major = -7, minor = -7, bugfix = -7;
  EXPECT_EQ(NVKOS_SystemVersion(&major, &minor, &bugfix), 1);
  EXPECT_EQ(NVKOS_SysVerEqual(0, 0), 1);
  EXPECT_EQ(major, 0);
  EXPECT_EQ(minor, 0);
  EXPECT_EQ(bugfix, 0);
  EXPECT_EQ(__nvkos_sys_ver[3], 1);
  EXPECT_EQ(computer.system.versionQueries, 3);
}

TEST_F(SystemVersionTest, AnUpdateAsksAgainAndGivesTheLastAnswer) {
  EXPECT_EQ(nvkos_update_sysver(), noErr);
  EXPECT_EQ(nvkos_update_sysver(), noErr);
  EXPECT_EQ(__nvkos_sys_ver[2], 6);
  computer.system.hasVersion = false;
  EXPECT_EQ(nvkos_update_sysver(), gestaltUndefSelectorErr);
}

// Before a front end installs a computer, and wherever none does.
struct NoComputerTest : testing::Test {
  NoComputerTest() { std::fill(std::begin(__nvkos_sys_ver), std::end(__nvkos_sys_ver), 0); }
};

TEST_F(NoComputerTest, TheSystemVersionIsThatOfFailedQueries) {
  int32_t major = -7, minor = -7, bugfix = -7;
  EXPECT_EQ(NVKOS_SystemVersion(&major, &minor, &bugfix), 1);
  EXPECT_EQ(major, 0);
  EXPECT_EQ(minor, 0);
  EXPECT_EQ(bugfix, 0);
  EXPECT_EQ(__nvkos_sys_ver[3], 1);
  EXPECT_EQ(nvkos_update_sysver(), gestaltUndefSelectorErr);
}

TEST_F(NoComputerTest, VersionsAreComparedWithZero) {
  EXPECT_EQ(NVKOS_SysVerEqual(0, 0), 1);
  EXPECT_EQ(NVKOS_SysVerEqual(10, 6), 0);
  EXPECT_EQ(NVKOS_SysVerEqualOrGreater(0, 0), 1);
  EXPECT_EQ(NVKOS_SysVerEqualOrGreater(0, 1), 0);
  EXPECT_EQ(NVKOS_SysVerGreater(0, 0), 0);
  EXPECT_EQ(NVKOS_SysVerGreater(-1, 0), 1);
}

TEST_F(NoComputerTest, NoBundleHasAVersion) {
  int32_t major = -7, minor = -7, bugfix = -7;
  EXPECT_EQ(NVKOS_BundleVersion(nullptr, &major, &minor, &bugfix), 0);
  EXPECT_EQ(NVKOS_BundleVersion("com.example.viewer", &major, &minor, &bugfix), 0);
  EXPECT_EQ(major, -7);
  EXPECT_EQ(minor, -7);
  EXPECT_EQ(bugfix, -7);
}

TEST_F(NoComputerTest, AProgramInCCanAsk) {
  EXPECT_EQ(versionFromC(nullptr), 0);
  EXPECT_EQ(versionFromC("com.example.viewer"), 0);
}

}  // namespace
}  // namespace norvik
