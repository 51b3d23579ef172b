// Runs the tests of the pane's objects inside an application, which most of the toolkit needs; with the
// variable NORVIK_LETTERS, with letters of that many points; with NORVIK_CATALOGUE, in the language of that
// file.
#include <gtest/gtest.h>

#include <cstdlib>

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/shared/language/language.h"
#include "tests/support/files.h"

// What the toolkit and the libraries under it keep until the program ends. The address sanitizer asks for it.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libobjc\nleak:libgnustep\nleak:libfontconfig\nleak:libcairo\n";
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();  // needs no display
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  if (const char* points = std::getenv("NORVIK_LETTERS")) {
    NSString* size = [NSString stringWithUTF8String:points];
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    [defaults removeVolatileDomainForName:NSArgumentDomain];
    [defaults setVolatileDomain:[NSDictionary dictionaryWithObjectsAndKeys:size, @"NSFontSize", size,
                                                                           @"NSBoldFontSize", nil]
                        forName:NSArgumentDomain];
  }
  const char* file = std::getenv("NORVIK_CATALOGUE");
  const std::string catalogue = file != nullptr ? norvik::contentOf(file) : "";
  if (file != nullptr) norvik::speak(norvik::Catalogue::read(catalogue));
  [NSApplication sharedApplication];
  const int result = RUN_ALL_TESTS();
  [pool release];
  return result;
}
