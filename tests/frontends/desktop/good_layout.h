// Whether what a person reads on a page is whole and beside one another, for tests in fonts of all sizes and
// in other languages. Each finding is a test failure.
#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include "tests/frontends/desktop/panel.h"

namespace norvik::desktop {

// What a person reads or uses, of the visible widgets below this one.
QList<QWidget*> leavesOf(QWidget& root);
// A widget for a message: its text, or its name.
QString named(const QWidget* widget);
// Everything below this one is whole, and nothing is over another.
void expectGood(QWidget& root);
// Every page, one after the other, and the frame around them.
void expectGoodPages(Panel& panel);
// Chooses the page that the description has there.
void choosePage(Panel& panel, const TabDescription& tab);

}  // namespace norvik::desktop
