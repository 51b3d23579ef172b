// A table of the changes, what they do under it, and the buttons.
#include "src/frontends/prefpane/panels.h"

#include <algorithm>

#import "src/frontends/prefpane/changes_table.h"
#import "src/frontends/prefpane/modal_panel.h"
#import "src/frontends/prefpane/plain_views.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::prefpane {

namespace {

namespace texts = window_texts;

constexpr CGFloat kListWidth = 560;
constexpr CGFloat kListHeight = 170;
constexpr CGFloat kEffectsHeight = 150;
constexpr CGFloat kListGap = 8;

enum Answer { kClosed = ModalPanel::kEscaped, kApplied, kLed };

void addBlock(std::string& text, std::string_view heading, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  text += translated(heading) + "\n";
  for (const std::string& line : lines) text += "    " + line + "\n";
}

std::string effectsOf(const Preview& preview) {
  if (preview.changes.empty()) return translated(texts::kNoChanges);
  std::string words;
  if (preview.endsConnections) words += translated(texts::kEndsConnections) + "\n";
  if (preview.needsRestart) words += translated(texts::kNeedsRestart) + "\n";
  std::vector<std::string> reasons;  // there is no room for them in the table
  for (const SettingChange& change : preview.changes) {
    if (!change.because.empty()) reasons.push_back(sentence("{1}: {2}", {change.label, change.because}));
  }
  addBlock(words, texts::kReasonColumn, reasons);
  addBlock(words, texts::kFilesHeading, preview.files);
  std::vector<std::string> commands;
  for (const Launch& launch : preview.commands) commands.push_back(commandLine(launch));
  addBlock(words, texts::kCommandsHeading, commands);
  addBlock(words, texts::kToldHeading, preview.told);
  return words;
}

// The open panel.
class ChangesPanel {
 public:
  explicit ChangesPanel(const ChangesList& list);
  ChangesChoice run();

 private:
  static NSView* contentsOf(NSView* table, NSView* effects);
  void refresh();
  void enableButtons();
  void takeBackChosen();
  const SettingChange* chosen() const;

  const ChangesList& list_;
  Preview preview_;
  ChangesTable table_{kListWidth, kListHeight};
  NSScrollView* effects_ = makeTextBox(@"", NSMakeRect(0, 0, kListWidth, kEffectsHeight));
  ModalPanel panel_{texts::kChangesTitle, contentsOf(static_cast<NSView*>(table_.view()), effects_)};
  NSButton* goTo_ = nil;
  NSButton* takeBack_ = nil;
  NSButton* takeBackAll_ = nil;
  NSButton* apply_ = nil;
};

NSView* ChangesPanel::contentsOf(NSView* table, NSView* effects) {
  const NSRect whole = NSMakeRect(0, 0, kListWidth, kListHeight + kListGap + kEffectsHeight);
  NSView* contents = [[[NSView alloc] initWithFrame:whole] autorelease];
  [table setFrameOrigin:NSMakePoint(0, kEffectsHeight + kListGap)];
  [contents addSubview:table];
  [contents addSubview:effects];
  return contents;
}

ChangesPanel::ChangesPanel(const ChangesList& list) : list_(list) {
  apply_ = panel_.addAnswer(texts::kApply, kApplied);
  panel_.addAnswer(texts::kClose, kClosed);
  goTo_ = panel_.addCommand(texts::kGoToSetting, [this] { panel_.close(kLed); });
  takeBack_ = panel_.addCommand(texts::kTakeBack, [this] { takeBackChosen(); });
  takeBackAll_ = panel_.addCommand(texts::kTakeBackAll, [this] {
    list_.takeBackAll();
    refresh();
  });
  table_.chosenChanged = [this] { enableButtons(); };
  table_.opened = [this] {
    if (chosen() != nullptr) panel_.close(kLed);
  };
  refresh();
}

void ChangesPanel::refresh() {
  preview_ = list_.preview();
  table_.show(preview_.changes);
  setTextOfBox(effects_, text(effectsOf(preview_)));
  enableButtons();
}

void ChangesPanel::enableButtons() {
  for (NSButton* button : {goTo_, takeBack_}) [button setEnabled:chosen() != nullptr];
  for (NSButton* button : {takeBackAll_, apply_}) [button setEnabled:!preview_.changes.empty()];
}

const SettingChange* ChangesPanel::chosen() const {
  const int row = table_.chosen();
  return row >= 0 ? &preview_.changes[static_cast<std::size_t>(row)] : nullptr;
}

void ChangesPanel::takeBackChosen() {
  if (chosen() == nullptr) return;
  list_.takeBack(std::string(chosen()->name));
  refresh();
}

ChangesChoice ChangesPanel::run() {
  switch (panel_.run(static_cast<NSView*>(table_.table()))) {
    case kApplied:
      return {ChangesChoice::apply, ""};
    case kLed:
      return {ChangesChoice::goToSetting, chosen() != nullptr ? chosen()->outlet : ""};
    default:
      return {};
  }
}

}  // namespace

ChangesChoice showChanges(const ChangesList& list) {
  return ChangesPanel(list).run();
}

}  // namespace norvik::prefpane
