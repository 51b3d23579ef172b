// Has the letter of a button press it at once. The toolkit lets it look pressed for a tenth of a second
// first, and whoever goes on typing meanwhile, Return to apply or Escape to leave, would be ahead of the own
// click.
#pragma once

class QAbstractButton;

namespace norvik::desktop {

// For as long as the button lives.
void clickPromptly(QAbstractButton* button);

}  // namespace norvik::desktop
