// A tab for each service: its sentence, the answers with icon and word, and the addresses beside the code.
#include "src/frontends/prefpane/panels.h"

#include <algorithm>

#import "src/frontends/prefpane/accessibility.h"
#import "src/frontends/prefpane/call.h"
#import "src/frontends/prefpane/modal_panel.h"
#import "src/frontends/prefpane/plain_views.h"
#import "src/frontends/prefpane/qr_view.h"
#import "src/frontends/prefpane/status_icon.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/reach/reach_texts.h"

namespace norvik::prefpane {

namespace {

constexpr CGFloat kLadderWidth = 560;
constexpr CGFloat kLadderHeight = 420;
constexpr CGFloat kLadderInset = 10;
constexpr CGFloat kLadderGap = 6;
constexpr CGFloat kCodeGap = 12;

// The contents of one tab, made from the top down.
class LadderPage {
 public:
  LadderPage(const ServiceReach& service, CGFloat width);
  NSView* view() const { return static_cast<NSView*>(view_.get()); }
  // What its buttons call; to be kept as long as they are.
  const std::vector<Handle>& targets() const { return targets_; }

 private:
  NSTextField* addWords(const std::string& words, CGFloat x, CGFloat y, CGFloat width, NSFont* font);
  void addAnswer(const RungResult& rung);
  void addAddresses(const ServiceReach& service);
  CGFloat addAddress(const OfferedAddress& offered, CGFloat y, CGFloat width);

  CGFloat width_, wordWidth_ = 0;
  CGFloat y_ = kLadderInset;
  Handle view_;
  std::vector<Handle> targets_;
};

NSFont* boldFont() {
  return [NSFont boldSystemFontOfSize:0];
}

LadderPage::LadderPage(const ServiceReach& service, CGFloat width)
    : width_(width), view_([[[NVKFlippedView alloc] initWithFrame:NSZeroRect] autorelease]) {
  for (const RungResult& rung : service.rungs) {
    NSTextField* word = makeCaption(text(wordOf(rung.verdict)));
    [word setFont:boldFont()];
    [word sizeToFit];
    wordWidth_ = std::max(wordWidth_, NSWidth([word frame]));
  }
  NSTextField* sentence =
      addWords(reachSentence(service), kLadderInset, y_, width_ - 2 * kLadderInset, boldFont());
  y_ = NSMaxY([sentence frame]) + kLadderGap;
  for (const RungResult& rung : service.rungs) addAnswer(rung);
  addAddresses(service);
  [view() setFrameSize:NSMakeSize(width_, y_ + kLadderInset)];
}

// Broken into lines of that width; can be selected to be copied.
NSTextField* LadderPage::addWords(const std::string& words, CGFloat x, CGFloat y, CGFloat width,
                                  NSFont* font) {
  NSTextField* made = makeCaption(@"");
  [made setFont:font];
  NSArray* lines = linesOf(text(words), font, width);
  [made setStringValue:[lines componentsJoinedByString:@"\n"]];
  [made setSelectable:YES];
  [made setFrame:NSMakeRect(x, y, width, lineHeight() * static_cast<CGFloat>([lines count]))];
  [view() addSubview:made];
  return made;
}

void LadderPage::addAnswer(const RungResult& rung) {
  NSColor* quiet = [NSColor disabledControlTextColor];
  NSFont* plain = [NSFont systemFontOfSize:0];
  const bool isLookedAt = rung.verdict != Verdict::notLookedAt;
  const CGFloat side = std::floor(lineHeight());
  CGFloat x = kLadderInset;
  if (isLookedAt) {
    NVKStatusIcon* icon = [[[NVKStatusIcon alloc] initWithFrame:NSMakeRect(x, y_, side, side)] autorelease];
    [icon setKind:kindOf(rung.verdict)];
    [view() addSubview:icon];
  }
  x += side + kLadderGap;
  const std::string verdict(wordOf(rung.verdict));
  NSTextField* word = addWords(verdict, x, y_, wordWidth_ + kLadderGap, boldFont());
  x = NSMaxX([word frame]) + kLadderGap;
  NSTextField* answer = addWords(answerOf(rung), x, y_, width_ - kLadderInset - x, plain);
  setAccessibility(answer, verdict + ": " + answerOf(rung), rung.advice, NSAccessibilityStaticTextRole);
  if (!isLookedAt) {
    for (NSTextField* words : {word, answer}) [words setTextColor:quiet];
  }
  y_ = NSMaxY([answer frame]);
  if (!rung.advice.empty()) {
    NSTextField* advice = addWords(rung.advice, x, y_, width_ - kLadderInset - x, plain);
    [advice setTextColor:quiet];
    y_ = NSMaxY([advice frame]);
  }
  y_ += kLadderGap;
}

// One line: the address, its network, and the button that copies it. Returns its height.
CGFloat LadderPage::addAddress(const OfferedAddress& offered, CGFloat y, CGFloat width) {
  const std::string copied = offered.text;
  const Function copy = [=] { copyToPasteboard(text(copied)); };
  NVKCall* target = [[[NVKCall alloc] initWithCopyOf:&copy] autorelease];
  targets_.emplace_back(target);
  NSButton* button = makeSmallButton(text(reach_texts::kCopy), target);
  const std::string help = std::string(reach_texts::kCopy) + " " + offered.text;
  [button setToolTip:text(help)];
  setAccessibility(button, help, "", NSAccessibilityButtonRole);
  const CGFloat height = std::max(lineHeight(), NSHeight([button frame]));
  const CGFloat right = kLadderInset + width - NSWidth([button frame]);
  const CGFloat middle = std::floor((height - lineHeight()) / 2);
  NSTextField* address = makeCaption(text(offered.text));
  [address setSelectable:YES];
  [address setFrameOrigin:NSMakePoint(kLadderInset, y + middle)];
  const CGFloat beside = NSMaxX([address frame]) + kLadderGap;
  NSTextField* network = makeCaption(@"");
  NSString* words = text(offered.address.network + ", " + offered.address.device);
  const CGFloat room = std::max<CGFloat>(0, right - kLadderGap - beside);
  [network setStringValue:fitted(words, [network font], room, 1)];
  [network setToolTip:words];
  [network setTextColor:[NSColor disabledControlTextColor]];
  [network setFrame:NSMakeRect(beside, y + middle, room, lineHeight())];
  [button setFrameOrigin:NSMakePoint(right, y)];
  for (NSView* one : {(NSView*)address, (NSView*)network, (NSView*)button}) [view() addSubview:one];
  return height;
}

// The addresses, and at their right the code of the best one.
void LadderPage::addAddresses(const ServiceReach& service) {
  if (std::ranges::none_of(service.addresses, &OfferedAddress::isUsable)) return;
  y_ += kLadderGap;
  NSView* code = service.reach == Reach::reachable ? makeQrView(service.address) : nil;
  CGFloat room = width_ - 2 * kLadderInset;
  if (code != nil) {
    [code setToolTip:text(reach_texts::kScan)];
    [code setFrameOrigin:NSMakePoint(width_ - kLadderInset - NSWidth([code frame]), y_)];
    [view() addSubview:code];
    room -= NSWidth([code frame]) + kCodeGap;
  }
  NSTextField* heading = addWords(std::string(reach_texts::kAddresses), kLadderInset, y_, room, boldFont());
  CGFloat y = NSMaxY([heading frame]) + kLadderGap;
  for (const OfferedAddress& offered : service.addresses) {
    if (offered.isUsable) y += addAddress(offered, y, room) + 2;
  }
  y_ = std::max(y, code != nil ? NSMaxY([code frame]) : y);
}

// The open panel.
class LadderPanel {
 public:
  explicit LadderPanel(ReachWatch& watch);
  ~LadderPanel();
  LadderPanel(const LadderPanel&) = delete;
  LadderPanel& operator=(const LadderPanel&) = delete;
  void run() { panel_.run(close_); }

 private:
  void follow();
  void showServices();
  void clear();

  ReachWatch& watch_;
  NSTabView* tabs_ = [[[NSTabView alloc]
      initWithFrame:NSMakeRect(0, 0, std::round(kLadderWidth* fontScale()), kLadderHeight)] autorelease];
  ModalPanel panel_{reach_texts::kTitle, tabs_};
  NSButton* close_ = nil;
  NSButton* again_ = nil;
  std::vector<LadderPage> pages_;
  std::function<void()> before_;  // what followed the watch until now, and will again
};

LadderPanel::LadderPanel(ReachWatch& watch) : watch_(watch), before_(watch.changed) {
  close_ = panel_.addAnswer(window_texts::kClose, ModalPanel::kEscaped);
  again_ = panel_.addCommand(reach_texts::kLookAgain, [this] { watch_.look(); });
  watch_.changed = [this] {
    if (before_) before_();
    follow();
  };
  showServices();
  watch_.look();
  follow();
}

LadderPanel::~LadderPanel() {
  watch_.changed = before_;
  clear();
}

void LadderPanel::follow() {
  const bool looking = watch_.isLooking();
  [again_ setTitle:text(looking ? reach_texts::kLooking : reach_texts::kLookAgain)];
  [again_ setEnabled:!looking];
  if (!looking) showServices();
}

// What its buttons call is gone with its page.
void LadderPanel::clear() {
  while ([tabs_ numberOfTabViewItems] > 0) [tabs_ removeTabViewItem:[tabs_ tabViewItemAtIndex:0]];
  pages_.clear();
}

// The service that a person has chosen stays chosen; at first the one that clients cannot reach.
void LadderPanel::showServices() {
  const std::vector<ServiceReach>& services = watch_.found();
  if (services.empty()) return;
  NSInteger chosen = [tabs_ indexOfTabViewItem:[tabs_ selectedTabViewItem]];
  const auto failed = std::ranges::find(services, Reach::notReachable, &ServiceReach::reach);
  if (pages_.empty()) chosen = failed != services.end() ? failed - services.begin() : 0;
  clear();
  const NSRect inside = [tabs_ contentRect];
  for (const ServiceReach& service : services) {
    NVKPageScroll* scroll = [[[NVKPageScroll alloc] initWithFrame:inside] autorelease];
    pages_.emplace_back(service, [scroll contentSize].width);
    [scroll setDocumentView:pages_.back().view()];
    NSTabViewItem* item = [[[NSTabViewItem alloc] initWithIdentifier:text(service.key)] autorelease];
    [item setLabel:text(service.title)];
    [item setView:scroll];
    [tabs_ addTabViewItem:item];
  }
  [tabs_ selectTabViewItemAtIndex:chosen];
  [tabs_ setNeedsDisplay:YES];
}

}  // namespace

void showLadder(ReachWatch& watch) {
  LadderPanel(watch).run();
}

}  // namespace norvik::prefpane
