// The role is a property of the widget; an accessible interface of its own returns it.
#include "src/frontends/desktop/accessible_role.h"

#include <QAccessibleWidget>
#include <QLabel>

namespace norvik::desktop {

namespace {

constexpr const char* kRole = "accessibleRole";

class RoleOfWidget : public QAccessibleWidget {
 public:
  RoleOfWidget(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}

  QString text(QAccessible::Text which) const override {
    const auto* label = qobject_cast<const QLabel*>(widget());
    if (which == QAccessible::Name && label != nullptr && widget()->accessibleName().isEmpty())
      return label->text();
    return QAccessibleWidget::text(which);
  }
};

QAccessibleInterface* withRole(const QString& /*className*/, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  const QVariant role = widget != nullptr ? widget->property(kRole) : QVariant();
  if (!role.isValid()) return nullptr;
  return new RoleOfWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
  static const bool kIsInstalled = (QAccessible::installFactory(withRole), true);
  if (kIsInstalled) widget.setProperty(kRole, static_cast<int>(role));
}

}  // namespace norvik::desktop
