// The layout of a page, and what beside its controls follows the model. Sizes depend on the font and the
// style alone.
#include "src/frontends/desktop/page.h"

#include <QButtonGroup>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "src/frontends/desktop/change_mark.h"
#include "src/frontends/desktop/note_label.h"
#include "src/frontends/desktop/page_header.h"
#include "src/frontends/desktop/preview_view.h"
#include "src/frontends/desktop/row_back.h"
#include "src/frontends/desktop/secondary_label.h"
#include "src/frontends/desktop/section_panel.h"
#include "src/frontends/desktop/spacer.h"
#include "src/frontends/desktop/state_dot.h"
#include "src/frontends/desktop/valued_slider.h"
#include "src/frontends/shared/interface/captions.h"
#include "src/frontends/shared/interface/value_words.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/preview/preview_texts.h"

namespace norvik::desktop {

namespace {

// The first and the last are the margin within a group.
enum Column {
  kBeginColumn,
  kMarkColumn,
  kCaptionColumn,
  kFieldColumn,
  kGapColumn,  // before the value of a slider
  kValueColumn,
  kBackColumn,  // the button that takes a change back
  kEndColumn,
  kColumns
};

// In lines of text.
constexpr double kBeforeSection = 0.8;
constexpr double kBeforeRow = 0.5;
constexpr double kWithinGroup = 0.6;  // above the first row and under the last
constexpr double kBesideGroup = 0.2;
constexpr double kBeforeValue = 0.6;
constexpr double kUnderHeading = 0.3;
constexpr double kMostLinesWide = 46;

// Whether the mnemonic of a caption leads to the control.
bool takesFocus(const ControlDescription& control) {
  return isCaptioned(control) && !control.displayOnly;
}

bool isSlider(const RowDescription& row) {
  return row.controls.size() == 1 && row.controls[0].kind == ControlKind::slider;
}

// Tab stops once in a group: at the button that is on. If none is on, it stops at each.
void chooseTabStop(const QButtonGroup& group) {
  const auto buttons = group.buttons();
  const bool anyOn = std::ranges::any_of(buttons, &QAbstractButton::isChecked);
  for (QAbstractButton* button : buttons)
    button->setFocusPolicy(button->isChecked() || !anyOn ? Qt::StrongFocus : Qt::ClickFocus);
}

QHBoxLayout* lineIn(QWidget* widget) {
  auto* line = new QHBoxLayout(widget);
  line->setContentsMargins(0, 0, 0, 0);
  return line;
}

}  // namespace

Page::Page(NVKServerPrefs& pane, const InterfaceDescription& interface, const TabDescription& tab,
           Problem problem)
    : pane_(pane), interface_(interface), problem_(std::move(problem)), tab_(tab), grid_(new QGridLayout) {
  auto* column = new QVBoxLayout(this);
  const QMargins margins = column->contentsMargins();
  column->setContentsMargins(margins.left() / 2, margins.top(), margins.right() / 2, margins.bottom());
  column->addWidget(new PageHeader(tab, this));
  column->addLayout(grid_);
  column->addStretch();
  grid_->setColumnStretch(kFieldColumn, 1);
  grid_->setVerticalSpacing(0);
  for (const int side : {kBeginColumn, kEndColumn})
    grid_->addWidget(new ColumnSpacer(kBesideGroup, this), 0, side);
  for (const SectionDescription& section : tab.sections) addSection(section);
  if (tab.preview) addPreview();
  groupRadioButtons();
}

Page::~Page() = default;

void Page::addSection(const SectionDescription& section) {
  const int begin = beginGroup(text(section.title), text(section.note));
  for (const RowDescription& row : section.rows) {
    if (&row != &section.rows.front()) addSpaceBeforeRow_ = true;
    addRow(row);
    addSpaceBeforeRow_ = false;
  }
  endGroup(begin);
}

void Page::addGroup(const QString& title, const QString& note, QWidget* content) {
  const int begin = beginGroup(title, note);
  content->setParent(this);
  addAcross(content);
  endGroup(begin);
}

// What is above a group. Returns the first line of the grid that is the group's own.
int Page::beginGroup(const QString& title, const QString& note) {
  addSpace(kBeforeSection);
  if (!title.isEmpty()) addWhole(new Heading(title, this));
  if (!note.isEmpty()) {
    auto* words = new SecondaryLabel(note, this);
    words->setWordWrap(true);
    addWhole(words);
  }
  if (!title.isEmpty() || !note.isEmpty()) addSpace(kUnderHeading);
  const int begin = grid_->rowCount();
  addSpace(kWithinGroup);
  return begin;
}

// Puts the panel under what has been added since.
void Page::endGroup(int begin) {
  addSpace(kWithinGroup);
  auto* panel = new SectionPanel(this);
  grid_->addWidget(panel, begin, kBeginColumn, grid_->rowCount() - begin, kColumns);
  panel->lower();
}

int Page::mostWidth() const {
  return static_cast<int>(kMostLinesWide * fontMetrics().height());
}

// Buttons with the same setting form a group, whatever their rows.
void Page::groupRadioButtons() {
  std::map<std::string, QButtonGroup*> groups;
  for (const auto& binding : bindings_) {
    if (binding->description().kind != ControlKind::radioButton) continue;
    QButtonGroup*& group = groups[binding->description().setting];
    if (group == nullptr) group = new QButtonGroup(this);
    group->addButton(static_cast<QRadioButton*>(binding->widget()));
  }
  for (const auto& [setting, group] : groups) {
    chooseTabStop(*group);
    connect(group, &QButtonGroup::idToggled, group, [group = group] { chooseTabStop(*group); });
  }
}

void Page::addSpace(double lines) {
  addAcross(new LineSpacer(lines, this));
}

// Within a group.
void Page::addAcross(QWidget* widget) {
  grid_->addWidget(widget, grid_->rowCount(), kCaptionColumn, 1, kEndColumn - kCaptionColumn);
}

// As wide as the groups.
void Page::addWhole(QWidget* widget) {
  grid_->addWidget(widget, grid_->rowCount(), kBeginColumn, 1, kColumns);
}

void Page::addRow(const RowDescription& description) {
  rows_.push_back(std::make_unique<Row>());
  Row& row = *rows_.back();
  if (addSpaceBeforeRow_) {
    auto* space = new LineSpacer(kBeforeRow, this);
    addAcross(space);
    row.widgets.push_back(space);
  }
  QWidget* fields = makeFields(row, description);
  row.widgets.push_back(fields);
  row.mark = new ChangeMark(text(interface_.changedHelp), this);
  row.widgets.push_back(row.mark);
  addBack(row, description);
  addBesideCaption(row, description, fields);
  if (isSlider(description)) addEnds(row, description.controls[0]);
  for (const Binding* binding : row.bindings) addNote(row, *binding);
  follow(row);
}

void Page::addBesideCaption(Row& row, const RowDescription& description, QWidget* fields) {
  const int at = grid_->rowCount();
  grid_->addWidget(row.mark, at, kMarkColumn);
  // A row with a note has the button there, as it is the widest.
  const bool endsWithBack = std::ranges::none_of(description.controls, hasNote);
  if (row.back != nullptr && row.back->button() != nullptr && endsWithBack)
    grid_->addWidget(row.back->button(), at, kBackColumn,
                     isSlider(description) ? Qt::AlignTop : Qt::AlignVCenter);
  if (isSlider(description)) {
    QLabel* value = static_cast<ValuedSlider*>(row.bindings.front()->widget())->valueLabel();
    grid_->addWidget(new ColumnSpacer(kBeforeValue, this), at, kGapColumn);
    grid_->addWidget(value, at, kValueColumn, Qt::AlignTop);
    row.widgets.push_back(value);
  }
  const int end = endsWithBack ? kBackColumn : kEndColumn;
  const int width = isSlider(description) ? 1 : end - kFieldColumn;
  if (QLabel* words = caption(description)) {
    if (takesFocus(description.controls[0])) {
      words->setBuddy(row.bindings.front()->widget());
      row.captions.push_back(words);
    }
    row.widgets.push_back(words);
    grid_->addWidget(words, at, kCaptionColumn,
                     Qt::AlignRight | (isSlider(description) ? Qt::AlignTop : Qt::AlignVCenter));
    grid_->addWidget(fields, at, kFieldColumn, 1, width);
  } else {
    grid_->addWidget(fields, at, kCaptionColumn, 1, end - kCaptionColumn);
  }
}

// Null for a row without words.
QLabel* Page::caption(const RowDescription& row) {
  const std::string& words = captionOf(row);
  return words.empty() ? nullptr : new QLabel(text(words), this);
}

QWidget* Page::makeFields(Row& row, const RowDescription& description) {
  auto* fields = new QWidget(this);
  QHBoxLayout* line = lineIn(fields);
  for (const ControlDescription& control : description.controls) {
    if (!control.requiresOutlet.empty()) line->addWidget(new BoxSpacer(fields));
    bindings_.push_back(makeBinding(pane_, *pane_.outlet(control.outlet), control, fields));
    Binding& binding = *bindings_.back();
    row.bindings.push_back(&binding);
    if (isCaptionedWithin(description, control)) {
      row.captions.push_back(new QLabel(text(control.label), fields));
      row.captions.back()->setBuddy(binding.widget());
      line->addWidget(row.captions.back());
    }
    addField(row, *line, binding);
  }
  // If no control stretches, the remaining space comes after the last one.
  bool stretches = false;
  for (int i = 0; i < line->count(); ++i) stretches = stretches || line->stretch(i) > 0;
  if (!stretches) line->addStretch();
  return fields;
}

// A control, and the dot before it if it shows a state.
void Page::addField(Row& row, QHBoxLayout& line, Binding& binding) {
  const ControlDescription& description = binding.description();
  if (description.indicator) {
    row.dots.push_back(new StateDot(pane_, binding.widget()->parentWidget()));
    line.addWidget(row.dots.back());
  }
  const bool wide = description.kind == ControlKind::label || description.kind == ControlKind::slider;
  line.addWidget(binding.widget(), wide ? 1 : 0);
}

// The note of a text field, under its row over the whole width: beside the field there is no space for a
// sentence. It is aligned with the words of the row's check box.
void Page::addNote(Row& row, const Binding& binding) {
  const ControlDescription& description = binding.description();
  if (!hasNote(description)) return;
  auto* under = new QWidget(this);
  QHBoxLayout* line = lineIn(under);
  line->setSpacing(0);
  if (!description.requiresOutlet.empty()) line->addWidget(new BoxSpacer(under));
  auto* note = new NoteLabel(under);
  note->setObjectName(binding.widget()->objectName() + QStringLiteral("_note"));
  line->addWidget(note, 1);
  if (row.back != nullptr && row.back->button() != nullptr) line->addWidget(row.back->button());
  addAcross(under);
  row.widgets.push_back(under);
  notes_.push_back({&binding, note});
}

// The names of a slider's ends, right under them, and beside them what its value means.
void Page::addEnds(Row& row, const ControlDescription& slider) {
  auto* ends = new QWidget(this);
  QHBoxLayout* line = lineIn(ends);
  line->addWidget(new SecondaryLabel(text(slider.minimumLabel), ends));
  line->addStretch();
  line->addWidget(new SecondaryLabel(text(slider.maximumLabel), ends));
  const int at = grid_->rowCount();
  grid_->addWidget(ends, at, kFieldColumn);
  QLabel* words = static_cast<ValuedSlider*>(row.bindings.front()->widget())->wordsLabel();
  grid_->addWidget(words, at, kValueColumn);
  row.widgets.push_back(words);
  row.widgets.push_back(ends);
  row.ends = ends;
}

void Page::addPreview() {
  auto* content = new QWidget(this);
  QHBoxLayout* line = lineIn(content);
  preview_ = new PreviewView(content);
  line->addWidget(preview_);
  line->addStretch();
  addGroup(text(translated(preview_texts::kTitle)), text(translated(preview_texts::kNote)), content);
  showPreview();
}

void Page::showPreview() {
  if (preview_ == nullptr) return;
  preview_->showSettings(previewSettings(pane_, *tab_.preview),
                         text(previewName(pane_, interface_, *tab_.preview)));
}

// Of a choice, the box before its buttons has the button: the ways back of both are the same.
void Page::addBack(Row& row, const RowDescription& description) {
  std::vector<std::string> settings;
  for (const ControlDescription& control : description.controls) {
    if (!control.setting.empty()) settings.push_back(control.setting);
  }
  if (settings.empty()) return;
  const bool hasButton = description.controls.front().kind != ControlKind::radioButton;
  row.back = new RowBack(std::move(settings), hasButton, this);
  for (const Binding* binding : row.bindings) row.back->addTo(binding->widget());
  backs_.push_back(row.back);
}

void Page::follow(Row& row) {
  for (Binding* binding : row.bindings) {
    if (binding->description().kind == ControlKind::slider) describe(*binding, false);
    binding->changed = [this, &row, binding] {
      showRow(row);
      if (binding->description().kind == ControlKind::slider) describe(*binding, row.mark->isOn());
      showPreview();
      if (changed) changed(*binding);
    };
  }
  showRow(row);
}

// Shows what is beside the controls of a row; it is hidden when all of them are.
void Page::showRow(const Row& row) {
  const bool shown = std::ranges::any_of(row.bindings, [](const Binding* b) { return b->isVisible(); });
  for (QWidget* widget : row.widgets) widget->setVisible(shown);
  if (row.back != nullptr) row.back->setShown(shown);
  for (QLabel* caption : row.captions) caption->setEnabled(caption->buddy()->isEnabledTo(this));
  if (row.ends != nullptr) row.ends->setEnabled(row.bindings.front()->control().isEnabled());
  for (StateDot* dot : row.dots) dot->showModel();
}

const Page::Note* Page::noteOf(const Binding& binding) const {
  const auto note = std::ranges::find(notes_, &binding, &Note::binding);
  return note != notes_.end() ? &*note : nullptr;
}

// The accessible description of a control: its note if it has one, or else its help; before that what a
// slider's value means, and after it that it is changed.
void Page::describe(const Binding& binding, bool differs) {
  const Note* note = noteOf(binding);
  QString words = note != nullptr ? note->label->words() : QString();
  if (words.isEmpty()) words = text(binding.description().help);
  if (binding.description().kind == ControlKind::slider) {
    const std::string value = spokenValue(binding.description(), binding.control().truncatedValue());
    words = text(sentence("{1}. {2}", {value, words.toStdString()}));
  }
  if (differs) words += (words.isEmpty() ? QString() : QStringLiteral(" ")) + text(interface_.changedHelp);
  binding.widget()->setAccessibleDescription(words);
}

bool Page::isRefused(const Control& field) const {
  return std::ranges::any_of(notes_, [&field](const Note& note) {
    return &note.binding->control() == &field && note.label->kind() == MessageKind::failure &&
           !note.label->words().isEmpty();
  });
}

void Page::refreshMarks() {
  for (const auto& row : rows_) {
    bool differs = false;
    for (const Binding* binding : row->bindings)
      differs = differs || pane_.differsFromStored(binding->control());
    if (row->mark->isOn() == differs) continue;
    row->mark->setOn(differs);
    if (row->back != nullptr && !differs) row->back->offer(QString());
    for (const Binding* binding : row->bindings) describe(*binding, differs);
  }
}

bool Page::showFocusedMenu() {
  QWidget* focus = focusWidget();
  for (const auto& row : rows_) {
    if (row->back == nullptr || focus == nullptr) continue;
    const auto has = [focus](const QWidget* widget) {
      return widget == focus || widget->isAncestorOf(focus);
    };
    if (std::ranges::none_of(row->widgets, has) && row->back->button() != focus) continue;
    row->back->showMenu(focus->mapToGlobal(QPoint(0, focus->height())));
    return true;
  }
  return false;
}

// On everything of the row, also on what is disabled, which leaves the event to the page.
void Page::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) {
    event->setAccepted(showFocusedMenu());
    return;
  }
  for (const auto& row : rows_) {
    const auto isOver = [&](const QWidget* widget) {
      return event->pos().y() >= widget->y() && event->pos().y() <= widget->geometry().bottom() &&
             widget->isVisible();
    };
    if (row->back == nullptr || std::ranges::none_of(row->widgets, isOver)) continue;
    return row->back->showMenu(event->globalPos());
  }
  event->ignore();
}

void Page::refreshNotes() {
  for (const Note& note : notes_) {
    const FieldNote found = problem_(note.binding->description());
    if (note.label->words() == found.words && note.label->kind() == found.kind) continue;
    note.label->setNote(found.words, found.kind);
    describe(*note.binding, pane_.differsFromStored(note.binding->control()));
  }
}

}  // namespace norvik::desktop
