// The pane's language: that of the toolkit's defaults, or else the environment's.
#import "src/frontends/prefpane/pane_language.h"

#include <gtest/gtest.h>

#include <cstdlib>

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/shared/language/choice.h"

namespace norvik::prefpane {
namespace {

class PaneLanguage : public testing::Test {
 protected:
  PaneLanguage() : before_([[defaults() persistentDomainForName:NSGlobalDomain] copy]) {
    ::setenv("LANGUAGE", "fr", 1);
    ::unsetenv("LC_ALL");
  }
  ~PaneLanguage() override {
    [defaults() setPersistentDomain:before_ != nil ? before_ : [NSDictionary dictionary]
                            forName:NSGlobalDomain];
    [before_ release];
    ::setenv("LANGUAGE", "en", 1);
    chooseLanguage({});
  }

  static NSUserDefaults* defaults() { return [NSUserDefaults standardUserDefaults]; }
  static void store(NSArray* languages) {
    NSDictionary* domain = languages == nil
                               ? [NSDictionary dictionary]
                               : [NSDictionary dictionaryWithObject:languages forKey:languageListKey()];
    [defaults() setPersistentDomain:domain forName:NSGlobalDomain];
  }

 private:
  NSDictionary* before_;
};

TEST_F(PaneLanguage, IsThatOfTheToolkitsDefaults) {
  store([NSArray arrayWithObjects:@"Klingon", @"German", @"English", nil]);
  choosePaneLanguage();
  EXPECT_EQ(spokenLanguage(), "de");
  store([NSArray arrayWithObjects:@"es-MX", @"de", nil]);
  choosePaneLanguage();
  EXPECT_EQ(spokenLanguage(), "es") << "as the Mac writes it";
  store([NSArray arrayWithObject:@"English"]);
  choosePaneLanguage();
  EXPECT_EQ(spokenLanguage(), "en");
}

TEST_F(PaneLanguage, IsTheEnvironmentsWhereNoneIsStored) {
  store(nil);
  choosePaneLanguage();
  EXPECT_EQ(spokenLanguage(), "fr");
}

}  // namespace
}  // namespace norvik::prefpane
