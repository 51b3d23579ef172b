// By the sizes that the toolkit asks for, and the rectangles that it gives.
#include "tests/frontends/desktop/good_layout.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>

namespace norvik::desktop {

namespace {

void expectWhole(const QWidget* widget) {
  const auto* label = qobject_cast<const QLabel*>(widget);
  const bool wraps = label != nullptr && label->wordWrap();
  const QSize wanted = wraps ? QSize(0, widget->heightForWidth(widget->width())) : widget->minimumSizeHint();
  EXPECT_GE(widget->width(), wanted.width()) << named(widget).toStdString();
  EXPECT_GE(widget->height(), wanted.height()) << named(widget).toStdString();
  const QRect inParent(widget->mapTo(widget->parentWidget(), QPoint()), widget->size());
  EXPECT_TRUE(widget->parentWidget()->rect().contains(inParent)) << named(widget).toStdString();
}

}  // namespace

QList<QWidget*> leavesOf(QWidget& root) {
  QList<QWidget*> leaves;
  for (auto* widget : root.findChildren<QWidget*>()) {
    const bool leaf = qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget) ||
                      qobject_cast<QComboBox*>(widget) || qobject_cast<QLineEdit*>(widget) ||
                      qobject_cast<QSlider*>(widget);
    if (leaf && widget->isVisible() && widget->window() == root.window()) leaves += widget;
  }
  return leaves;
}

QString named(const QWidget* widget) {
  if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
  return widget->objectName();
}

void expectGood(QWidget& root) {
  const auto leaves = leavesOf(root);
  for (qsizetype i = 0; i < leaves.size(); ++i) {
    expectWhole(leaves[i]);
    const QRect here(leaves[i]->mapTo(&root, QPoint()), leaves[i]->size());
    for (qsizetype j = i + 1; j < leaves.size(); ++j) {
      const QRect there(leaves[j]->mapTo(&root, QPoint()), leaves[j]->size());
      EXPECT_FALSE(here.intersects(there))
          << named(leaves[i]).toStdString() << " | " << named(leaves[j]).toStdString();
    }
  }
}

void choosePage(Panel& panel, const TabDescription& tab) {
  const std::size_t colon = tab.label.find(':');
  panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
}

void expectGoodPages(Panel& panel) {
  for (const TabDescription& tab : panel.interface.tabs) {
    SCOPED_TRACE(tab.label);
    choosePage(panel, tab);
    expectGood(*panel.window.pages()[static_cast<std::size_t>(&tab - panel.interface.tabs.data())]);
    expectGood(*panel.widget("ib_button_Auth")->parentWidget());
  }
}

}  // namespace norvik::desktop
