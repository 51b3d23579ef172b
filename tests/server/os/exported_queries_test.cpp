// The version queries as another program meets them: a file that exports them, loaded by itself, and so
// without a computer to ask. One program for each such file, the library and the pane's bundle.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace norvik {
namespace {

using PartsQuery = int32_t(int32_t*, int32_t*, int32_t*);
using Comparison = int32_t(int32_t, int32_t);
using BundleQuery = int32_t(const char*, int32_t*, int32_t*, int32_t*);

class ExportedQueries : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(file_, nullptr) << dlerror(); }

  // Null if the file does not export the name.
  template <typename Exported>
  Exported* exported(const char* name) {
    return reinterpret_cast<Exported*>(dlsym(file_, name));
  }

 private:
  void* file_ = dlopen(NORVIK_EXPORTING_FILE, RTLD_NOW | RTLD_LOCAL);
};

TEST_F(ExportedQueries, TheSystemHasItsName) {
  const auto* name = exported<const char>("__nvkos_sys_name");
  auto* query = exported<const char*()>("NVKOS_SysName");
  ASSERT_NE(name, nullptr);
  ASSERT_NE(query, nullptr);
  EXPECT_STREQ(name, "MACOSX");
  EXPECT_EQ(query(), name);
}

TEST_F(ExportedQueries, TheSystemsVersionIsZeroWithoutAComputer) {
  auto* query = exported<PartsQuery>("NVKOS_SystemVersion");
  ASSERT_NE(query, nullptr);
  int32_t major = -7;
  int32_t minor = -7;
  int32_t bugfix = -7;
  EXPECT_EQ(query(&major, &minor, &bugfix), 1);
  EXPECT_EQ(major, 0);
  EXPECT_EQ(minor, 0);
  EXPECT_EQ(bugfix, 0);
}

TEST_F(ExportedQueries, ComparisonsAreMadeWithThatVersion) {
  auto* equal = exported<Comparison>("NVKOS_SysVerEqual");
  auto* atLeast = exported<Comparison>("NVKOS_SysVerEqualOrGreater");
  auto* above = exported<Comparison>("NVKOS_SysVerGreater");
  ASSERT_NE(equal, nullptr);
  ASSERT_NE(atLeast, nullptr);
  ASSERT_NE(above, nullptr);
  EXPECT_EQ(equal(0, 0), 1);
  EXPECT_EQ(equal(10, 6), 0);
  EXPECT_EQ(atLeast(0, 0), 1);
  EXPECT_EQ(atLeast(10, 6), 0);
  EXPECT_EQ(above(0, 0), 0);
  EXPECT_EQ(above(-1, 0), 1);
}

TEST_F(ExportedQueries, NoBundleHasAVersionWithoutAComputer) {
  auto* query = exported<BundleQuery>("NVKOS_BundleVersion");
  ASSERT_NE(query, nullptr);
  for (const char* identifier : {static_cast<const char*>(nullptr), "com.veltrane.norvik.prefpane"}) {
    int32_t major = -7;
    EXPECT_EQ(query(identifier, &major, nullptr, nullptr), 0);
    EXPECT_EQ(major, -7) << "nothing is stored";
  }
}

TEST_F(ExportedQueries, OtherNamesAreKeptInside) {
  EXPECT_EQ(exported<void>("nvkos_update_sysver"), nullptr);
  EXPECT_EQ(exported<void>("__nvkos_sys_ver"), nullptr);
}

}  // namespace
}  // namespace norvik
