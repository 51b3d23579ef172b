// Presses a button at once when its mnemonic is typed. The toolkit shows the button pressed for a tenth of a
// second first; keys typed in that time, Return or Escape, would overtake the click.
#pragma once

class QAbstractButton;
class QLabel;

namespace norvik::desktop {

// For as long as the button lives.
void clickAtMnemonic(QAbstractButton* button);

// The same for the mnemonic of a label, whose buddy the button becomes; for as long as both live.
void clickAtMnemonic(QAbstractButton* button, QLabel* label);

}  // namespace norvik::desktop
