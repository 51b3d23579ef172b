// A pane on the simulated computer with the change transaction around it, as a front end has it.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "src/adapters/property_lists/codec.h"
#include "src/adapters/simulated/simulated_computer.h"
#include "src/frontends/shared/change/settings_change.h"
#include "tests/support/shipped_interface.h"

namespace norvik {

// Answers beforehand, and records what it was asked.
struct PlannedDecisions : ChangeDecisions {
  std::optional<Side> side;  // for every collision; none cancels
  DamagedAnswer damaged = DamagedAnswer::cancel;
  std::vector<Collision> collisions = {};
  std::vector<FileFinding> files = {};

  std::optional<std::vector<Side>> resolve(const std::vector<Collision>& asked) override {
    collisions = asked;
    if (!side) return std::nullopt;
    return std::vector<Side>(asked.size(), *side);
  }
  DamagedAnswer decideDamaged(const FileFinding& file) override {
    files.push_back(file);
    return damaged;
  }
};

class ChangingPane : public testing::Test {
 protected:
  static constexpr const char* kAgent = "/Users/user/Library/Preferences/com.veltrane.nvkagent.plist";
  static constexpr const char* kMenu = "/Users/user/Library/Preferences/com.veltrane.nvkmenua.plist";
  static constexpr const char* kServer = "/etc/norvik/svr.cfg";

  ChangingPane() : interface(shippedInterface()) {
    computer.effects.setSink([this](EffectKind kind, const std::string& line) {
      if (kind != EffectKind::launch && kind != EffectKind::write) return;
      lines.push_back(line);
      std::erase(lines.back(), '"');
    });
    computer.authorization.setInteractiveGranted(true);
  }
  ~ChangingPane() override {
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
    ChangeOptions options;
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
