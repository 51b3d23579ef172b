// The settings panel of the Norvik remote access server, as one object: NVKServerPrefs. This header is the
// table of contents of the module. Each section has the fields and operations of one subject; its heading
// names the source files.
//
// The object lives on the host's main thread and starts no other. It talks to the computer only through the
// platform interfaces of platform(). Its fields are public because front ends and tests read them; only the
// operations write them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/control/server_process.h"
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/platform/authorization.h"
#include "src/server/mac/platform/property_list.h"
#include "src/server/mac/platform/run_loop.h"
#include "src/server/mac/stores/line_file.h"
#include "src/server/mac/stores/open_files_limit.h"
#include "src/server/mac/stores/user_settings.h"
#include "src/server/mac/ui/addresses.h"
#include "src/server/mac/ui/control.h"
#include "src/server/mac/ui/interface_description.h"
#include "src/server/mac/ui/nvk_button.h"
#include "src/server/mac/ui/outline_view.h"

namespace norvik {

class NVKServerPrefs : public OutlineViewDelegate {
 public:
  // ---- The object and its life: pane/life_cycle.cpp -------------------------------------------------------

  // `init`: the creation defaults, and the controls as the description has them. Needs an installed platform.
  explicit NVKServerPrefs(const InterfaceDescription& interface);
  // `dealloc`.
  ~NVKServerPrefs() override;

  PictureRef m_authImage1;                // the closed lock, shown while locked
  PictureRef m_authImage2;                // the open lock, shown while unlocked
  CFRunLoopTimerRef m_uiTimer = nullptr;  // the state-poll timer, owned
  bool m_isSelected = false;              // the host shows this pane
  bool m_trackState = true;               // timer ticks refresh the view
  bool m_needReboot = false;              // a saved change needs a restart of the computer
  int32_t m_serverPid = 0;                // the daemon's pid last shown; -1 stopped; 0 is a pid too

  // The host calls this once the interface is loaded. The first object to be called becomes the main pane and
  // starts up: loads every group, tries to unlock without asking, builds the sidebar, starts the timer.
  // Later objects stay inert.
  void awakeFromNib();
  // The host's selection notices. An object that is not the main pane forwards them to it.
  void mainViewDidLoad();
  void willSelect();
  void didSelect();
  void willUnselect();
  void didUnselect();
  // The application came to the front.
  void applicationDidBecomeActive();
  // Fits the main view to the host's window, on the main thread; waits for this only if there is a main
  // window.
  void resizeFrame();
  // Does the fitting if `sender` is this object.
  void doResizeFrame(const NVKServerPrefs* sender);
  // Reverts a pending open files limit and puts the stored server and user settings back into the controls.
  void discardServerAndUserChanges();
  // Releases the timer, the authorization, the pictures and the dictionaries of the server and notification
  // settings. Keeps m_user_Config, m_confBarRoots and m_confBarItems, and leaves the activation observer
  // registered.
  void destroy();
  // A tick of the timer: refreshes the view if m_trackState is on.
  void onStateTimer();

  View& mainView() { return mainView_; }

  // ---- Administrator authorization: pane/authorization.cpp ------------------------------------------------

  AuthorizationRef m_authRef = nullptr;  // null while locked

  // Whether the pane is unlocked. Every privileged operation does nothing while it is not.
  bool authorized() const { return m_authRef != nullptr; }
  // Asks the system for administrator rights, asking a person only if `interactive`; with `update` checks
  // again even when already unlocked. Returns whether the pane is unlocked then. Blocks while a person is
  // asked.
  bool authorize(bool interactive, bool update);
  // Locks the pane.
  void deauthorize();

  // ---- Applying changes: pane/applying.cpp ----------------------------------------------------------------

  // Saves every changed group, offers a restart of the computer if a saved change needs one, and makes the
  // changes take effect. Always true; the groups log their failures.
  bool applyAllChanges();
  // Whether the product's setup application is running.
  bool isSetupActive();

  // ---- User settings: stores/user_settings.cpp ------------------------------------------------------------

  std::optional<PropertyList> m_user_Config;  // the agent's whole file as last loaded
  int64_t m_user_imgDefs = 1;                 // follow the server's image settings
  int64_t m_user_imgMode = 2;
  int64_t m_user_imgDept = 6;
  int64_t m_user_imgShad = 4;
  int64_t m_user_imgCapt = 3;
  int64_t m_user_imgBuff = 3;
  int64_t m_user_mseSwap = 0;

  bool loadUserConfig();
  bool userConfigChanged() const;
  bool saveUserConfig();

  // ---- Server settings: stores/server_config.cpp, stores/server_config_save.cpp ---------------------------

  std::optional<PropertyList> m_admin_Config;  // the server's whole file as last loaded
  int64_t m_admin_nvkPort = 0;
  int64_t m_admin_nvkState = 0;
  int64_t m_admin_nvkSound = 1;
  int64_t m_admin_nvkPrint = 1;
  int64_t m_admin_nvkClipb = 1;
  int64_t m_admin_rdpPort = 0;
  int64_t m_admin_rdpState = 0;
  int64_t m_admin_rdpSound = 1;
  int64_t m_admin_rdpPrint = 1;
  int64_t m_admin_rdpClipb = 1;
  int64_t m_admin_multiUser = -1;  // 1 multi-user, 0 single-user, -1 unknown
  int64_t m_admin_loginAct = 0;    // -1 no action on connect, else 0 to 2
  int64_t m_admin_imgMode = 2;
  int64_t m_admin_imgDept = 6;
  int64_t m_admin_imgShad = 4;
  int64_t m_admin_imgCapt = 3;
  int64_t m_admin_imgBuff = 3;
  int64_t m_admin_wakeUp = 1;
  int64_t m_admin_scrSaver = 1;
  int64_t m_admin_noQuartz = 0;
  int64_t m_admin_gldMode = 0;  // in no file: set by a successful save alone

  bool loadAdminConfig();
  // Also true while an open files limit is pending; false while locked.
  bool adminConfigChanged() const;
  bool saveAdminConfig();

  // ---- Notification settings: stores/notification_settings.cpp --------------------------------------------

  std::optional<PropertyList> m_admin_Ntf_Config;  // the menu agent's whole file as last loaded
  bool m_admin_ntfShowNews = false;
  bool m_admin_ntfShowNotices = false;
  bool m_admin_ntfShowUpdates = false;
  bool m_admin_ntfShowWarnings = false;
  bool m_admin_ntfShowPrLow = false;
  bool m_admin_ntfShowPrMedium = false;
  bool m_admin_ntfShowPrHigh = false;
  int64_t m_admin_ntfRepeatTimeout = 0;  // item numbers of the pop-ups, from 1
  int64_t m_admin_ntfCloseTimeout = 0;
  int64_t m_admin_ntfShowTimeout = 0;
  bool m_admin_ntfShouldGenerateIntTest = false;        // reserved; never set or read
  bool m_admin_ntfShouldAskTestMessFromServer = false;  // reserved; never set or read

  void loadNotificationSettings();
  bool notificationSettingsChanged() const;
  bool saveNotificationSettings();

  // ---- Open files limit: stores/open_files_limit.cpp, stores/line_file.cpp --------------------------------

  NVKServerLimits m_admin_maxFiles;

  // Reads the kernel's values (while unlocked) and the launch daemon's file. Always true.
  bool loadMaxFiles();
  void displayMaxFiles();
  // The adjust button: adjusts, resets (after asking) or reverts the limit. Nothing while locked.
  void changeMaxFiles();
  bool maxFilesChanged() const;
  bool saveMaxFiles();

  // A file's lines; nothing for a null path, an unreadable file, one of more than 64 MiB, or one that is not
  // UTF-8.
  std::optional<StringsArray> loadStringsArray(const char* path);
  // Writes the lines, each ended by a line feed. False for a null path or list, or if writing fails.
  bool saveStringsArray(const char* path, const StringsArray* array);

  // ---- Privileged command runner: control/runner.cpp ------------------------------------------------------

  // Start a tool as the super-user with up to five (ten) arguments and return without waiting; the first null
  // argument ends the list. False while locked or if the service refuses; true for a tool that starts, even
  // if it then fails.
  bool runCmd(const char* cmd, const char* arg0 = nullptr, const char* arg1 = nullptr,
              const char* arg2 = nullptr, const char* arg3 = nullptr, const char* arg4 = nullptr);
  bool runCmdEx(const char* cmd, const char* arg0 = nullptr, const char* arg1 = nullptr,
                const char* arg2 = nullptr, const char* arg3 = nullptr, const char* arg4 = nullptr,
                const char* arg5 = nullptr, const char* arg6 = nullptr, const char* arg7 = nullptr,
                const char* arg8 = nullptr, const char* arg9 = nullptr);
  // The same, with the tool's standard output in `buf` as zero-terminated text of at most `len` - 1 bytes.
  // Blocks until the tool closes its output or the buffer is full. `buf` may be null, `len` below 1.
  bool runCmdToBuf(char* buf, int32_t len, const char* cmd, const char* arg0 = nullptr,
                   const char* arg1 = nullptr, const char* arg2 = nullptr, const char* arg3 = nullptr,
                   const char* arg4 = nullptr);
  // The path of a temporary file of that name (null for none) of this process. Makes no file.
  std::string getTempFilePath(const char* name) const;

  // ---- Server process control: control/server_process.cpp -------------------------------------------------

  // Start, stop and restart the daemon, counting dots in the state label. Block for ten to twenty-five
  // seconds; a restart for both. False while locked. True where the daemon then runs (is gone).
  bool startServer();
  bool stopServer();
  bool restartServer();  // whether the pane was unlocked, whatever came of it
  // Whether a start or stop is under way: from its beginning until the full refresh that follows it.
  // m_serverPid does not say this: it is 0 during most of it, but also for a pid file without a number.
  bool isServerChanging() const { return serverIsChanging_; }
  // Open the management tools.
  bool runDispManager();
  bool runAccessManager();

  // ---- Sidebar: ui/sidebar.cpp ----------------------------------------------------------------------------

  using ConfBarItems = std::map<std::string, std::vector<ConfBarNode>, std::less<>>;
  std::optional<std::vector<ConfBarNode>> m_confBarRoots;  // the two groups
  std::optional<ConfBarItems> m_confBarItems;              // the pages by group key

  // Reloads the sidebar: the lock decides which pages can be chosen.
  void loadConfBar();

  // The tree, in the outline view's questions.
  const std::vector<ConfBarNode>* _childrenForItem(const ConfBarNode* node) const;
  std::size_t numberOfChildrenOfItem(const OutlineView& view, const ConfBarNode* node) override;
  const ConfBarNode& childOfItem(const OutlineView& view, std::size_t index,
                                 const ConfBarNode* node) override;
  bool isItemExpandable(const OutlineView& view, const ConfBarNode& node) override;
  bool shouldExpandItem(const OutlineView& view, const ConfBarNode& node) override;
  bool shouldCollapseItem(const OutlineView& view, const ConfBarNode& node) override;
  bool isGroupItem(const OutlineView& view, const ConfBarNode& node) override;
  bool shouldShowOutlineCellForItem(const OutlineView& view, const ConfBarNode& node) override;
  bool shouldSelectItem(const OutlineView& view, const ConfBarNode& node) override;
  void willDisplayCell(OutlineView& view, const ConfBarNode& node) override;
  CellView viewForTableColumn(const OutlineView& view, const ConfBarNode& node) override;
  void outlineViewSelectionDidChange(OutlineView& view) override;

  // ---- Controls: ui/control_table.cpp, ui/controls.cpp ----------------------------------------------------

  Control ib_button_Apply, ib_button_Help;
  NVKButton ib_button_Auth;
  Control ib_label_Auth;
  OutlineView ib_oview_confBar;
  TabView ib_tview_confView;

  Control ib_user_chkbox_imgDefs, ib_user_popup_imgMode;
  Control ib_user_slider_imgDept, ib_user_slider_imgCapt, ib_user_slider_imgBuff, ib_user_slider_imgShad;
  Control ib_user_chkbox_mseSwap;

  Control ib_admin_chkbox_nvkEnabled, ib_admin_chkbox_nvkPort, ib_admin_edbox_nvkPort;
  Control ib_admin_chkbox_nvkSound, ib_admin_chkbox_nvkPrint, ib_admin_chkbox_nvkClipb,
      ib_admin_label_nvkAddress;
  Control ib_admin_chkbox_rdpEnabled, ib_admin_chkbox_rdpPort, ib_admin_edbox_rdpPort;
  Control ib_admin_chkbox_rdpSound, ib_admin_chkbox_rdpPrint, ib_admin_chkbox_rdpClipb,
      ib_admin_label_rdpAddress;

  Control ib_admin_chkbox_multiUser, ib_admin_chkbox_actOnLogin;
  Control ib_admin_rbutton_toConsole, ib_admin_rbutton_lockScreen, ib_admin_rbutton_toHidden;
  Control ib_admin_popup_gldMode,
      ib_admin_label_gldMode;  // hidden since start-up; the rules around them stay

  Control ib_admin_popup_imgMode;
  Control ib_admin_slider_imgDept, ib_admin_slider_imgCapt, ib_admin_slider_imgBuff, ib_admin_slider_imgShad;
  Control ib_admin_chkbox_scrSaver, ib_admin_chkbox_wakeUp, ib_admin_chkbox_noQuartz;

  Control ib_admin_edbox_maxFSoft, ib_admin_edbox_maxFHard, ib_admin_button_maxFAdjust;
  Control ib_admin_button_svrStart, ib_admin_button_svrRestart, ib_admin_label_svrState,
      ib_admin_label_svrDesc;
  Control ib_admin_button_dispManager, ib_admin_button_accManager;

  Control ib_admin_chkbox_ntfShowNews, ib_admin_chkbox_ntfShowNotices, ib_admin_chkbox_ntfShowUpdates;
  Control ib_admin_chkbox_ntfShowWarnings;
  Control ib_admin_chkbox_ntfPrLow, ib_admin_chkbox_ntfPrMedium, ib_admin_chkbox_ntfPrHigh;
  Control ib_admin_popup_ntfRepeat, ib_admin_popup_ntfClose, ib_admin_popup_ntfShow;
  Control ib_admin_chkbox_testIntNotif, ib_admin_chkbox_debug;  // taken out when the notifications are loaded

  // The control of that outlet name; null if there is none.
  Control* outlet(std::string_view name);
  // Every control, in the order of the control table.
  std::vector<Control*> outlets();

  // ---- The pending values, as the controls have them now: ui/accessors.cpp --------------------------------

  int64_t new_user_imgDefs() const, new_user_mseSwap() const;
  int64_t new_user_imgMode() const, new_user_imgDept() const, new_user_imgCapt() const,
      new_user_imgBuff() const, new_user_imgShad() const;
  int64_t new_admin_nvkPort() const, new_admin_rdpPort() const;
  int64_t new_admin_nvkState() const, new_admin_nvkSound() const, new_admin_nvkPrint() const,
      new_admin_nvkClipb() const;
  int64_t new_admin_rdpState() const, new_admin_rdpSound() const, new_admin_rdpPrint() const,
      new_admin_rdpClipb() const;
  int64_t new_admin_multiUser() const, new_admin_loginAct() const, new_admin_gldMode() const;
  int64_t new_admin_imgMode() const, new_admin_imgDept() const, new_admin_imgCapt() const,
      new_admin_imgBuff() const, new_admin_imgShad() const;
  int64_t new_admin_noQuartz() const, new_admin_wakeUp() const, new_admin_scrSaver() const;
  bool new_admin_showNews() const, new_admin_showNotices() const, new_admin_showUpdates() const,
      new_admin_showWarnings() const;
  bool new_admin_showLowPrior() const, new_admin_showMedPrior() const, new_admin_showHighPrior() const;
  int64_t new_admin_repeatTimeout() const, new_admin_closeTimeout() const, new_admin_showTimeout() const;

  // What front ends show beside a control, from the tables that the change tests use: stores/settings.cpp.
  // Whether the control takes part in a setting that Apply would change. As in the change tests, nothing of
  // the administrator's counts while locked, and no image value of a user who follows the server's.
  bool differsFromStored(const Control& control) const;
  // Whether it takes part in a setting whose pending value is not the one that a missing key means.
  bool differsFromDefault(const Control& control) const;

  // ---- Refresh and enabling: ui/refresh.cpp ---------------------------------------------------------------

  // Refreshes server state, addresses, lock and enabling; with `skipUnchanged` only if the daemon's pid or
  // the ports or switches of the services changed since the last time. `redraw` draws at once.
  void updateGui(bool skipUnchanged, bool redraw);
  // Enables each control by the rules, or none of them if `enable` is false.
  void enableGui(bool enable, bool redraw);
  // Draws a view and all below it at once; nothing for null.
  void redrawView(View* view);

  // ---- Connection addresses: ui/addresses.cpp -------------------------------------------------------------

  // Fill SBUF_NVKADR (SBUF_RDPADR) with the sentence that says how to connect to that port.
  void updateNvkAddr(int64_t port);
  void updateRdpAddr(int64_t port);

  // ---- Actions: ui/actions.cpp ----------------------------------------------------------------------------

  // The action of every control: what a click on `sender` does, dialogs included.
  void buttonClicked(Control& sender);

 private:
  struct Activation;
  View mainView_;
  // What the activation notification reaches while this object lives.
  std::shared_ptr<Activation> activation_;
  bool serverIsChanging_ = false;

  // The tools that put a file in its place, and what each is for.
  struct InstallCommands {
    const ToolCommand& move;
    const ToolCommand& chmod;
    const ToolCommand& chown;
  };

  void connectOutlets(const InterfaceDescription& interface);
  void startTimer();
  void dealloc();
  void offerReboot();
  void adjustSystem();
  bool installServerConfig();
  void beginServerChange(std::string_view text);
  bool runTool(const ToolCommand& command, const char* variable = nullptr);
  bool installFile(const InstallCommands& commands, const std::string& temporary, const char* path);
  void buildConfBar();
};

// The object that owns the state; null while there is none.
extern NVKServerPrefs* __main_pane;
// The newest object; nothing reads it.
extern NVKServerPrefs* __gc_keeper;

// What the state timer calls; `info` is the pane object, or null to do nothing.
void stateTimerProc(CFRunLoopTimerRef timer, void* info);

}  // namespace norvik
