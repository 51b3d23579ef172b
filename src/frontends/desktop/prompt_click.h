// Has the letter of a button press it at once. The toolkit lets it look pressed for a tenth of a second
// first, and whoever goes on typing meanwhile, Return to apply or Escape to leave, would be ahead of the own
// click.
#pragma once

class QAbstractButton;
class QLabel;

namespace norvik::desktop {

// For as long as the button lives.
void clickPromptly(QAbstractButton* button);

// The same by the letter of a label, which becomes the button's; for as long as both live.
void clickPromptly(QAbstractButton* button, QLabel* words);

}  // namespace norvik::desktop
