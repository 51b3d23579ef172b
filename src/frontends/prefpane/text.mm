// UTF-8 both ways.
#include "src/frontends/prefpane/text.h"

#include "src/frontends/shared/language/language.h"

namespace norvik::prefpane {

NSString* text(std::string_view utf8) {
  for (const NSStringEncoding encoding : {NSUTF8StringEncoding, NSISOLatin1StringEncoding}) {
    NSString* made = [[[NSString alloc] initWithBytes:utf8.data() length:utf8.size()
                                             encoding:encoding] autorelease];
    if (made != nil) return made;
  }
  return @"";
}

NSString* translatedText(std::string_view english) {
  return text(translated(english));
}

std::string utf8(NSString* text) {
  const char* bytes = [text UTF8String];
  return bytes != nullptr ? bytes : "";
}

}  // namespace norvik::prefpane
