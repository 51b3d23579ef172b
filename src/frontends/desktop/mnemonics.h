// Letters for the keyboard: each label of a page gets one that no other label on the screen has.
#pragma once

#include <QSet>
#include <QString>

class QWidget;

namespace norvik::desktop {

// A text as buttons and captions want it where no letter of it is a mnemonic.
QString withoutMnemonic(const QString& words);

// Gives every check box, radio button, push button and caption below `widget` a letter that is not in
// `taken`, which it joins, in the order in which they stand; none where every letter is taken. May be called
// again when a text has changed; texts that keep their letter are not touched.
void addMnemonics(QWidget& widget, QSet<QChar>& taken);

}  // namespace norvik::desktop
