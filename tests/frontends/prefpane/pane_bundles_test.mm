// Which queries about bundles the pane's own bundle serves, and which the computer does.
#include "src/frontends/prefpane/pane_bundles.h"

#include <gtest/gtest.h>

#include "src/frontends/prefpane/text.h"
#include "tests/support/sandbox_folder.h"

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {
namespace {

constexpr const char* kInfo = R"({
  CFBundleIdentifier = "com.example.norvik";
  NVKProductSupport = "https://help.example.com/norvik";
  NSPrefPaneSearchParameters = (a, list);
})";

// A computer with the built-in pane bundle and one more; it has any text, that of the key itself.
class Computer : public Bundles {
 public:
  CFBundleRef CFBundleGetMainBundle() override { return main; }
  CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view identifier) override {
    return identifier == "com.veltrane.norvik.prefpane" ? paneBundle() : other;
  }
  CFBundleRef paneBundle() override { return pane; }
  std::optional<std::string> CFBundleGetValueForInfoDictionaryKey(CFBundleRef /*bundle*/,
                                                                  std::string_view key) override {
    return std::string(key);
  }
  std::optional<std::string> resource(CFBundleRef /*bundle*/, std::string_view name,
                                      std::string_view type) override {
    return std::string(name) + "." + std::string(type);
  }

  const CFBundleRef main = reinterpret_cast<CFBundleRef>(&bytes_[0]);
  const CFBundleRef pane = reinterpret_cast<CFBundleRef>(&bytes_[1]);
  const CFBundleRef other = reinterpret_cast<CFBundleRef>(&bytes_[2]);

 private:
  char bytes_[3] = {};
};

class PaneBundlesTest : public testing::Test {
 protected:
  // A bundle on the disk with the Info dictionary above.
  NSBundle* bundleOnDisk() {
    folder_.put("/Norvik.prefPane/Resources/Info-gnustep.plist", kInfo);
    return [NSBundle bundleWithPath:text(folder_.onDisk("/Norvik.prefPane"))];
  }
  void put(const char* path, const char* bytes) { folder_.put(path, bytes); }
  std::optional<std::string> textOf(CFBundleRef bundle, const char* key) {
    return bundles.CFBundleGetValueForInfoDictionaryKey(bundle, key);
  }

  Computer computer;
  PaneBundles bundles{computer};

 private:
  SandboxFolder folder_;
};

TEST_F(PaneBundlesTest, ThePanesTextsAreThoseOfItsFolderAlone) {
  bundles.setPaneBundle(bundleOnDisk());
  EXPECT_EQ(textOf(bundles.paneBundle(), "NVKProductSupport"), "https://help.example.com/norvik");
  EXPECT_EQ(textOf(bundles.paneBundle(), "CFBundleVersion"), std::nullopt) << "not the computer's";
  EXPECT_EQ(textOf(bundles.paneBundle(), "NSPrefPaneSearchParameters"), std::nullopt) << "not a text";
}

TEST_F(PaneBundlesTest, UntilThereIsAPaneTheComputerHasItsBundle) {
  EXPECT_EQ(textOf(bundles.paneBundle(), "CFBundleVersion"), "CFBundleVersion");
  EXPECT_EQ(bundles.paneBundle(), computer.pane);
}

TEST_F(PaneBundlesTest, ThePanesBundleIsFoundByItsOwnIdentifierOnly) {
  bundles.setPaneBundle(bundleOnDisk());
  EXPECT_EQ(bundles.CFBundleGetBundleWithIdentifier("com.example.norvik"), bundles.paneBundle());
  EXPECT_EQ(bundles.CFBundleGetBundleWithIdentifier("com.veltrane.norvik.prefpane"), nullptr);
  EXPECT_EQ(bundles.CFBundleGetBundleWithIdentifier("com.example.other"), computer.other);
}

TEST_F(PaneBundlesTest, ThePanesFilesAreThoseOfItsFolderAndOtherwiseBuiltIn) {
  put("/Norvik.prefPane/Resources/authlock.tiff", "a seller's lock");
  put("/Norvik.prefPane/Resources/authulock.tiff", "");
  bundles.setPaneBundle(bundleOnDisk());
  EXPECT_EQ(bundles.resource(bundles.paneBundle(), "authlock", "tiff"), "a seller's lock");
  EXPECT_EQ(bundles.resource(bundles.paneBundle(), "authulock", "tiff"), "authulock.tiff") << "an empty file";
  EXPECT_EQ(bundles.resource(bundles.paneBundle(), "icon", "tiff"), "icon.tiff");
  EXPECT_EQ(bundles.resource(computer.other, "authlock", "tiff"), "authlock.tiff");
}

TEST_F(PaneBundlesTest, EverythingElseIsTheComputers) {
  bundles.setPaneBundle(bundleOnDisk());
  EXPECT_EQ(bundles.CFBundleGetMainBundle(), computer.main);
  EXPECT_EQ(textOf(computer.other, "CFBundleVersion"), "CFBundleVersion");
  EXPECT_EQ(bundles.resource(bundles.paneBundle(), "authlock", "tiff"), "authlock.tiff");
}

}  // namespace
}  // namespace norvik::prefpane
