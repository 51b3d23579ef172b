// A table with a pair of radio buttons in each row.
#include "src/frontends/desktop/collision_dialog.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/shared/interface/window_texts.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::desktop {

namespace {

namespace texts = window_texts;

enum TableColumn { kSettingAt, kLoadedAt, kTheirsAt, kMineAt };

constexpr int kLettersBetween = 3;  // columns
constexpr int kTableLetters = 78;

QLabel* plainLabel(const std::string& words, QWidget* parent) {
  auto* label = new QLabel(text(words), parent);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* heading(std::string_view words, QWidget* parent) {
  auto* label = new QLabel(translatedText(words), parent);
  QFont bold;
  bold.setBold(true);
  label->setFont(bold);
  return label;
}

// The whole choice is read with it, as the row and the column are only seen.
QRadioButton* choice(const Collision& collision, std::string_view side, const std::string& value,
                     QWidget* parent) {
  const std::string shown = translated(value);
  auto* button = new QRadioButton(withoutMnemonic(text(shown)), parent);
  button->setAccessibleName(text(sentence("{1}: {2}, {3}", {collision.label, translated(side), shown})));
  button->setToolTip(translatedText(side));
  return button;
}

}  // namespace

CollisionDialog::CollisionDialog(QWidget* window, const std::vector<Collision>& collisions)
    : QDialog(window, Qt::Sheet) {
  setObjectName(QStringLiteral("collisionDialog"));
  setWindowTitle(translatedText(texts::kCollisionTitle));
  setWindowModality(Qt::WindowModal);
  auto* column = new QVBoxLayout(this);
  auto* words = new QLabel(translatedText(texts::kCollisionText), this);
  words->setWordWrap(true);
  column->addWidget(words);
  auto* area = new QScrollArea(this);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setAccessibleName(translatedText(texts::kCollisionTitle));
  area->setFocusPolicy(Qt::NoFocus);
  area->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
  area->setWidget(makeTable(collisions));
  column->addWidget(area, 1);
  auto* box = new QDialogButtonBox(this);
  QPushButton* go = box->addButton(translatedText(texts::kContinue), QDialogButtonBox::AcceptRole);
  QPushButton* cancel = box->addButton(translatedText(texts::kCancel), QDialogButtonBox::RejectRole);
  go->setObjectName(QStringLiteral("collisionContinue"));
  cancel->setObjectName(QStringLiteral("collisionCancel"));
  go->setDefault(true);
  column->addWidget(box);
  QSet<QChar> taken;
  addMnemonics(*box, taken);
  connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
  setMinimumWidth(kTableLetters * fontMetrics().averageCharWidth());
}

QWidget* CollisionDialog::makeTable(const std::vector<Collision>& collisions) {
  auto* table = new QWidget;
  auto* grid = new QGridLayout(table);
  grid->setHorizontalSpacing(kLettersBetween * fontMetrics().averageCharWidth());
  grid->addWidget(heading(texts::kSettingColumn, table), 0, kSettingAt);
  grid->addWidget(heading(texts::kLoadedColumn, table), 0, kLoadedAt);
  grid->addWidget(heading(texts::kTheirsColumn, table), 0, kTheirsAt);
  grid->addWidget(heading(texts::kMineColumn, table), 0, kMineAt);
  for (const Collision& collision : collisions) addRow(*grid, collision);
  grid->setColumnStretch(kSettingAt, 1);
  grid->setRowStretch(grid->rowCount(), 1);
  return table;
}

void CollisionDialog::addRow(QGridLayout& grid, const Collision& collision) {
  QWidget* table = grid.parentWidget();
  const int row = grid.rowCount();
  const std::string place = collision.page.empty()
                                ? collision.label
                                : sentence("{1}, {2}", {translated(collision.page), collision.label});
  QLabel* setting = plainLabel(place, table);
  setting->setWordWrap(true);
  QRadioButton* theirs = choice(collision, texts::kTakeTheirs, collision.theirs, table);
  QRadioButton* mine = choice(collision, texts::kKeepMine, collision.yours, table);
  mine->setChecked(true);
  auto* pair = new QButtonGroup(this);
  pair->addButton(theirs);
  pair->addButton(mine);
  theirs_.push_back(theirs);
  grid.addWidget(setting, row, kSettingAt);
  grid.addWidget(plainLabel(translated(collision.loaded), table), row, kLoadedAt);
  grid.addWidget(theirs, row, kTheirsAt);
  grid.addWidget(mine, row, kMineAt);
}

std::vector<Side> CollisionDialog::sides() const {
  std::vector<Side> sides;
  for (const QRadioButton* theirs : theirs_) sides.push_back(theirs->isChecked() ? Side::theirs : Side::mine);
  return sides;
}

}  // namespace norvik::desktop
