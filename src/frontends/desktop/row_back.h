// The ways back of one row of a page: the button at its end and the menu that opens at it. Shows what it is
// given and reports what a person chose; decides nothing.
#pragma once

#include <QObject>
#include <QPoint>
#include <functional>
#include <string>
#include <vector>

#include "src/frontends/desktop/way_back_button.h"
#include "src/frontends/shared/edits/ways_back.h"

class QMenu;

namespace norvik::desktop {

class RowBack : public QObject {
 public:
  // `settings` by their names. The button is a child of `page`; it is null where another row of the same
  // setting has it.
  RowBack(std::vector<std::string> settings, bool hasButton, QWidget* page);

  const std::vector<std::string>& settings() const { return settings_; }
  WayBackButton* button() const { return button_; }

  // Shows the button under that name; hides it where it is empty.
  void offer(const QString& name);
  // Whether the row is shown: the button of a hidden row keeps no place.
  void setShown(bool isShown);
  // A text field has a menu of its own, which gets the ways back too.
  void addTo(QWidget* field);
  // Opens the row's menu at a place of the screen.
  void showMenu(const QPoint& place);

  // What the row offers now.
  std::function<WaysBack()> ways;
  // A person chose one.
  std::function<void()> toStored;
  std::function<void()> toDefault;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addEntries(QMenu& menu);
  void open(QMenu* menu, const QPoint& place);

  std::vector<std::string> settings_;
  WayBackButton* button_ = nullptr;
};

}  // namespace norvik::desktop
