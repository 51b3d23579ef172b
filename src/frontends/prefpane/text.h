// Texts between the model, which has UTF-8, and the toolkit. For .mm files alone.
#pragma once

#include <string>
#include <string_view>

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {

// Bytes that are not UTF-8, such as those of a sentence that was cut within a character, are taken as
// Latin-1, so that they show at all.
NSString* text(std::string_view utf8);
// A constant in the language of the person.
NSString* translatedText(std::string_view english);
std::string utf8(NSString* text);

}  // namespace norvik::prefpane
