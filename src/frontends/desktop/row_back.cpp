// The menu is made anew each time, as its words have values in them.
#include "src/frontends/desktop/row_back.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonics.h"

namespace norvik::desktop {

RowBack::RowBack(std::vector<std::string> settings, bool hasButton, QWidget* page)
    : QObject(page), settings_(std::move(settings)) {
  if (!hasButton) return;
  button_ = new WayBackButton(text(settings_.front()) + QStringLiteral("_back"), page);
  connect(button_, &QToolButton::clicked, this, [this] {
    if (toStored) toStored();
  });
}

void RowBack::offer(const QString& name) {
  if (button_ != nullptr) button_->offer(name);
}

void RowBack::setShown(bool isShown) {
  if (button_ == nullptr) return;
  button_->setPlaceKept(isShown);
  if (!isShown) button_->offer(QString());
}

void RowBack::addTo(QWidget* field) {
  if (qobject_cast<QLineEdit*>(field) != nullptr) field->installEventFilter(this);
}

void RowBack::showMenu(const QPoint& place) {
  auto* menu = new QMenu(static_cast<QWidget*>(parent()));
  addEntries(*menu);
  open(menu, place);
}

void RowBack::addEntries(QMenu& menu) {
  if (!ways) return;
  const WaysBack now = ways();
  const auto add = [&](const WayBack& way, const QString& name, const std::function<void()>& act) {
    QAction* entry = menu.addAction(withoutMnemonic(text(way.words)), this, [act] {
      if (act) act();
    });
    entry->setObjectName(name);
    entry->setEnabled(way.isOffered);
  };
  add(now.stored, QStringLiteral("backToStored"), toStored);
  add(now.standard, QStringLiteral("backToDefault"), toDefault);
}

void RowBack::open(QMenu* menu, const QPoint& place) {
  menu->setObjectName(QStringLiteral("rowMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(place);
}

bool RowBack::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ContextMenu) return QObject::eventFilter(watched, event);
  auto* field = static_cast<QLineEdit*>(watched);
  auto* asked = static_cast<QContextMenuEvent*>(event);
  QMenu* menu = field->createStandardContextMenu();
  menu->addSeparator();
  addEntries(*menu);
  open(menu, asked->globalPos());
  return true;
}

}  // namespace norvik::desktop
