// A pane on the simulated computer with the change transaction around it, as a front end has it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "src/adapters/property_lists/codec.h"
#include "src/adapters/simulated/simulated_computer.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/history/history.h"
#include "tests/support/shipped_interface.h"

namespace norvik {

// Answers beforehand, and records what it was asked.
struct PlannedDecisions : ChangeDecisions {
  std::optional<Side> side;  // for every collision; none cancels
  DamagedAnswer damaged = DamagedAnswer::cancel;
  std::map<std::string, DamagedAnswer> damagedAt = {};  // for single files, before the one for all
  std::function<void()> whileAsking;                    // what happens meanwhile
  std::vector<Collision> collisions = {};
  std::vector<FileFinding> files = {};
  int questions = 0;

  std::optional<std::vector<Side>> resolve(const std::vector<Collision>& asked) override {
    ++questions;
    collisions = asked;
    if (whileAsking) whileAsking();
    if (!side) return std::nullopt;
    return std::vector<Side>(asked.size(), *side);
  }
  DamagedAnswer decideDamaged(const FileFinding& file) override {
    ++questions;
    files.push_back(file);
    if (whileAsking) whileAsking();
    const auto known = damagedAt.find(file.file);
    return known != damagedAt.end() ? known->second : damaged;
  }
};

class ChangingPane : public testing::Test {
 protected:
  static constexpr const char* kAgent = "/Users/user/Library/Preferences/com.veltrane.nvkagent.plist";
  static constexpr const char* kMenu = "/Users/user/Library/Preferences/com.veltrane.nvkmenua.plist";
  static constexpr const char* kServer = "/etc/norvik/svr.cfg";
  static constexpr const char* kLaunchd = "/etc/launchd.conf";
  static constexpr const char* kSaver = "/Library/Preferences/com.apple.screensaver.plist";
  static constexpr const char* kWindows = "/Library/Preferences/com.apple.windowserver.plist";

  ChangingPane() : interface(shippedInterface()) {
    computer.effects.setSink([this](EffectKind kind, const std::string& line) {
      if (kind != EffectKind::launch && kind != EffectKind::write) return;
      lines.push_back(line);
      std::erase(lines.back(), '"');
    });
    computer.authorization.setInteractiveGranted(true);
  }
  ~ChangingPane() override { close(); }

  void close() {
    change.reset();
    if (pane != nullptr) pane->destroy();
    pane.reset();
    recording.reset();
  }

  // The pane wakes up, with its lock open unless told otherwise.
  void open(bool unlocked = true) {
    recording = std::make_unique<RecordingPlatform>(computer.platform(), computer.alerts, computer.drawing,
                                                    RecordingMode::real);
    pane = std::make_unique<NVKServerPrefs>(interface);
    ChangeOptions options{history};
    options.portInUse = [this](int64_t port) { return port == used; };
    options.waitForTools = [this](std::chrono::milliseconds limit) {
      return computer.services().tools.wait(limit);
    };
    change = std::make_unique<SettingsChange>(*pane, *recording, computer.platform(), interface,
                                              computer.services(), options);
    change->look();
    pane->awakeFromNib();
    if (unlocked) pane->buttonClicked(pane->ib_button_Auth);
    change->loaded();
    pane->onStateTimer();
    lines.clear();
  }
  void typeNvkPort(const std::string& text) {
    pane->ib_admin_chkbox_nvkPort.setState(kOnState);
    pane->ib_admin_edbox_nvkPort.setStringValue(text);
    pane->onStateTimer();
  }
  void switchBox(Control& box, bool on) {
    box.setState(on ? kOnState : kOffState);
    pane->buttonClicked(box);
    pane->onStateTimer();
  }
  ChangeReport apply() { return change->apply(person); }
  // The pane is left, with this answer to its question.
  ChangeReport leave(int answer) {
    computer.alerts.addAnswer(answer);
    return change->around([this] { pane->didUnselect(); });
  }
  // The system takes the rights away, as after a time; nobody is asked.
  void loseRights() {
    computer.authorization.setSilentGranted(false);
    computer.application.becomeActive();
    ASSERT_FALSE(pane->authorized());
  }

  // Another program writes the server's file: its NVK port, and a key of its own.
  void put(const std::string& path, const PropertyList::Dictionary& dictionary) {
    computer.fileSystem.put(path, encodeXmlPropertyList(dictionary));
  }
  static PropertyList::Dictionary portFile(int64_t port) {
    return {{"NVKService", PropertyList::Dictionary{{"PortNumber", port}}}, {"Foreign", "kept"}};
  }
  std::optional<PropertyList> listAt(const std::string& path) {
    return computer.propertyLists.dictionaryWithContentsOfFile(path);
  }
  std::string bytesAt(const std::string& path) {
    const auto file = computer.fileSystem.find(path);
    return file != nullptr ? file->bytes : "missing";
  }
  int64_t storedNumber(const std::string& path, const std::string& key) {
    const auto list = listAt(path);
    return list && list->find(key) != nullptr ? integerValue(list->find(key)) : -1;
  }
  int64_t storedNvkPort() {
    const auto list = listAt(kServer);
    const PropertyList* service = list ? list->find("NVKService") : nullptr;
    return service != nullptr ? integerValue(service->find("PortNumber")) : -1;
  }
  bool hasForeignKey() {
    const auto list = listAt(kServer);
    return list && list->find("Foreign") != nullptr;
  }

  InterfaceDescription interface;
  SimulatedComputer computer;
  History history{computer.userState, "window"};
  std::unique_ptr<RecordingPlatform> recording;
  std::unique_ptr<NVKServerPrefs> pane;
  std::unique_ptr<SettingsChange> change;
  PlannedDecisions person;
  std::vector<std::string> lines;  // launches and writes
  int64_t used = 0;                // a port that another program listens on
};

inline std::vector<std::string> namesOf(const std::vector<SettingChange>& changes) {
  std::vector<std::string> names;
  for (const SettingChange& change : changes)
    names.push_back(change.name + " " + change.from + " " + change.to);
  return names;
}

}  // namespace norvik
