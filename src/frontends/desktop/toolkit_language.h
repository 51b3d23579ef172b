// The toolkit in the language that was chosen for the program: the direction of its layouts, and its own
// words, such as those of a text field's menu. Needs a QApplication.
#pragma once

namespace norvik::desktop {

// To be called once, before a window is made. Where the toolkit's own translations are not installed, its own
// words stay English.
void useChosenLanguage();

}  // namespace norvik::desktop
