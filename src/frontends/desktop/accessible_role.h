// What a widget is to a screen reader where the toolkit cannot know it: a label that is a heading, a widget
// that draws a picture.
#pragma once

#include <QAccessible>
#include <QWidget>

namespace norvik::desktop {

// To be called before anything else is set, as the toolkit asks once. Its name is the widget's accessible
// name or, for a label without one, its text.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace norvik::desktop
