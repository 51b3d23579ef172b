// What is around the pages, the window's keys, and closing it.
#include "src/frontends/desktop/settings_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "src/frontends/desktop/address_label.h"
#include "src/frontends/desktop/message_area.h"
#include "src/frontends/desktop/mnemonic_click.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/desktop/more_menu.h"
#include "src/frontends/desktop/page_area.h"
#include "src/frontends/desktop/reach_card.h"
#include "src/frontends/desktop/reach_line.h"
#include "src/frontends/desktop/search_panel.h"
#include "src/frontends/desktop/search_ring.h"
#include "src/frontends/desktop/sidebar.h"
#include "src/frontends/shared/interface/server_state.h"
#include "src/frontends/shared/interface/setting_description.h"
#include "src/frontends/shared/interface/window_messages.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/reach/reach_texts.h"
#include "src/frontends/shared/search/search_texts.h"

namespace norvik::desktop {

namespace {

constexpr int kTicksBetweenNotes = 12;  // three seconds

// The window's first size, in font sizes, and at most so much of the screen.
constexpr double kBodiesWide = 68;
constexpr double kBodiesHigh = 56;
constexpr double kMostOfScreen = 0.9;

}  // namespace

SettingsWindow::SettingsWindow(NVKServerPrefs& pane, const InterfaceDescription& interface,
                               Page::Problem problem)
    : pane_(pane), interface_(interface), problem_(std::move(problem)) {
  setWindowTitle(text(interface.title));
  resize(sizeHint().boundedTo(screen()->availableSize() * kMostOfScreen));
}

void SettingsWindow::fill() {
  sidebar_ = new Sidebar(pane_.ib_oview_confBar, pane_.ib_tview_confView, interface_, this);
  stack_ = new QStackedWidget(this);
  auto* column = new QVBoxLayout(this);
  auto* row = new QHBoxLayout;
  column->addLayout(row, 1);
  messages_ = new MessageArea(this);
  auto* right = new QVBoxLayout;
  right->addWidget(messages_);
  right->addWidget(stack_, 1);
  search_ = new SearchPanel(pane_, interface_, sidebar_, this);
  search_->chosen = [this](const SearchHit& hit) { showHit(hit); };
  row->addWidget(search_);
  row->addLayout(right, 1);
  stack_->setObjectName(text(pane_.ib_tview_confView.name()));
  stack_->setAccessibleName(text(interface_.find(pane_.ib_tview_confView.name())->label));
  addPages();
  frame_ = makeFrame();
  column->addWidget(frame_);
  assignMnemonics();
  orderTabs();
  addShortcuts();
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { revealFocus(now); });
  pane_.ib_tview_confView.setObserver(this);
  showPage();
  sidebar_->setFocus();
}

void SettingsWindow::addShortcuts() {
  const auto add = [this](QKeyCombination keys, auto act) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
  };
  add(Qt::CTRL | Qt::Key_Q, [this] { close(); });
  add(Qt::CTRL | Qt::Key_W, [this] { close(); });
  add(QKeyCombination(Qt::Key_F1), [this] { button(pane_.ib_button_Help)->click(); });
  add(Qt::CTRL | Qt::Key_F, [this] { search_->begin(); });
  add(QKeyCombination(Qt::Key_Slash), [this] { search_->begin(); });  // a field that is typed into keeps it
  add(Qt::SHIFT | Qt::Key_F10, [this] { showMenuAtFocus(); });
  add(Qt::CTRL | Qt::Key_Tab, [this] { sidebar_->choosePage(1); });
  add(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, [this] { sidebar_->choosePage(-1); });
}

SettingsWindow::~SettingsWindow() {
  disconnect(qApp, nullptr, this, nullptr);  // the focus moves once more while the pages are deleted
  pane_.ib_tview_confView.setObserver(nullptr);
}

void SettingsWindow::addPages() {
  for (const TabDescription& tab : interface_.tabs) {
    Page* page = pages_.emplace_back(new Page(pane_, interface_, tab, problem_));
    stack_->addWidget(new PageArea(page, text(pageName(tab).title)));
    page->changed = [this](const Binding& binding) { followTexts(binding); };
    for (const auto& b : page->bindings()) b->edited = [this, &binding = *b] { edited(binding); };
  }
  reachCard_ = new ReachCard(this);
  pages_[*pageOf(std::string(pane_.ib_admin_label_svrState.name()))]->addGroup(
      text(translated(reach_texts::kTitle)), {}, reachCard_);
}

Binding& SettingsWindow::bind(const ControlDescription& description, QWidget* parent) {
  bindings_.push_back(makeBinding(pane_, *pane_.outlet(description.outlet), description, parent));
  Binding& binding = *bindings_.back();
  binding.edited = [this, &binding] { edited(binding); };
  binding.changed = [this, &binding] { followTexts(binding); };
  return binding;
}

// The lock and its hint at the left, with the server's state under it; the buttons at the right on one line,
// in the order of the description.
QWidget* SettingsWindow::makeFrame() {
  auto* frame = new QWidget(this);
  auto* row = new QHBoxLayout(frame);
  row->setContentsMargins(0, 0, 0, 0);
  QAbstractButton* lock = nullptr;
  for (const ControlDescription& description : interface_.frame) {
    if (description.kind == ControlKind::outlineView || description.kind == ControlKind::tabView) continue;
    QWidget* widget = bind(description, frame).widget();
    if (description.outlet == pane_.ib_button_Apply.name()) row->addWidget(makeChangesButton(frame));
    if (description.kind == ControlKind::lockButton) lock = qobject_cast<QAbstractButton*>(widget);
    auto* hint = qobject_cast<QLabel*>(widget);
    if (hint == nullptr) {
      row->addWidget(widget);
      if (description.outlet == pane_.ib_button_Help.name()) row->addWidget(more_ = new MoreMenu(frame));
      continue;
    }
    row->addLayout(makeHintColumn(hint, frame), 1);
    row->addWidget(&reachLine_->button());
    // The lock has no words of its own: it gets the mnemonic of its hint.
    if (lock != nullptr) clickAtMnemonic(lock, hint);
  }
  button(pane_.ib_button_Apply)->setDefault(true);
  return frame;
}

QLayout* SettingsWindow::makeHintColumn(QLabel* hint, QWidget* frame) {
  auto* column = new QVBoxLayout;
  hint->setWordWrap(true);
  column->addWidget(hint);
  reachLine_ = new ReachLine(pane_, frame);
  column->addWidget(reachLine_);
  return column;
}

// Hidden while nothing is pending; it keeps its place, so that the buttons beside it do not move.
QPushButton* SettingsWindow::makeChangesButton(QWidget* frame) {
  changes_ = new QPushButton(frame);
  changes_->setObjectName(QStringLiteral("pendingChanges"));
  changes_->setAutoDefault(false);
  changes_->setToolTip(text(window_texts::kChangesHelp));
  changes_->setAccessibleDescription(text(window_texts::kChangesHelp));
  clickAtMnemonic(changes_);
  changes_->hide();
  return changes_;
}

void SettingsWindow::setCommand(const Control& button, std::function<void()> command) {
  binding(text(button.name()))->command = std::move(command);
}

void SettingsWindow::setOffered(const Control& control, bool isOffered) {
  binding(text(control.name()))->setOffered(isOffered);
}

void SettingsWindow::showPending(std::size_t all, const std::vector<std::size_t>& byPage) {
  const QString words = text(countedChanges(all));
  if (changes_->accessibleName() != words) {
    changes_->setText(words + QStringLiteral("…"));  // it opens a list
    changes_->setAccessibleName(words);
    assignMnemonics();
  }
  changes_->setVisible(all > 0);
  sidebar_->markPages(byPage);
}

std::optional<std::size_t> SettingsWindow::pageOf(const std::string& outlet) const {
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    const auto isIt = [&outlet](const auto& shown) { return shown->control().name() == outlet; };
    if (std::ranges::any_of(pages_[i]->bindings(), isIt)) return i;
  }
  return std::nullopt;
}

bool SettingsWindow::isRefused(const Control& field) const {
  return std::ranges::any_of(pages_, [&field](const Page* page) { return page->isRefused(field); });
}

AddressLabel& SettingsWindow::addressLabel(const Control& address) const {
  return *static_cast<AddressLabel*>(binding(text(address.name()))->widget());
}

bool SettingsWindow::showSetting(const std::string& outlet) {
  const auto page = pageOf(outlet);
  if (!page || !sidebar_->chooseTab(*page)) return false;
  QWidget* widget = binding(text(outlet))->widget();
  widget->setFocus(Qt::ShortcutFocusReason);
  revealFocus(widget);
  return true;
}

// A locked one is shown as soon as the lock is open, unless a person has searched for another meanwhile.
void SettingsWindow::showHit(const SearchHit& hit) {
  behindLock_.reset();
  if (isLocked(hit, pane_)) {
    behindLock_ = hit;
    messages_->line(MessageSubject::outcome).showMessage({MessageKind::note, lockedSentence(hit), {}, ""});
    binding(text(pane_.ib_button_Auth.name()))->widget()->setFocus(Qt::ShortcutFocusReason);
  } else if (!hit.outlet.empty()) {
    if (showSetting(hit.outlet))
      new SearchRing(binding(text(hit.outlet))->widget(), pages_[*pageOf(hit.outlet)]);
  } else {
    for (std::size_t i = 0; i < interface_.tabs.size(); ++i) {
      const PageName page = pageName(interface_.tabs[i]);
      if (page.group == hit.page.group && page.title == hit.page.title) sidebar_->chooseTab(i);
    }
    sidebar_->setFocus(Qt::ShortcutFocusReason);
  }
}

void SettingsWindow::showHitBehindLock() {
  if (!behindLock_ || isLocked(*behindLock_, pane_)) return;
  messages_->line(MessageSubject::outcome).clear();
  showHit(SearchHit(*behindLock_));
}

// An edit counts at once, and so do the addresses and the Apply button that follow from it: the pane gets its
// next tick now, so that Return right after a port was typed need not wait for the clock.
void SettingsWindow::edited(const Binding& binding) {
  if (!binding.command) messages_->edited();  // a command has just said what came of it
  pane_.onStateTimer();
  refresh();
}

// While the server starts or stops, what the pane does not disable itself is disabled too: the list of pages
// and the line below.
void SettingsWindow::followServer() {
  const bool open = !isServerChanging(pane_);
  if (frame_ == nullptr || frame_->isEnabledTo(this) == open) return;
  if (!open) focusBefore_ = focusWidget();
  for (QWidget* widget : {static_cast<QWidget*>(search_), frame_}) widget->setEnabled(open);
}

bool SettingsWindow::isTabStop(const QWidget& widget) const {
  return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() && widget.isVisible() &&
         widget.window() == this;
}

// After a start or stop the keyboard focus is restored; where its control is disabled now, the one before it
// takes the focus.
void SettingsWindow::restoreFocus() {
  if (focusBefore_ == nullptr || isServerChanging(pane_)) return;
  QWidget* widget = focusBefore_;
  do {
    if (isTabStop(*widget)) break;
    widget = widget->previousInFocusChain();
  } while (widget != focusBefore_);
  focusBefore_ = nullptr;
  widget->setFocus();
}

void SettingsWindow::followTexts(const Binding& changed) {
  followServer();
  if (&changed.control() == &pane_.ib_admin_label_svrState && serverTextChanged) serverTextChanged();
  const ControlKind kind = changed.description().kind;
  if (kind == ControlKind::pushButton || kind == ControlKind::label) assignMnemonics();
}

void SettingsWindow::assignMnemonics() {
  QSet<QChar> frame;
  addMnemonics(*frame_, frame);
  for (Page* page : pages_) {
    QSet<QChar> taken = frame;
    addMnemonics(*page, taken);
  }
}

// From the sidebar to the page and then to the buttons below; within a page in the order of its description.
void SettingsWindow::orderTabs() {
  setTabOrder(&search_->field(), &search_->results());
  setTabOrder(&search_->results(), sidebar_);
  QWidget* last = sidebar_;
  const auto append = [this, &last](QWidget& root) {
    for (QWidget* widget : root.findChildren<QWidget*>()) {
      const bool stop = (widget->focusPolicy() & Qt::TabFocus) != 0 || qobject_cast<QRadioButton*>(widget);
      if (!stop || widget->window() != this) continue;
      setTabOrder(last, widget);
      last = widget;
    }
  };
  append(*messages_);
  for (Page* page : pages_) append(*page);
  append(*frame_);
}

Binding* SettingsWindow::binding(const QString& outlet) const {
  const auto named = [&outlet](const std::unique_ptr<Binding>& b) {
    return text(b->control().name()) == outlet;
  };
  const auto here = std::ranges::find_if(bindings_, named);
  if (here != bindings_.end()) return here->get();
  for (const Page* page : pages_) {
    const auto there = std::ranges::find_if(page->bindings(), named);
    if (there != page->bindings().end()) return there->get();
  }
  return nullptr;
}

QPushButton* SettingsWindow::button(const Control& control) const {
  return static_cast<QPushButton*>(binding(text(control.name()))->widget());
}

void SettingsWindow::restorePage(int row) {
  sidebar_->restoreRow(row);
}

int SettingsWindow::pageToRestore() const {
  return sidebar_->rowToRestore();
}

void SettingsWindow::refresh() {
  followServer();
  restoreFocus();
  showHitBehindLock();
  sidebar_->returnToPage();
  for (Page* page : pages_) page->refreshMarks();
  for (Page* page : pages_) page->refreshNotes();
  ticksToNotes_ = kTicksBetweenNotes;
  if (refreshed) refreshed();
}

void SettingsWindow::ticked() {
  if (--ticksToNotes_ <= 0) return refresh();
  page().refreshMarks();
}

Page& SettingsWindow::page() const {
  return *pages_[static_cast<std::size_t>(stack_->currentIndex())];
}

// As the key for menus, which not every keyboard has.
void SettingsWindow::showMenuAtFocus() {
  QWidget* focus = focusWidget();
  if (focus == nullptr) return;
  const QPoint place = focus->rect().bottomLeft();
  QContextMenuEvent event(QContextMenuEvent::Keyboard, place, focus->mapToGlobal(place));
  QApplication::sendEvent(focus, &event);
}

void SettingsWindow::controlChanged(Control& /*control*/) {
  showPage();
}

void SettingsWindow::showPage() {
  const auto& items = pane_.ib_tview_confView.items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (&items[i] == pane_.ib_tview_confView.selectedItem()) stack_->setCurrentIndex(static_cast<int>(i));
  }
  refresh();
}

// Messages wrap, which the layout's own minimum does not count: where they need more height than there is,
// the window grows, as far as the screen allows.
void SettingsWindow::followMessages() {
  if (!isFilled()) return;
  const int needed = std::max(layout()->minimumHeightForWidth(width()), layout()->minimumSize().height());
  const int most = static_cast<int>(screen()->availableSize().height() * kMostOfScreen);
  if (minimumHeight() != std::min(needed, most)) setMinimumHeight(std::min(needed, most));
}

bool SettingsWindow::event(QEvent* event) {
  const bool isHandled = QWidget::event(event);
  if (event->type() == QEvent::LayoutRequest) followMessages();
  return isHandled;
}

void SettingsWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  followMessages();
}

// A control that gets the keyboard focus is scrolled into view.
void SettingsWindow::revealFocus(QWidget* widget) {
  auto* area = static_cast<PageArea*>(stack_->currentWidget());
  if (widget != nullptr && area != nullptr && area->widget()->isAncestorOf(widget))
    area->ensureWidgetVisible(widget);
}

// Computed without loading the font, which would take most of the time of a start.
QSize SettingsWindow::sizeHint() const {
  constexpr double kPointsPerInch = 72;
  const QFont used = font();
  const double body =
      used.pixelSize() > 0 ? used.pixelSize() : used.pointSizeF() * logicalDpiY() / kPointsPerInch;
  return QSizeF(body * kBodiesWide, body * kBodiesHigh).toSize();
}

void SettingsWindow::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  if (!painted) return;
  QTimer::singleShot(0, this, std::exchange(painted, nullptr));  // when this frame has reached the screen
}

// The push button or lock that has the focus; Apply from everywhere else.
QAbstractButton* SettingsWindow::buttonForReturn() const {
  auto* focused = qobject_cast<QAbstractButton*>(focusWidget());
  if (focused != nullptr && !focused->isCheckable()) return focused;
  return button(pane_.ib_button_Apply);
}

// Return presses a button; Escape closes.
void SettingsWindow::keyPressEvent(QKeyEvent* event) {
  const bool presses = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (presses && isFilled()) {
    if (!event->isAutoRepeat()) buttonForReturn()->click();
  } else if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void SettingsWindow::closeWithoutAsking() {
  mayLeave = nullptr;
  close();
}

// The front end asks about what is pending first, and there is a way back; only then the pane is left.
void SettingsWindow::closeEvent(QCloseEvent* event) {
  const bool busy = asking_ || leaving_;
  event->setAccepted(!busy);  // while a person is being asked, the window stays open
  if (busy || !isFilled()) return;
  asking_ = true;
  const bool stays = mayLeave && !mayLeave();
  asking_ = false;
  if (stays) return event->ignore();
  leaving_ = true;
  pane_.willUnselect();
  pane_.didUnselect();
  leaving_ = false;
  if (closed) closed();
}

}  // namespace norvik::desktop
