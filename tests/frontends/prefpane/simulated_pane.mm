// The simulated world, and the gestures.
#import "tests/frontends/prefpane/simulated_pane.h"

#include <algorithm>
#include <cstdlib>

#include "src/adapters/property_lists/codec.h"
#include "src/frontends/prefpane/input.h"
#include "src/frontends/prefpane/text.h"

#import "tests/frontends/prefpane/pane_under_test.h"

namespace norvik::prefpane {

namespace {

constexpr const char* kServerFile = "/etc/norvik/svr.cfg";

std::string serverFile(int64_t port, bool sound) {
  const PropertyList::Dictionary nvk{
      {"PortNumber", port}, {"Disabled", false}, {"SoundOutputEnabled", sound}};
  const PropertyList::Dictionary rdp{
      {"PortNumber", int64_t{3390}}, {"Disabled", false}, {"SoundOutputEnabled", false}};
  return encodeXmlPropertyList(PropertyList::Dictionary{
      {"SingleUser", true}, {"ActionOnConnect", int64_t{0}}, {"NVKService", nvk}, {"RDPService", rdp}});
}

}  // namespace

SimulatedPane::SimulatedPane()
    : platform_{application,
                panels,
                computer.workspace,
                computer.notifications,
                drawing,
                runLoop,
                computer.authorization,
                computer.files,
                computer.propertyLists,
                computer.processManager,
                processes,
                computer.host,
                computer.systemVersion,
                computer.bundles,
                computer.log,
                computer.assertions} {
  computer.fileSystem.addDirectory("/etc/norvik");
  saveElsewhere(4074, false);
  computer.tools.setKernelValue("kern.maxfiles", "12288");
  computer.tools.setKernelValue("kern.maxfilesperproc", "10240");
  computer.authorization.setSilentGranted(false);
  computer.effects.setSink([this](EffectKind kind, const std::string& line) {
    if (kind == EffectKind::launch) launches.push_back(line);
    if (kind != EffectKind::authorization) return;
    // As on a real computer, a check that asks nobody finds open what a person opened, until it is given up.
    if (line.ends_with("InteractionAllowed -> granted")) computer.authorization.setSilentGranted(true);
    if (line.starts_with("authorization free")) computer.authorization.setSilentGranted(false);
  });
  recording_ = std::make_unique<RecordingPlatform>(platform_, panels, drawing, RecordingMode::real);
}

SimulatedPane::~SimulatedPane() {
  [window setContentView:[[NSView new] autorelease]];
  [window close];
  [window release];
  session.reset();
}

SessionComputer SimulatedPane::forSession() {
  const ComputerServices services = computer.services();
  return {platform_,
          *recording_,
          services,
          records,
          &computer.userState,
          panels,
          drawing,
          runLoop,
          [this](std::chrono::milliseconds limit) { return computer.services().tools.wait(limit); },
          [this](std::chrono::milliseconds time) {
            computer.clock.sleep(static_cast<uint32_t>(time.count()) * 1000);
          },
          portInUse,
          {},
          background};
}

void SimulatedPane::open() {
  session = std::make_unique<PaneSession>(forSession(), interface);
  NSView* content = static_cast<NSView*>(session->view());
  session->mainViewDidLoad();
  window = [[NSWindow alloc] initWithContentRect:[content frame]
                                       styleMask:NSTitledWindowMask
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
  [window setReleasedWhenClosed:NO];
  [window setContentView:content];
  session->willSelect();
  [window makeKeyAndOrderFront:nil];
  session->didSelect();
}

void SimulatedPane::openEverything() {
  computer.service.setDaemon(77);
  open();
  press("ib_button_Auth");
  ASSERT_TRUE(pane().authorized());
}

NSView* SimulatedPane::view(const std::string& outlet) {
  session->mainView()->showSetting(outlet);
  return static_cast<NSView*>(session->mainView()->viewOf(outlet));
}

void SimulatedPane::press(const std::string& outlet) {
  [(NSButton*)view(outlet) performClick:nil];
}

void SimulatedPane::choosePage(const std::string& title) {
  const auto& rows = pane().ib_oview_confBar.rows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].view.text != title) continue;
    pane().ib_oview_confBar.clickRow(static_cast<int>(i));
    return;
  }
  ADD_FAILURE() << "no page " << title;
}

std::string SimulatedPane::shownPage() {
  const auto* node = pane().ib_oview_confBar.itemAtRow(pane().ib_oview_confBar.selectedRow());
  return node != nullptr ? node->texts.back() : "";
}

void SimulatedPane::type(const std::string& outlet, const std::string& words) {
  NSTextField* field = (NSTextField*)view(outlet);
  ASSERT_TRUE([field isEnabled]) << outlet;
  [window makeFirstResponder:field];
  NSText* editor = [window fieldEditor:YES forObject:field];
  [editor selectAll:nil];
  [editor insertText:text(words)];
}

NSButton* SimulatedPane::buttonWith(const std::string& words) {
  return (NSButton*)find([window contentView], [&](NSView* one) {
    return [one isKindOfClass:[NSButton class]] && ![one isHiddenOrHasHiddenAncestor] &&
           utf8([(NSButton*)one title]) == words;
  });
}

void SimulatedPane::pressButton(MessageAction action) {
  NSButton* button = buttonWith(std::string(titleOf(action)));
  ASSERT_NE(button, (NSButton*)nil) << titleOf(action);
  [button performClick:nil];
}

std::string SimulatedPane::read() {
  NSView* line = static_cast<NSView*>(messages().view());
  if ([line isHidden]) return "";
  NSView* field = find(line, [](NSView* one) { return [one isKindOfClass:[NSTextField class]]; });
  return utf8([(NSTextField*)field toolTip]);
}

void SimulatedPane::run(double seconds) {
  NSDate* end = [NSDate dateWithTimeIntervalSinceNow:seconds];
  do {
    NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                        untilDate:end
                                           inMode:NSDefaultRunLoopMode
                                          dequeue:YES];
    if (event != nil) [NSApp sendEvent:event];
  } while ([end timeIntervalSinceNow] > 0);
}

void SimulatedPane::saveElsewhere(int64_t port, bool sound) {
  computer.fileSystem.put(kServerFile, serverFile(port, sound));
}

void SimulatedPane::noticeFiles() {
  session->filesChanged();
  run(0.3);  // until the file has settled
}

std::string SimulatedPane::stored(const std::string& path) {
  return computer.fileSystem.find(path)->bytes;
}

bool SimulatedPane::launched(const std::string& words) const {
  return std::ranges::any_of(launches,
                             [&](const std::string& line) { return line.find(words) != std::string::npos; });
}

void SimulatedPane::picture(const std::string& name) {
  const char* folder = std::getenv("NORVIK_PICTURES");
  if (folder == nullptr) return;
  NSWindow* shown = [NSApp modalWindow] != nil ? [NSApp modalWindow] : window;
  [shown display];
  NSView* content = [shown contentView];
  [content lockFocus];
  NSBitmapImageRep* image = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[content bounds]] autorelease];
  [content unlockFocus];
  NSData* png = [image representationUsingType:NSPNGFileType properties:[NSDictionary dictionary]];
  NSString* file = [NSString stringWithFormat:@"%s/prefpane-%s.png", folder, name.c_str()];
  EXPECT_TRUE([png writeToFile:file atomically:YES]);
}

}  // namespace norvik::prefpane
