// The exported version queries where a scenario cannot look: how often the system is asked, and the built
// library.
#include "src/server/mac/os/nvkos.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

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

TEST_F(SystemVersionTest, IsNotAskedForAgainWhereTheSystemDoesNotTell) {
  computer.system.tellsVersion = false;
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
  computer.system.tellsVersion = false;
  EXPECT_EQ(nvkos_update_sysver(), gestaltUndefSelectorErr);
}

TEST(SharedLibraryTest, LoadsByItselfAndAnswersThroughCLinkage) {
  void* library = dlopen(NORVIK_SHARED_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  void* query = dlsym(library, "NVKOS_SysName");
  ASSERT_NE(query, nullptr) << dlerror();
  EXPECT_STREQ(reinterpret_cast<const char* (*)()>(query)(), "MACOSX");
  EXPECT_STREQ(static_cast<const char*>(dlsym(library, "__nvkos_sys_name")), "MACOSX");
  EXPECT_EQ(dlsym(library, "nvkos_update_sysver"), nullptr);
  dlclose(library);
}

}  // namespace
}  // namespace norvik
