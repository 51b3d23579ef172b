// The table of kinds: how each view is made, how it shows the model, and what a person's edit writes into it.
#include "src/frontends/prefpane/binding.h"

#include <algorithm>
#include <cmath>

#import "src/frontends/prefpane/accessibility.h"
#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/border.h"
#include "src/frontends/prefpane/lock_button.h"
#import "src/frontends/prefpane/plain_views.h"
#import "src/frontends/prefpane/slider.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/language/pane_texts.h"

using norvik::prefpane::Binding;

// What a view sends its action to.
@interface NVKBindingTarget : NSObject {
  void* binding_;  // a Binding, borrowed; untyped, as not every compiler can describe a class of C++
}
- (id)initWithBinding:(void*)binding;
- (void)viewChanged:(id)sender;
- (void)controlTextDidChange:(NSNotification*)notification;
@end

@implementation NVKBindingTarget
- (id)initWithBinding:(void*)binding {
  if ((self = [super init]) != nil) binding_ = binding;
  return self;
}
- (void)viewChanged:(id)sender {
  auto* binding = static_cast<Binding*>(binding_);
  norvik::prefpane::atBorder("viewChanged:", [binding] { binding->viewChanged(); });
}
- (void)controlTextDidChange:(NSNotification*)notification {
  [self viewChanged:[notification object]];
}
@end

namespace norvik::prefpane {

// One kind of control.
struct BindingKind {
  ControlKind kind;
  NSView* (*make)(const ControlDescription& description);
  void (*show)(NSView* view, const Control& control);
  // Writes what the view holds into the model.
  void (*take)(NSView* view, Control& control);
  bool acts;              // an edit sends the control's action; otherwise the pane's next tick notices it
  NSString* const& role;  // for screen readers
};

namespace {

constexpr CGFloat kFieldCharacters = 8;
constexpr CGFloat kSliderWidth = 200;

NSButton* button(NSButtonType type, NSString* title) {
  NSButton* made = [[[NSButton alloc] initWithFrame:NSZeroRect] autorelease];
  [made setButtonType:type];
  [made setTitle:title];
  [made sizeToFit];
  return made;
}

NSView* makeCheckBox(const ControlDescription& description) {
  return button(NSSwitchButton, text(description.label));
}

NSView* makeRadioButton(const ControlDescription& description) {
  return button(NSRadioButton, text(description.label));
}

void showState(NSView* view, const Control& control) {
  NSButton* box = (NSButton*)view;
  [box setAllowsMixedState:control.state() == kMixedState];
  if ([box state] != control.state()) [box setState:control.state()];
}

// A click turns mixed into on, and never back.
void takeState(NSView* view, Control& control) {
  control.setState(control.isOn() ? kOffState : kOnState);
}

// A click on the one that is on leaves it on.
void takeChoice(NSView* view, Control& control) {
  control.setState(kOnState);
}

// The tick marks are only drawn: the knob stops at every whole number, and there may be more of those.
NSView* makeSlider(const ControlDescription& description) {
  NSSlider* slider = [[[NVKSlider alloc]
      initWithFrame:NSMakeRect(0, 0, kSliderWidth, std::max<CGFloat>(22, lineHeight()))] autorelease];
  [slider setMinValue:description.minimum.value_or(0)];
  [slider setMaxValue:description.maximum.value_or(0)];
  [slider setNumberOfTickMarks:description.tickMarks];
  [slider setAllowsTickMarkValuesOnly:NO];
  [slider setContinuous:YES];
  return slider;
}

// The model keeps a value outside the range; the knob is at the nearest end then.
void showValue(NSView* view, const Control& control) {
  NSSlider* slider = (NSSlider*)view;
  const double nearest = std::clamp(std::trunc(control.doubleValue()), [slider minValue], [slider maxValue]);
  if ([slider doubleValue] != nearest) [slider setDoubleValue:nearest];
}

void takeValue(NSView* view, Control& control) {
  control.setDoubleValue(std::round([(NSSlider*)view doubleValue]));
}

NSView* makePopUp(const ControlDescription& description) {
  NSPopUpButton* popUp = [[[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO] autorelease];
  for (const std::string& item : description.items) [popUp addItemWithTitle:translatedText(item)];
  [popUp sizeToFit];
  return popUp;
}

// An index that no item has shows none.
void showItem(NSView* view, const Control& control) {
  NSPopUpButton* popUp = (NSPopUpButton*)view;
  const int64_t index = control.indexOfSelectedItem();
  const NSInteger shown = index >= 0 && index < [popUp numberOfItems] ? static_cast<NSInteger>(index) : -1;
  if ([popUp indexOfSelectedItem] != shown) [popUp selectItemAtIndex:shown];
}

void takeItem(NSView* view, Control& control) {
  control.selectItemAtIndex([(NSPopUpButton*)view indexOfSelectedItem]);
}

NSTextField* field(BOOL editable) {
  NSTextField* made = [[[NSTextField alloc] initWithFrame:NSZeroRect] autorelease];
  [made setEditable:editable];
  [made setSelectable:YES];
  [made setBezeled:editable];
  [made setDrawsBackground:editable];
  return made;
}

NSView* makeTextField(const ControlDescription& description) {
  NSTextField* made = field(!description.displayOnly);
  [made setStringValue:@"0"];
  [made sizeToFit];
  const NSSize digit = [@"0" sizeWithAttributes:[NSDictionary dictionaryWithObject:[made font]
                                                                            forKey:NSFontAttributeName]];
  [made setFrameSize:NSMakeSize(kFieldCharacters * digit.width + digit.height, NSHeight([made frame]))];
  return made;
}

NSView* makeLabel(const ControlDescription& description) {
  NSTextField* made = field(NO);
  [[made cell] setWraps:YES];
  return made;
}

void showText(NSView* view, const Control& control) {
  NSTextField* shown = (NSTextField*)view;
  NSString* words = [shown isEditable] ? text(control.stringValue()) : text(paneText(control.stringValue()));
  if (![shownText(shown) isEqualToString:words]) [shown setStringValue:words];
}

void takeText(NSView* view, Control& control) {
  control.setStringValue(utf8(shownText((NSTextField*)view)));
}

NSView* makePushButton(const ControlDescription& description) {
  NSButton* made = button(NSMomentaryPushInButton, text(description.title));
  [made setBezelStyle:NSRoundedBezelStyle];
  // As wide as the widest title that the pane gives it.
  CGFloat widest = 0;
  for (const std::string& title : paneTitles(description.title)) {
    [made setTitle:text(title)];
    [made sizeToFit];
    widest = std::max(widest, NSWidth([made frame]));
  }
  [made setTitle:text(description.title)];
  [made setFrameSize:NSMakeSize(widest, NSHeight([made frame]))];
  return made;
}

void showTitle(NSView* view, const Control& control) {
  NSButton* shown = (NSButton*)view;
  NSString* title = text(paneText(control.title()));
  if (![[shown title] isEqualToString:title]) [shown setTitle:title];
}

NSView* makeLock(const ControlDescription& description) {
  return static_cast<NSView*>(makeLockButton());
}

void showLock(NSView* view, const Control& control) {
  showLockButton(view, control);
}

void takeNothing(NSView* view, Control& control) {}

constexpr bool kActs = true;

const BindingKind kKinds[] = {
    {ControlKind::checkBox, makeCheckBox, showState, takeState, kActs, NSAccessibilityCheckBoxRole},
    {ControlKind::radioButton, makeRadioButton, showState, takeChoice, kActs, NSAccessibilityRadioButtonRole},
    {ControlKind::slider, makeSlider, showValue, takeValue, kActs, NSAccessibilitySliderRole},
    {ControlKind::popUp, makePopUp, showItem, takeItem, kActs, NSAccessibilityPopUpButtonRole},
    {ControlKind::textField, makeTextField, showText, takeText, !kActs, NSAccessibilityTextFieldRole},
    {ControlKind::label, makeLabel, showText, takeNothing, !kActs, NSAccessibilityStaticTextRole},
    {ControlKind::pushButton, makePushButton, showTitle, takeNothing, kActs, NSAccessibilityButtonRole},
    {ControlKind::lockButton, makeLock, showLock, takeNothing, kActs, NSAccessibilityButtonRole},
};

const BindingKind& kindOf(const ControlDescription& description) {
  return *std::find_if(std::begin(kKinds), std::end(kKinds),
                       [&description](const BindingKind& row) { return row.kind == description.kind; });
}

}  // namespace

Binding::Binding(NVKServerPrefs& pane, Control& control, const ControlDescription& description)
    : pane_(pane),
      control_(control),
      description_(description),
      kind_(kindOf(description)),
      view_(kind_.make(description)),
      target_([[[NVKBindingTarget alloc] initWithBinding:this] autorelease]) {
  NSControl* view = static_cast<NSControl*>(view_.get());
  [view setTarget:static_cast<id>(target_.get())];
  [view setAction:@selector(viewChanged:)];
  if ([view isKindOfClass:[NSTextField class]])
    [(NSTextField*)view setDelegate:static_cast<id>(target_.get())];
  if (!description.help.empty()) [view setToolTip:text(description.help)];
  setAccessibility(view, description.label.empty() ? description.title : description.label, description.help,
                   kind_.role);
  control_.setObserver(this);
  showModel();
}

Binding::~Binding() {
  control_.setObserver(nullptr);
  NSControl* view = static_cast<NSControl*>(view_.get());
  [view setTarget:nil];
  if ([view isKindOfClass:[NSTextField class]]) [(NSTextField*)view setDelegate:nil];
}

void Binding::showModel() {
  NSControl* view = static_cast<NSControl*>(view_.get());
  const BOOL hidden = control_.isHidden() || control_.isRemoved() || control_.isTransparent();
  if ([view isHidden] != hidden) [view setHidden:hidden];
  const BOOL enabled = control_.isEnabled() && isOffered_;
  if ([view isEnabled] != enabled) [view setEnabled:enabled];
  kind_.show(view, control_);
}

void Binding::setOffered(bool isOffered) {
  if (isOffered_ == isOffered) return;
  isOffered_ = isOffered;
  showModel();
}

void Binding::controlChanged(Control& /*control*/) {
  showModel();
  if (changed) changed();
}

void Binding::viewChanged() {
  kind_.take(static_cast<NSView*>(view_.get()), control_);
  if (command) {
    command();
  } else if (kind_.acts) {
    pane_.buttonClicked(control_);
  }
  showModel();  // an action may have put the control back as it was, which notifies nobody
  if (edited) edited();
}

}  // namespace norvik::prefpane
