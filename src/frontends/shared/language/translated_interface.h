// The interface description in the language of the person. Computes values; touches nothing.
#pragma once

#include "src/server/mac/ui/interface_description.h"

namespace norvik {

// The description with its labels, titles, notes and help texts translated, and with the words by which a
// person may search in both languages. What is also typed, stored or compared stays English and is translated
// where it is shown: the items of pop-ups, the names of pages, the words of choices.
InterfaceDescription translatedInterface(InterfaceDescription interface);

}  // namespace norvik
