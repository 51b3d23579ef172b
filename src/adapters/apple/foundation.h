// The platform's objects, for .mm files of this adapter alone, and texts to and from them.
#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace norvik::apple {

// Objects that are released late are released at the end of its scope.
class Pool {
 public:
  Pool() : pool_([[NSAutoreleasePool alloc] init]) {}
  ~Pool() { [pool_ release]; }
  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;

 private:
  NSAutoreleasePool* pool_;
};

// An autoreleased text. Bytes that are no UTF-8 are taken one by one, so that nothing is lost from sight.
inline NSString* text(std::string_view utf8) {
  NSString* made = [[[NSString alloc] initWithBytes:utf8.data()
                                             length:utf8.size()
                                           encoding:NSUTF8StringEncoding] autorelease];
  if (made != nil) return made;
  return [[[NSString alloc] initWithBytes:utf8.data() length:utf8.size()
                                 encoding:NSISOLatin1StringEncoding] autorelease];
}

// Empty for nil.
inline std::string utf8(NSString* words) {
  const char* bytes = [words UTF8String];
  return bytes != nullptr ? bytes : "";
}

}  // namespace norvik::apple
