// The layout of a page, from the top down. Sizes follow from the font.
#include "src/frontends/prefpane/page_view.h"

#include <algorithm>

#import "src/frontends/prefpane/appkit.h"
#import "src/frontends/prefpane/plain_views.h"
#import "src/frontends/prefpane/preview_view.h"
#import "src/frontends/prefpane/status_icon.h"
#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/address_text.h"
#include "src/frontends/shared/interface/captions.h"
#include "src/frontends/shared/interface/server_state.h"
#include "src/frontends/shared/interface/value_words.h"
#include "src/frontends/shared/preview/preview_texts.h"

namespace norvik::prefpane {

namespace {

constexpr CGFloat kMarkWidth = 14;
constexpr CGFloat kGap = 8;
constexpr CGFloat kBeforeSection = 12;
constexpr CGFloat kBetweenRows = 7;
constexpr CGFloat kIndent = 20;   // of a control that applies only while a box is on
constexpr int kAddressLines = 5;  // a sentence of two lines, a blank one, and a long address
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

NSTextField* quiet(NSTextField* words) {
  [words setTextColor:[NSColor disabledControlTextColor]];
  return words;
}

// The width of the number beside a slider, and of a slider with room for the names of its ends under it.
CGFloat valueWidth() {
  return NSWidth([makeCaption(@"00000") frame]);
}
CGFloat sliderWidth(const ControlDescription& slider) {
  constexpr CGFloat kUsual = 200;
  const CGFloat ends = NSWidth([makeCaption(text(slider.minimumLabel)) frame]) +
                       NSWidth([makeCaption(text(slider.maximumLabel)) frame]);
  return std::max(kUsual, ends + kGap);
}

// A title that is too wide, on several lines.
void breakTitle(NSButton* box, CGFloat width) {
  if (NSWidth([box frame]) <= width) return;
  NSDictionary* look = [NSDictionary dictionaryWithObject:[box font] forKey:NSFontAttributeName];
  const CGFloat mark = NSWidth([box frame]) - [[box title] sizeWithAttributes:look].width;
  [box setTitle:[linesOf([box title], [box font], width - mark) componentsJoinedByString:@"\n"]];
  [box sizeToFit];
}

NSView* asView(const Handle& handle) {
  return static_cast<NSView*>(handle.get());
}

void show(NSTextField* view, NSString* words) {
  if (![[view stringValue] isEqualToString:words]) [view setStringValue:words];
}

// The number; there is no room for its words, which are its tool tip.
void showValue(const ControlDescription& slider, const Control& control, NSTextField* value) {
  show(value, text(std::to_string(control.truncatedValue())));
  NSString* words = text(spokenValue(slider, control.truncatedValue()));
  if (![[value toolTip] isEqualToString:words]) [value setToolTip:words];
}

void hide(NSView* view, BOOL hidden) {
  if ([view isHidden] != hidden) [view setHidden:hidden];
}

}  // namespace

PageView::PageView(NVKServerPrefs& pane, const InterfaceDescription& interface, const TabDescription& tab,
                   PortInUse portInUse, double width)
    : pane_(pane),
      interface_(interface),
      tab_(tab),
      portInUse_(std::move(portInUse)),
      width_(width),
      view_([[[NVKFlippedView alloc] initWithFrame:NSMakeRect(0, 0, width, 0)] autorelease]),
      captionWidth_(widestCaption(tab, pane)),
      y_(kGap) {
  for (const SectionDescription& section : tab.sections) addSection(section);
  NSArray* views = [asView(view_) subviews];
  for (NSUInteger i = 0; i < [views count]; ++i)
    width_ = std::max(width_, double(NSMaxX([[views objectAtIndex:i] frame])));
  [asView(view_) setFrameSize:NSMakeSize(width_, y_ + kGap)];
  [asView(view_) setAutoresizingMask:NSViewWidthSizable];
  for (const auto& binding : bindings_) controlChanged(*binding);
}

// A view may live longer; it asks nobody then.
PageView::~PageView() {
  for (const auto& [binding, parts] : parts_) [static_cast<NSButton*>(parts.copy.get()) setTarget:nil];
}

void PageView::addSection(const SectionDescription& section) {
  std::vector<NSTextField*> head;
  if (!section.title.empty()) {
    NSTextField* title = makeCaption(text(section.title));
    [title setFont:[NSFont boldSystemFontOfSize:0]];
    [title sizeToFit];
    head.push_back(title);
  }
  if (!section.note.empty()) head.push_back(quiet(makeParagraph(text(section.note), width_ - kMarkWidth)));
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
  NSTextField* caption = nil;
  if (const std::string& words = captionOf(row); !words.empty()) {
    caption = makeCaption(text(words));
    placeBeside(caption, x + captionWidth_ - NSWidth([caption frame]));
    x += captionWidth_ + kGap;
  }
  const ControlDescription& leading = row.controls.front();
  if (leading.kind == ControlKind::slider && x + sliderWidth(leading) + kGap + valueWidth() > width_) {
    [caption setFrameOrigin:NSMakePoint(kMarkWidth, y_)];  // above the slider, as there is no room beside it
    finishLine();
    x = kMarkWidth + kIndent;
  }
  const double begin = x;
  for (const ControlDescription& control : row.controls) {
    if (isShown(control, pane_)) x = addControl(row, control, x, begin, mark) + kGap;
  }
  if (caption != nil) parts_[mark.bindings.front()].words.emplace_back(caption);
  finishLine();
  for (Binding* binding : mark.bindings) addBelow(*binding, begin);
  y_ += kBetweenRows;
  marks_.push_back(std::move(mark));
}

// Centres what is on the line in its height, and goes on to the next one.
void PageView::finishLine() {
  for (const Handle& placed : placed_) {
    NSView* view = asView(placed);
    const CGFloat below = std::floor((rowHeight_ - NSHeight([view frame])) / 2);
    [view setFrameOrigin:NSMakePoint(NSMinX([view frame]), y_ + below)];
  }
  y_ += rowHeight_;
  placed_.clear();
  rowHeight_ = lineHeight();
}

// Returns where the control, with what belongs beside it, ends. It begins a line of its own, under the one
// before, where that line has no more room.
double PageView::addControl(const RowDescription& row, const ControlDescription& description, double x,
                            double begin, Mark& mark) {
  const bool isFirst = mark.bindings.empty();
  if (!description.requiresOutlet.empty() && isFirst) x += kIndent;
  bindings_.push_back(std::make_unique<Binding>(pane_, *pane_.outlet(description.outlet), description));
  Binding& binding = *bindings_.back();
  mark.bindings.push_back(&binding);
  Parts& parts = parts_[&binding];
  const Binding* shown = &binding;
  binding.changed = [=, this] { controlChanged(*shown); };
  NSView* view = static_cast<NSView*>(binding.view());
  if (description.kind == ControlKind::checkBox || description.kind == ControlKind::radioButton)
    breakTitle((NSButton*)view, width_ - begin - (isFirst ? x - begin : 0));
  if (description.kind == ControlKind::slider)
    [view setFrameSize:NSMakeSize(sliderWidth(description), NSHeight([view frame]))];
  if (description.kind != ControlKind::label && !description.displayOnly) keyViews_.emplace_back(view);
  NSTextField* caption = isCaptionedWithin(row, description) ? makeCaption(text(description.label)) : nil;
  const double before = caption != nil ? NSWidth([caption frame]) + kGap : 0;
  if (!isFirst && x + before + NSWidth([view frame]) > width_) {
    finishLine();
    y_ += kBetweenRows;
    x = begin + kIndent;
  }
  if (caption != nil) {
    placeBeside(caption, x);
    parts.words.emplace_back(caption);
    x += before;
  }
  if (description.kind == ControlKind::label) {
    if (description.indicator) x = addDot(x);
    sizeLabel(binding, x);
  }
  placeBeside(view, description.kind == ControlKind::pushButton && isFirst ? x - kRoundedInset : x);
  return addBeside(binding, NSMaxX([view frame]) + kGap);
}

// As high as its longest text needs; where that is an address, the page is made for it and fitted to what is
// shown.
void PageView::sizeLabel(const Binding& binding, double x) {
  const ControlDescription& description = binding.description();
  const int lines = description.indicator           ? 1
                    : description.copyTitle.empty() ? kDescriptionLines
                                                    : kAddressLines;
  NSView* view = static_cast<NSView*>(binding.view());
  [view setFrameSize:NSMakeSize(width_ - x, lines * lineHeight())];
  [view setAutoresizingMask:NSViewWidthSizable];
}

// The number that a slider is at, right beside it.
double PageView::addBeside(Binding& binding, double x) {
  if (binding.description().kind != ControlKind::slider) return x - kGap;
  NSTextField* value = makeCaption(@"");
  [value setFrameSize:NSMakeSize(valueWidth(), lineHeight())];
  placeBeside(value, x);
  Parts& parts = parts_[&binding];
  parts.value = Handle(value);
  parts.words.emplace_back(value);
  return NSMaxX([value frame]);
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
  Parts& parts = parts_[&binding];
  if (description.kind == ControlKind::slider) {
    NSTextField* least = makeCaption(text(description.minimumLabel));
    NSTextField* most = makeCaption(text(description.maximumLabel));
    add(least, x);
    add(most, NSMaxX(bar) - NSWidth([most frame]));
    for (NSTextField* words : {least, most}) parts.words.emplace_back(words);
  } else if (hasNote(description)) {
    NSTextField* note = makeParagraph(@"", width_ - x - kIndent);
    [note setFrameSize:NSMakeSize(NSWidth([note frame]), kNoteLines * lineHeight())];
    const CGFloat side = std::floor(lineHeight());
    NVKStatusIcon* icon = [[[NVKStatusIcon alloc] initWithFrame:NSMakeRect(0, 0, side, side)] autorelease];
    add(icon, x);
    add(note, x + kIndent);
    notes_.push_back({Handle(note), Handle(icon), &binding});
  } else if (!description.copyTitle.empty()) {
    NSButton* copy = makeCopyButton(text(description.copyTitle), static_cast<NSTextField*>(binding.view()));
    add(copy, NSMinX(bar) - kRoundedInset);
    parts.copy = Handle(copy);
    keyViews_.emplace_back(copy);
    addressEnd_ = y_ + height;
  }
  y_ += height;
}

void PageView::addPreviewWithin(double height) {
  constexpr double kLeast = 90;
  const double room = std::min<double>(height - y_ - kGap, kSampleHeight);
  if (!tab_.preview || room < kLeast) return;
  NVKPreviewView* view = makePreview(std::floor(room));
  [view setFrameOrigin:NSMakePoint(kMarkWidth, y_)];
  [asView(view_) setFrameSize:NSMakeSize(NSWidth([asView(view_) frame]), y_ + room + kGap)];
  [asView(view_) addSubview:view];
  preview_ = Handle(view);
  previewed_ = previewSettings(pane_, *tab_.preview);
  showPreview(view, previewed_, previewName(pane_, interface_, *tab_.preview));
}

void PageView::refreshPreview() {
  if (preview_.get() == nullptr) return;
  const SampleSettings now = previewSettings(pane_, *tab_.preview);
  if (now == previewed_) return;
  previewed_ = now;
  showPreview(static_cast<NVKPreviewView*>(preview_.get()), now,
              previewName(pane_, interface_, *tab_.preview));
}

void PageView::controlChanged(const Binding& binding) {
  refreshPreview();
  const Control& control = binding.control();
  const Parts& parts = parts_[&binding];
  NSColor* color = control.isEnabled() ? [NSColor controlTextColor] : [NSColor disabledControlTextColor];
  for (const Handle& words : parts.words) [static_cast<NSTextField*>(words.get()) setTextColor:color];
  if (parts.value.get() != nullptr)
    showValue(binding.description(), control, static_cast<NSTextField*>(parts.value.get()));
  if (parts.copy.get() != nullptr) fitAddress(binding, parts);
}

// What follows the address moves up as far as its sentence, and the button for it, leave room.
void PageView::fitAddress(const Binding& binding, const Parts& parts) {
  NSTextField* label = static_cast<NSTextField*>(binding.view());
  NSView* copy = asView(parts.copy);
  hide(copy, !addressIn(binding.control().stringValue()));
  const NSRect frame = [label frame];
  const auto lines = static_cast<CGFloat>([linesOf([label stringValue], [label font], NSWidth(frame)) count]);
  [label setFrameSize:NSMakeSize(NSWidth(frame), lines * lineHeight())];
  double end = NSMaxY([label frame]);
  if (![copy isHidden]) {
    [copy setFrameOrigin:NSMakePoint(NSMinX([copy frame]), end)];
    end = NSMaxY([copy frame]);
  }
  const double moved = end - addressEnd_;
  if (moved == 0) return;
  NSArray* views = [asView(view_) subviews];
  for (NSUInteger i = 0; i < [views count]; ++i) {
    NSView* one = [views objectAtIndex:i];
    if (one == label || one == copy || NSMinY([one frame]) < addressEnd_) continue;
    [one setFrameOrigin:NSMakePoint(NSMinX([one frame]), NSMinY([one frame]) + moved)];
  }
  addressEnd_ = end;
  [asView(view_) setNeedsDisplay:YES];
}

void PageView::refreshMarks() {
  refreshDot();
  for (const Mark& mark : marks_) {
    const bool differs =
        std::any_of(mark.bindings.begin(), mark.bindings.end(),
                    [this](const Binding* binding) { return pane_.differsFromStored(binding->control()); });
    hide(asView(mark.view), !differs);
  }
}

void PageView::refreshDot() {
  if (dot_.get() == nullptr) return;
  [static_cast<NVKDot*>(dot_.get()) setColor:toolkitColor(stateColor(pane_))];
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
