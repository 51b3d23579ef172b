// The layout of a page, from the top down. Sizes follow from the font.
#include "src/frontends/prefpane/page_view.h"

#include <algorithm>

#import "src/frontends/prefpane/appkit.h"
#import "src/frontends/prefpane/plain_views.h"
#import "src/frontends/prefpane/status_icon.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/address_text.h"
#include "src/frontends/shared/interface/captions.h"
#include "src/frontends/shared/interface/server_state.h"

namespace norvik::prefpane {

namespace {

constexpr CGFloat kPageWidth = 372;  // the narrowest host leaves no more beside the sidebar
constexpr CGFloat kMarkWidth = 14;
constexpr CGFloat kGap = 8;
constexpr CGFloat kBeforeSection = 12;
constexpr CGFloat kBetweenRows = 7;
constexpr CGFloat kIndent = 20;  // of a control that applies only while a box is on
constexpr CGFloat kStateWidth = 120;
constexpr CGFloat kValueWidth = 28;  // of the number beside a slider
constexpr int kAddressLines = 5;     // a sentence of two lines, a blank one, and a long address
constexpr int kDescriptionLines = 2;
constexpr int kNoteLines = 2;

bool isShown(const ControlDescription& control, NVKServerPrefs& pane) {
  return !control.hidden && !pane.outlet(control.outlet)->isHidden();
}

bool isShown(const RowDescription& row, NVKServerPrefs& pane) {
  const auto shown = [&pane](const ControlDescription& control) { return isShown(control, pane); };
  return std::any_of(row.controls.begin(), row.controls.end(), shown);
}

CGFloat widestCaption(const TabDescription& tab, NVKServerPrefs& pane) {
  CGFloat widest = 0;
  for (const SectionDescription& section : tab.sections) {
    for (const RowDescription& row : section.rows) {
      if (captionOf(row).empty() || !isShown(row, pane)) continue;
      widest = std::max(widest, NSWidth([makeCaption(text(captionOf(row))) frame]));
    }
  }
  return widest;
}

CGFloat lineHeight() {
  return NSHeight([makeCaption(@"Ag") frame]);
}

NSTextField* quiet(NSTextField* words) {
  [words setTextColor:[NSColor disabledControlTextColor]];
  return words;
}

NSView* asView(const Handle& handle) {
  return static_cast<NSView*>(handle.get());
}

void show(NSTextField* view, NSString* words) {
  if (![[view stringValue] isEqualToString:words]) [view setStringValue:words];
}

void hide(NSView* view, BOOL hidden) {
  if ([view isHidden] != hidden) [view setHidden:hidden];
}

}  // namespace

PageView::PageView(NVKServerPrefs& pane, const InterfaceDescription& interface, const TabDescription& tab,
                   PortInUse portInUse)
    : pane_(pane),
      interface_(interface),
      portInUse_(std::move(portInUse)),
      view_([[[NVKFlippedView alloc] initWithFrame:NSZeroRect] autorelease]),
      captionWidth_(widestCaption(tab, pane)),
      y_(kGap) {
  for (const SectionDescription& section : tab.sections) addSection(section);
  [asView(view_) setFrameSize:NSMakeSize(kPageWidth, y_ + kGap)];
}

void PageView::addSection(const SectionDescription& section) {
  std::vector<NSTextField*> head;
  if (!section.title.empty()) {
    NSTextField* title = makeCaption(text(section.title));
    [title setFont:[NSFont boldSystemFontOfSize:0]];
    [title sizeToFit];
    head.push_back(title);
  }
  if (!section.note.empty())
    head.push_back(quiet(makeParagraph(text(section.note), kPageWidth - kMarkWidth)));
  if (!head.empty() && !bindings_.empty()) y_ += kBeforeSection;
  for (NSTextField* words : head) {
    [words setFrameOrigin:NSMakePoint(kMarkWidth, y_)];
    [asView(view_) addSubview:words];
    y_ += NSHeight([words frame]) + 2;
  }
  if (!head.empty()) y_ += kBetweenRows;
  for (const RowDescription& row : section.rows) {
    if (isShown(row, pane_)) addRow(row);
  }
}

void PageView::placeBeside(void* view, double x) {
  NSView* placed = static_cast<NSView*>(view);
  [placed setFrameOrigin:NSMakePoint(x, y_)];
  [asView(view_) addSubview:placed];
  placed_.emplace_back(view);
  rowHeight_ = std::max(rowHeight_, NSHeight([placed frame]));
}

void PageView::addRow(const RowDescription& row) {
  rowHeight_ = lineHeight();
  placed_.clear();
  NSTextField* dot = makeCaption(@"\u2022");
  [dot setToolTip:text(interface_.changedHelp)];
  [dot setHidden:YES];
  placeBeside(dot, 0);
  Mark mark{Handle(dot), {}};
  double x = kMarkWidth;
  if (const std::string& words = captionOf(row); !words.empty()) {
    NSTextField* caption = makeCaption(text(words));
    placeBeside(caption, x + captionWidth_ - NSWidth([caption frame]));
    x += captionWidth_ + kGap;
  }
  const double begin = x;
  for (const ControlDescription& control : row.controls) {
    if (isShown(control, pane_)) x = addControl(row, control, x, mark) + kGap;
  }
  for (const Handle& placed : placed_) {
    NSView* view = asView(placed);
    const CGFloat below = std::floor((rowHeight_ - NSHeight([view frame])) / 2);
    [view setFrameOrigin:NSMakePoint(NSMinX([view frame]), y_ + below)];
  }
  y_ += rowHeight_;
  for (Binding* binding : mark.bindings) addBelow(*binding, begin);
  y_ += kBetweenRows;
  marks_.push_back(std::move(mark));
}

// Returns where the control, with what belongs beside it, ends.
double PageView::addControl(const RowDescription& row, const ControlDescription& description, double x,
                            Mark& mark) {
  if (!description.requiresOutlet.empty() && mark.bindings.empty()) x += kIndent;
  bindings_.push_back(std::make_unique<Binding>(pane_, *pane_.outlet(description.outlet), description));
  Binding& binding = *bindings_.back();
  mark.bindings.push_back(&binding);
  if (isCaptionedWithin(row, description)) {
    NSTextField* caption = makeCaption(text(description.label));
    placeBeside(caption, x);
    x = NSMaxX([caption frame]) + kGap;
  }
  NSView* view = static_cast<NSView*>(binding.view());
  if (description.kind == ControlKind::label) {
    if (description.indicator) x = addDot(x);
    const int lines = description.indicator           ? 1
                      : description.copyTitle.empty() ? kDescriptionLines
                                                      : kAddressLines;
    const CGFloat width = description.indicator ? kStateWidth : kPageWidth - x;
    [view setFrameSize:NSMakeSize(width, lines * lineHeight())];
  }
  placeBeside(view, x);
  return addBeside(binding, NSMaxX([view frame]) + kGap);
}

// The number that a slider is at, right beside it.
double PageView::addBeside(Binding& binding, double x) {
  if (binding.description().kind != ControlKind::slider) return x - kGap;
  NSTextField* value = makeCaption(@"");
  [value setFrameSize:NSMakeSize(kValueWidth, lineHeight())];
  placeBeside(value, x);
  const Control* model = &binding.control();
  binding.changed = [=] { show(value, text(std::to_string(model->truncatedValue()))); };
  binding.changed();
  return x + kValueWidth;
}

double PageView::addDot(double x) {
  const CGFloat side = std::floor(lineHeight() * 2 / 3);
  NVKDot* dot = [[[NVKDot alloc] initWithFrame:NSMakeRect(0, 0, side, side)] autorelease];
  placeBeside(dot, x);
  dot_ = Handle(dot);
  return x + side + kGap;
}

// What a control has under it: the names of a slider's ends, what is wrong with a port, a button that copies
// an address.
void PageView::addBelow(Binding& binding, double x) {
  const ControlDescription& description = binding.description();
  const NSRect bar = [static_cast<NSView*>(binding.view()) frame];
  CGFloat height = 0;
  const auto add = [&](NSView* view, CGFloat left) {
    [view setFrameOrigin:NSMakePoint(left, y_)];
    [asView(view_) addSubview:view];
    height = std::max(height, NSHeight([view frame]));
  };
  if (description.kind == ControlKind::slider) {
    add(quiet(makeCaption(text(description.minimumLabel))), x);
    NSTextField* most = quiet(makeCaption(text(description.maximumLabel)));
    add(most, NSMaxX(bar) - NSWidth([most frame]));
  } else if (hasNote(description)) {
    NSTextField* note = makeParagraph(@"", kPageWidth - x - kIndent);
    [note setFrameSize:NSMakeSize(NSWidth([note frame]), kNoteLines * lineHeight())];
    const CGFloat side = std::floor(lineHeight());
    NVKStatusIcon* icon = [[[NVKStatusIcon alloc] initWithFrame:NSMakeRect(0, 0, side, side)] autorelease];
    add(icon, x);
    add(note, x + kIndent);
    notes_.push_back({Handle(note), Handle(icon), &binding});
  } else if (!description.copyTitle.empty()) {
    NSButton* copy = makeCopyButton(text(description.copyTitle), static_cast<NSTextField*>(binding.view()));
    add(copy, NSMinX(bar));
    const Control* model = &binding.control();
    binding.changed = [=] { hide(copy, !addressIn(model->stringValue())); };
    binding.changed();
  }
  y_ += height;
}

void PageView::refreshMarks() {
  if (dot_.get() != nullptr) refreshDot();
  for (const Mark& mark : marks_) {
    const bool differs =
        std::any_of(mark.bindings.begin(), mark.bindings.end(),
                    [this](const Binding* binding) { return pane_.differsFromStored(binding->control()); });
    hide(asView(mark.view), !differs);
  }
}

void PageView::refreshDot() {
  const Color color = stateColor(pane_);
  [static_cast<NVKDot*>(dot_.get()) setColor:[NSColor colorWithCalibratedRed:color.red
                                                                       green:color.green
                                                                        blue:color.blue
                                                                       alpha:color.alpha]];
}

// A value that Apply would refuse and one that may not work yet differ in icon and colour.
void PageView::refreshNotes() {
  for (const Note& note : notes_) {
    const Control& field = note.field->control();
    const auto finding = field.isEnabled() ? checkPort(pane_, interface_, field, portInUse_) : std::nullopt;
    const MessageKind kind = finding && !finding->blocks ? MessageKind::warning : MessageKind::failure;
    auto* words = static_cast<NSTextField*>(note.words.get());
    show(words, finding ? text(finding->sentence) : @"");
    [words setTextColor:statusColor(kind)];
    [static_cast<NVKStatusIcon*>(note.icon.get()) setKind:kind];
    hide(asView(note.icon), !finding);
  }
}

const Binding* PageView::find(const std::string& outlet) const {
  const auto found = std::find_if(bindings_.begin(), bindings_.end(), [&outlet](const auto& binding) {
    return binding->control().name() == outlet;
  });
  return found != bindings_.end() ? found->get() : nullptr;
}

}  // namespace norvik::prefpane
