// The pane object's life: creation, start-up in its fixed order, being shown and hidden, the state timer,
// tear-down.
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

NVKServerPrefs* __main_pane = nullptr;
NVKServerPrefs* __gc_keeper = nullptr;

namespace {

constexpr double kTimerFirstFire = 0.0;  // long past, so that the first tick comes at the first chance
constexpr double kTimerInterval = 0.25;  // seconds

PictureRef loadPicture(const char* name) {
  Bundles& bundles = platform().bundles;
  auto bytes = bundles.resource(bundles.paneBundle(), name, "tiff");
  if (!bytes) return nullptr;
  return std::make_shared<const Picture>(Picture{name, std::move(*bytes)});
}

}  // namespace

// Owned by its pane; the notification reaches the pane through a weak reference to this.
struct NVKServerPrefs::Activation : ActivationObserver {
  explicit Activation(NVKServerPrefs& observed) : pane(observed) {}
  void applicationDidBecomeActive() override { pane.applicationDidBecomeActive(); }
  NVKServerPrefs& pane;
};

NVKServerPrefs::NVKServerPrefs(const InterfaceDescription& interface)
    : activation_(std::make_shared<Activation>(*this)) {
  __gc_keeper = this;
  connectOutlets(interface);
}

NVKServerPrefs::~NVKServerPrefs() {
  dealloc();
}

void NVKServerPrefs::awakeFromNib() {
  if (__main_pane != nullptr) return;
  __main_pane = this;
  m_needReboot = false;
  m_isSelected = true;
  ib_button_Auth.setButtonColor(platform().application.windowBackgroundColor());
  ib_admin_edbox_maxFSoft.setStringValue("");
  ib_admin_edbox_maxFHard.setStringValue("");
  m_authImage1 = loadPicture("authlock");
  m_authImage2 = loadPicture("authulock");
  loadMaxFiles();
  loadAdminConfig();
  loadUserConfig();
  loadNotificationSettings();
  authorize(false, false);
  ib_admin_popup_gldMode.setEnabled(false);
  ib_admin_popup_gldMode.setHidden(true);
  ib_admin_label_gldMode.setHidden(true);
  buildConfBar();
  ib_oview_confBar.setDelegate(this);
  loadConfBar();
  updateGui(true, false);
  startTimer();
  platform().application.observeDidBecomeActive(activation_);
}

void NVKServerPrefs::startTimer() {
  if (m_uiTimer != nullptr) return;
  RunLoop& loop = platform().runLoop;
  m_uiTimer = loop.CFRunLoopTimerCreate(kTimerFirstFire, kTimerInterval, stateTimerProc, {0, this});
  if (m_uiTimer != nullptr) loop.CFRunLoopAddTimer(m_uiTimer);
}

void stateTimerProc(CFRunLoopTimerRef /*timer*/, void* info) {
  if (info != nullptr) static_cast<NVKServerPrefs*>(info)->onStateTimer();
}

void NVKServerPrefs::onStateTimer() {
  if (m_trackState) updateGui(false, false);
}

void NVKServerPrefs::mainViewDidLoad() {}

void NVKServerPrefs::willSelect() {
  resizeFrame();
  if (__main_pane != nullptr && __main_pane != this) __main_pane->willSelect();
}

void NVKServerPrefs::didSelect() {
  if (__main_pane != nullptr && __main_pane != this) return __main_pane->didSelect();
  m_isSelected = true;
  if (__main_pane == nullptr) return;
  if (authorized()) authorize(false, true);
  updateGui(true, true);
}

void NVKServerPrefs::willUnselect() {}

void NVKServerPrefs::didUnselect() {
  if (__main_pane != nullptr && __main_pane != this) return __main_pane->didUnselect();
  m_isSelected = false;
  if (!adminConfigChanged() && !userConfigChanged()) return;
  const int answer = platform().alerts.NSRunAlertPanel("Norvik Server options changed",
                                                       "What do you want to do with changes you made?",
                                                       "Apply Now", "Discard Changes", nullptr);
  if (answer == NSAlertDefaultReturn) {
    applyAllChanges();
  } else {
    // Pending notification settings stay; closing the lock discards them too.
    discardServerAndUserChanges();
  }
  updateGui(true, false);
}

void NVKServerPrefs::discardServerAndUserChanges() {
  if (maxFilesChanged()) changeMaxFiles();
  loadAdminConfig();
  loadUserConfig();
}

void NVKServerPrefs::applicationDidBecomeActive() {
  if (!m_isSelected) return;
  if (authorized()) authorize(false, true);
  updateGui(true, true);
}

void NVKServerPrefs::resizeFrame() {
  HostApplication& application = platform().application;
  const std::weak_ptr<Activation> alive = activation_;
  const auto resize = [alive] {
    if (const auto held = alive.lock()) held->pane.doResizeFrame(&held->pane);
  };
  application.performOnMainThread(resize, application.mainWindowFrame().has_value());
}

void NVKServerPrefs::doResizeFrame(const NVKServerPrefs* sender) {
  if (sender != this) return;
  const auto window = platform().application.mainWindowFrame();
  if (!window) return;
  Rect frame = mainView_.frame();
  frame.x = 0;
  frame.width = window->width;
  mainView_.setFrame(frame);
}

void NVKServerPrefs::destroy() {
  if (m_uiTimer != nullptr) {
    platform().runLoop.CFRunLoopTimerInvalidate(m_uiTimer);
    platform().runLoop.CFRelease(m_uiTimer);
    m_uiTimer = nullptr;
  }
  deauthorize();
  m_admin_Config.reset();
  m_authImage1.reset();
  m_authImage2.reset();
  m_admin_Ntf_Config.reset();
}

void NVKServerPrefs::dealloc() {
  if (__main_pane == this) __main_pane = nullptr;
  destroy();
}

}  // namespace norvik
