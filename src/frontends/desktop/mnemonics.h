// Mnemonics: each label of a page gets a letter that no other label on the screen has.
#pragma once

#include <QSet>
#include <QString>

class QWidget;

namespace norvik::desktop {

// A text for a button or caption in which no letter is a mnemonic.
QString withoutMnemonic(const QString& words);

// Gives every check box, radio button, push button and caption below `widget`, in the order of creation, a
// letter that is not in `taken`, and adds it to `taken`; none if every letter of the text is taken. May be
// called again when a text has changed; a text that keeps its letter is not touched.
void addMnemonics(QWidget& widget, QSet<QChar>& taken);

}  // namespace norvik::desktop
