// The bundle in a program that needs only its version queries: loaded without a host, and so without a pane
// and without a computer to ask.
#include <dlfcn.h>
#include <gtest/gtest.h>

namespace norvik::prefpane {
namespace {

class BundleExports : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(bundle_, nullptr) << dlerror(); }

  // Null where the bundle does not export the name.
  template <typename Exported>
  Exported* exported(const char* name) {
    return reinterpret_cast<Exported*>(dlsym(bundle_, name));
  }

 private:
  void* bundle_ = dlopen(NORVIK_BUNDLE "/Norvik", RTLD_NOW | RTLD_LOCAL);
};

TEST_F(BundleExports, TheSystemHasItsName) {
  const auto* name = exported<const char>("__nvkos_sys_name");
  auto* query = exported<const char*()>("NVKOS_SysName");
  ASSERT_NE(name, nullptr);
  ASSERT_NE(query, nullptr);
  EXPECT_STREQ(name, "MACOSX");
  EXPECT_EQ(query(), name);
}

}  // namespace
}  // namespace norvik::prefpane
