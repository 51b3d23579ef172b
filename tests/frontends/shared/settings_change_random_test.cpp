// Sessions made of random steps: a person edits, locks, takes back, applies, leaves; others write and damage
// the files; tools, disks and the lock fail. After each step the promises of the change transaction are
// compared with a small model that knows the files as bytes.
//
// NORVIK_CHANGE_SESSIONS sets how many sessions there are, NORVIK_CHANGE_SEED with which one they begin. A
// failure names its seed and the steps that led there.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>

#include "src/adapters/services/kept_copies.h"
#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/change/settings_change.h"
#include "tests/frontends/shared/settings_change_model.h"
#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

using namespace change_model;
using Names = std::vector<std::string>;
using std::chrono::milliseconds;

constexpr unsigned kQuickSessions = 120;
constexpr int kSteps = 30;
constexpr const char* kTools[] = {"/bin/mv", "/bin/chmod", "/usr/sbin/chown", "/usr/bin/defaults",
                                  "/usr/sbin/nvkservice"};
constexpr const char* kTemporary[] = {"/tmp/norvik.prefs.tmp.server.conf.812",
                                      "/tmp/norvik.prefs.tmp.launchd.conf.812"};
constexpr int kAnswers[] = {NSAlertDefaultReturn, NSAlertAlternateReturn, NSAlertOtherReturn};

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  std::size_t below(std::size_t count) { return engine_() % count; }
  bool chance(std::size_t percent) { return below(100) < percent; }
  template <typename List>
  auto& of(List& list) {
    return list[below(std::size(list))];
  }

 private:
  std::mt19937 engine_;
};

// Every panel of the pane gets an answer, which a twin can be given too.
struct RandomAlerts : AlertPanels {
  std::function<int()> next;
  std::vector<int> given = {};
  int NSRunAlertPanel(const char*, const char*, const char*, const char*, const char*) override {
    given.push_back(next());
    return given.back();
  }
};

struct RandomDecisions : ChangeDecisions {
  std::function<Side()> side;
  std::function<DamagedAnswer()> answer;
  std::function<void()> whileAsking;
  bool cancels = false;
  std::set<std::string> theirs = {};
  std::function<void(const std::string& name)> keptMine;
  std::map<std::string, DamagedAnswer> answers = {};

  std::optional<std::vector<Side>> resolve(const std::vector<Collision>& collisions) override {
    whileAsking();
    if (cancels) return std::nullopt;
    std::vector<Side> sides;
    theirs.clear();
    for (const Collision& collision : collisions) {
      sides.push_back(side());
      if (sides.back() == Side::theirs) {
        theirs.insert(collision.name);
      } else {
        keptMine(collision.name);
      }
    }
    return sides;
  }
  DamagedAnswer decideDamaged(const FileFinding& file) override { return answers[file.file] = answer(); }
};

// An Apply that nobody disturbed, for a twin to repeat.
struct Undisturbed {
  Meaning before, after;
  std::map<std::string, std::tuple<int, double, int64_t, std::string>> controls;
  NVKServerLimits limits;
  bool authorized = false;
  bool needsReboot = false;
  bool runs = false;  // the server
  std::vector<int> answers;
  Names effects;
};

// How much the sessions have tried, so that a test which tries nothing fails.
struct Tally {
  int saved = 0;
  int repeated = 0;
  int collisions = 0;
  int takenOver = 0;
  std::map<FailureCode, int> failed;
};

const ListedProcess kAgentProcess{812'000, fourCharCode("APPL"), fourCharCode("nvka"),
                                  "com.veltrane.nvkagent"};

class Session {
 public:
  Session(unsigned seed, const InterfaceDescription& interface, Tally& tally);
  ~Session() { close(); }
  void run();
  const Names& problems() const { return problems_; }
  std::string told() const;

 private:
  // What a person has pending before a step.
  struct Wish {
    const Setting* row;
    int64_t value;
    std::string name;
  };
  struct Before {
    std::vector<Wish> wishes;
    bool isUnlocked;
    bool isLimitStaged;
  };
  struct Step {
    const char* name;
    unsigned weight;
    bool fails;  // something is made to fail; left out of a calm session
    void (Session::*run)();
  };

  void open();
  void close();
  NVKServerPrefs& pane() { return *pane_; }
  bool toolsRun() { return !computer_.tools.wait(milliseconds(0)); }
  void problem(const std::string& text) { problems_.push_back(text); }

  // Steps.
  void edit();
  void clickLock();
  void loseRights();
  void writeElsewhere();
  void damage();
  void failRead();
  void failTool();
  void failWrite();
  void holdLock();
  void gonePeers();
  void takeBack();
  void preview();
  void apply();
  void leave();
  void restore();
  void watch();
  void reopen();
  void passTime();

  void change(Control& control);
  void write(const char* path);
  void writtenByOthers(const char* path);
  void keepMine(const std::string& name);
  void settleLate();
  // The answers to the pane's own question that discard, if there is one.
  using Answers = std::set<int>;
  void watched(const std::function<ChangeReport()>& call, const Answers& discarding = {});
  std::vector<Wish> wishes();
  void noteLate(const ChangeReport& report, bool isLimitStaged);
  void adoptFiles(const Meaning& after);
  void adoptDiscarded(const Meaning& after, const Answers& discarding);
  void checkReport(const ChangeReport& report, const Meaning& after, bool wasUnlocked, bool isLeaving);
  void checkFiles(const Meaning& after, const ChangeReport& report);
  void checkFile(const std::string& path, const FileMeaning& before, const FileMeaning& after,
                 const ChangeReport& report);
  bool mayChange(const Setting& row, const ChangeReport& report);
  bool isKept(const std::string& path, const std::string& bytes);
  void checkWishes(const std::vector<Wish>& before, bool limitStaged);
  void checkBaseline(const Meaning& files);
  void checkSaved(bool unlocked);
  void checkLeftovers();
  void checkPreview(const Preview& preview, const ChangeReport& report);
  bool isUndisturbed();
  Undisturbed recorded();
  Names effectsAlone(SimulatedComputer& twin, const Undisturbed& apply);
  void repeatOnATwin(const Undisturbed& apply);
  bool hasFault(const std::string& path) const {
    return computer_.fileFaults.has(FileOperation::openRead, path) ||
           computer_.fileFaults.has(FileOperation::read, path);
  }

  const InterfaceDescription& interface_;
  Tally& tally_;
  Random random_;
  SimulatedComputer computer_;
  RandomAlerts alerts_;
  RandomDecisions person_;
  NoChangeRecords records_;
  std::unique_ptr<RecordingPlatform> recording_;
  std::unique_ptr<NVKServerPrefs> pane_;
  std::unique_ptr<SettingsChange> change_;
  Meaning known_;                     // what others, and saves that were looked at, have left
  std::set<std::string> torn_;        // files that a failed write of ours emptied
  std::set<std::string> rescued_;     // the same, of damaged ones: the pane writes what it knew before
  std::set<const Setting*> touched_;  // rows that a person has something pending in
  std::set<const Setting*> late_;     // rows that a tool which runs may still change
  bool limitTouched_ = false;
  std::set<std::string> lateAnswers_;  // damaged files that it may still put something in the place of
  bool limitLate_ = false;
  std::string restoring_;
  bool disturbed_ = false;  // something is set to fail, or changed since it was looked at
  Names effects_;
  std::vector<Undisturbed> undisturbed_;
  Names steps_, problems_;
  bool isCalm_ = false;  // nothing is made to fail
  int sequence_ = 0;
};

Session::Session(unsigned seed, const InterfaceDescription& interface, Tally& tally)
    : interface_(interface), tally_(tally), random_(seed) {
  alerts_.next = [this] { return random_.of(kAnswers); };
  person_.side = [this] {
    ++tally_.collisions;
    return random_.chance(50) ? Side::mine : Side::theirs;
  };
  person_.answer = [this] {
    constexpr DamagedAnswer kChoices[] = {DamagedAnswer::cancel, DamagedAnswer::restore,
                                          DamagedAnswer::replace};
    return random_.of(kChoices);
  };
  person_.keptMine = [this](const std::string& name) { keepMine(name); };
  person_.whileAsking = [this] {
    if (random_.chance(15)) writtenByOthers(random_.chance(50) ? kAgent : kMenu);
  };
  computer_.effects.setSink([this](EffectKind kind, const std::string& line) {
    if (kind != EffectKind::alert) effects_.push_back(line);
  });
  isCalm_ = random_.chance(50);
  computer_.processes.add(kAgentProcess);
  for (const char* path : kPaths) {
    if (random_.chance(60)) write(path);
  }
  if (random_.chance(50)) computer_.service.setDaemon(900);
  open();
}

void Session::open() {
  recording_ = std::make_unique<RecordingPlatform>(computer_.platform(), alerts_, computer_.drawing,
                                                   RecordingMode::real);
  pane_ = std::make_unique<NVKServerPrefs>(interface_);
  change_ = std::make_unique<SettingsChange>(*pane_, *recording_, computer_.platform(), interface_,
                                             computer_.services(), ChangeOptions{records_});
  change_->look();
  pane_->awakeFromNib();
  if (random_.chance(80)) pane_->buttonClicked(pane_->ib_button_Auth);
  change_->loaded();
  pane_->onStateTimer();
  known_ = meaningOf(computer_);
  torn_.clear();
  rescued_.clear();
  touched_.clear();
  limitTouched_ = false;
}

void Session::close() {
  change_.reset();
  if (pane_ != nullptr) pane_->destroy();
  pane_.reset();
  recording_.reset();
}

std::string Session::told() const {
  std::string text;
  for (const std::string& step : steps_) text += "\n  " + step;
  for (const std::string& problem : problems_) text += "\n! " + problem;
  return text;
}

// ---- What a person does

void Session::change(Control& control) {
  const ControlDescription* description = interface_.find(control.name());
  switch (control.kind()) {
    case ControlKind::checkBox:
      control.setState(control.isOn() ? kOffState : kOnState);
      break;
    case ControlKind::popUp:
      control.selectItemAtIndex(static_cast<int64_t>(random_.below(description->items.size())));
      break;
    case ControlKind::slider:
      control.setDoubleValue(*description->minimum +
                             static_cast<double>(random_.below(static_cast<std::size_t>(
                                 *description->maximum - *description->minimum + 1))));
      break;
    case ControlKind::textField: {
      constexpr const char* kTexts[] = {"5000", "5001", "4073", "3389", " 6000 ", "70000", "abc", "0", ""};
      control.setStringValue(random_.of(kTexts));
      return;
    }
    default:
      break;
  }
  pane().buttonClicked(control);
}

void Session::edit() {
  std::vector<Control*> choices;
  for (const ControlDescription* description : interface_.controls()) {
    Control* control = pane().outlet(description->outlet);
    if (control == nullptr || !control->isEnabled() || control->isHidden() || control->isRemoved()) continue;
    if (!description->setting.empty() || control == &pane().ib_admin_button_maxFAdjust)
      choices.push_back(control);
  }
  std::map<const Setting*, std::vector<ControlState>> before;
  for (const Setting* row : storedRows()) before.emplace(row, controlStates(pane(), *row));
  Control& control = *random_.of(choices);
  steps_.back() += " " + std::string(control.name());
  change(control);
  pane().onStateTimer();
  for (const Setting* row : storedRows()) {
    if (controlStates(pane(), *row) != before.at(row)) touched_.insert(row);
  }
  limitTouched_ = pane().maxFilesChanged();
}

void Session::clickLock() {
  computer_.authorization.setInteractiveGranted(random_.chance(90));
  watched([this] { return change_->around([this] { pane().buttonClicked(pane().ib_button_Auth); }); },
          {NSAlertAlternateReturn});
  pane().onStateTimer();
}

void Session::leave() {
  watched([this] { return change_->around([this] { pane().didUnselect(); }); },
          {NSAlertAlternateReturn, NSAlertOtherReturn});
}

void Session::loseRights() {
  computer_.authorization.setSilentGranted(false);
  pane().didSelect();
  computer_.application.becomeActive();
  limitTouched_ = pane().maxFilesChanged();
}

void Session::takeBack() {
  const auto pending = change_->pending();
  if (pending.empty() || random_.chance(20)) {
    change_->takeBackAll();
    for (const Setting* row : storedRows()) {
      const bool quirk = row == serverRow(&NVKServerPrefs::m_admin_wakeUp) ||
                         row == serverRow(&NVKServerPrefs::m_admin_loginAct);
      if (!quirk && isPending(pane(), *row)) problem(std::string("still pending: ") + row->key);
    }
  } else {
    const std::string name = random_.of(pending).name;
    steps_.back() += " " + name;
    change_->takeBack(name);
  }
  limitTouched_ = pane().maxFilesChanged();
}

void Session::restore() {
  const auto findings = change_->findings();
  if (findings.empty() || !findings[0].damaged) return;
  restoring_ = findings[0].file;
  watched([&] { return change_->restore(findings[0]); });
  restoring_.clear();
}

void Session::apply() {
  person_.cancels = random_.chance(15);
  pane().onStateTimer();
  std::optional<Preview> preview;
  std::optional<Undisturbed> record;
  if (isUndisturbed()) {
    record = recorded();
    preview = change_->preview();
  }
  effects_.clear();
  alerts_.given.clear();
  ChangeReport result;
  watched([&] {
    result = change_->apply(person_);
    return result;
  });
  if (!record) return;
  checkPreview(*preview, result);
  if (!result.ok() || !result.applied) {
    if (result.error.code != FailureCode::wrongValue && result.error.code != FailureCode::notSettable &&
        result.error)
      problem("an undisturbed Apply failed: " + result.error.sentence);
    return;
  }
  record->effects = effects_;
  record->answers = alerts_.given;
  record->after = meaningOf(computer_);
  undisturbed_.push_back(std::move(*record));
}

// A window that was notified that the files changed.
void Session::watch() {
  const ForeignChanges foreign = change_->foreignChanges();
  if (!foreign.any()) return;
  tally_.collisions += static_cast<int>(foreign.collisions.size());
  tally_.takenOver += static_cast<int>(foreign.takenOver.size());
  person_.theirs.clear();
  std::vector<std::string> theirs;
  for (const Collision& collision : foreign.collisions) {
    if (random_.chance(50)) {
      theirs.push_back(collision.name);
    } else {
      keepMine(collision.name);
    }
  }
  person_.theirs.insert(theirs.begin(), theirs.end());
  const auto before = wishes();
  const bool staged = pane().maxFilesChanged();
  change_->takeOver(theirs);
  disturbed_ = false;
  checkWishes(before, staged);
  checkBaseline(meaningOf(computer_));
}

void Session::reopen() {
  if (toolsRun()) return;
  close();
  open();
}

// ---- What others do, and what fails

constexpr const char* kForeignKeys[] = {"Alpha", "Beta", "Gamma"};

void Session::write(const char* path) {
  ++sequence_;
  const std::string file(path);
  if (file == kLaunchd) {
    std::string text = "# note " + std::to_string(sequence_) + "\n";
    if (random_.chance(10)) text += "# caf\xC3\xA9\n";
    if (random_.chance(50))
      text += "limit maxfiles " + std::to_string(256 + 256 * random_.below(60)) + " 12288\n";
    if (random_.chance(10)) text += "limit maxfiles 1024 unlimited\n";
    if (random_.chance(50)) text += "setenv A " + std::to_string(sequence_);
    computer_.fileSystem.put(path, text);
    return;
  }
  const FileMeaning old = meaningOf(computer_, path);
  Dictionary dictionary = old.foreign;
  if (const auto list = decodePropertyList(old.bytes)) {
    if (const auto* whole = list->as<Dictionary>()) dictionary = *whole;
  }
  if (random_.chance(60)) dictionary[random_.of(kForeignKeys)] = int64_t{sequence_};
  PropertyList list(dictionary);
  for (const Setting* row : storedRows()) {
    const char* home = pathOf(*row);
    if (home == nullptr || home != file || row->stored == StoredAs::nowhere || !random_.chance(15)) continue;
    if (std::string(row->key) == "PortNumber") {
      row->storeIn(list, static_cast<int64_t>(4100 + random_.below(20)));
    } else {
      row->storeIn(list, static_cast<int64_t>(random_.below(6)));
    }
  }
  auto& root = *list.as<Dictionary>();
  if (file == kSaver) root["loginWindowIdleTime"] = static_cast<int64_t>(random_.below(2) * 1200);
  if (file == kWindows)
    root["GLCompositor"] = Dictionary{{"tileHeight", static_cast<int64_t>(random_.below(2) * 256)}};
  computer_.fileSystem.put(path, encodeXmlPropertyList(list));
}

void Session::writeElsewhere() {
  const char* path = random_.of(kPaths);
  const bool isUsers = path == std::string(kAgent) || path == std::string(kMenu);
  if (!isUsers && toolsRun()) return;  // they hold the lock
  writtenByOthers(path);
}

void Session::writtenByOthers(const char* path) {
  write(path);
  torn_.erase(path);
  rescued_.erase(path);
  known_[path] = meaningOf(computer_, path);
  disturbed_ = true;
  steps_.back() += std::string(" ") + path;
}

void Session::damage() {
  const char* path = random_.of(kPaths);
  if (toolsRun()) return;
  const std::string bytes = meaningOf(computer_, path).bytes;
  switch (random_.below(4)) {
    case 0:
      computer_.fileSystem.remove(path);
      break;
    case 1:
      if (torn_.contains(path) || rescued_.contains(path))
        return;  // it cannot be distinguished from what was left
      computer_.fileSystem.put(path, "");
      break;
    case 2:
      computer_.fileSystem.put(path, bytes.substr(0, bytes.size() / 2) + "\xE9<");
      break;
    default:
      computer_.fileSystem.put(path, "\xFF damaged " + std::to_string(++sequence_));
  }
  torn_.erase(path);
  rescued_.erase(path);
  known_[path] = meaningOf(computer_, path);
  disturbed_ = true;
  steps_.back() += std::string(" ") + path;
}

void Session::failRead() {
  const char* path = random_.of(kPaths);
  if (toolsRun()) return;
  const FileOperation operation = random_.chance(50) ? FileOperation::openRead : FileOperation::read;
  computer_.fileFaults.set(operation, path, !computer_.fileFaults.has(operation, path));
  disturbed_ = true;
  steps_.back() += std::string(" ") + path;
}

void Session::failWrite() {
  const char* path = random_.chance(50) ? random_.of(kTemporary) : (random_.chance(50) ? kAgent : kMenu);
  const FileOperation operation = random_.chance(50) ? FileOperation::openWrite : FileOperation::write;
  computer_.fileFaults.set(operation, path, !computer_.fileFaults.has(operation, path));
  steps_.back() += std::string(" ") + path;
}

void Session::failTool() {
  const char* tool = random_.of(kTools);
  steps_.back() += std::string(" ") + tool;
  switch (random_.below(8)) {
    case 0:
      return computer_.tools.setFailure(tool, std::nullopt, 1, "it failed");
    case 1:
      return computer_.tools.setKilled(tool, std::nullopt, 9);
    case 2:
      return computer_.tools.setDuration(tool, std::nullopt, milliseconds(20'000));
    case 3:
      return computer_.tools.setDuration(tool, std::nullopt, milliseconds(50'000));
    case 4:
      if (random_.chance(25)) computer_.tools.setDuration(tool, std::nullopt, std::nullopt);
      return;
    case 5:
      return computer_.authorization.refuse(tool, std::nullopt);
    default:
      for (const char* known : kTools) {
        computer_.tools.setUsual(known, std::nullopt);
        computer_.authorization.accept(known);
      }
  }
}

void Session::holdLock() {
  const std::size_t choice = random_.below(4);
  computer_.locks.holdElsewhere(choice == 0   ? std::nullopt
                                : choice == 1 ? std::optional(milliseconds(3'000))
                                              : std::optional(milliseconds(0)));
}

void Session::gonePeers() {
  computer_.notifications.setDelivers(random_.chance(50));
  computer_.processes.setState(
      812'000, random_.chance(50) ? ProcessTable::State::alive : ProcessTable::State::notPermitted);
}

void Session::passTime() {
  computer_.clock.sleep(static_cast<uint32_t>(1'000'000 * (1 + random_.below(60))));
}

// ---- What must hold

std::vector<Session::Wish> Session::wishes() {
  std::vector<Wish> result;
  const auto settings = paneSettings(interface_, pane());
  for (const Setting* row : storedRows()) {
    if (!touched_.contains(row) || !isPending(pane(), *row)) continue;
    const PaneSetting* setting = settingOfRow(settings, pane(), *row);
    result.push_back({row, row->pendingValue(pane()), setting != nullptr ? setting->name() : ""});
  }
  return result;
}

// A person has chosen this value to be saved.
void Session::keepMine(const std::string& name) {
  for (const PaneSetting& setting : paneSettings(interface_, pane())) {
    if (setting.name() == name) touched_.insert(rowOfSetting(pane(), setting));
  }
}

// Changes that a tool made that had not ended in time.
void Session::settleLate() {
  if (late_.empty() && !limitLate_ && lateAnswers_.empty()) return;
  ChangeReport none;
  const Meaning now = meaningOf(computer_);
  checkFiles(now, none);
  known_ = now;
  if (toolsRun()) return;
  late_.clear();
  lateAnswers_.clear();
  limitLate_ = false;
}

void Session::watched(const std::function<ChangeReport()>& call, const Answers& discarding) {
  settleLate();
  person_.theirs.clear();
  person_.answers.clear();
  alerts_.given.clear();
  const Before before{wishes(), pane().authorized(), pane().authorized() && pane().maxFilesChanged()};
  const ChangeReport report = call();
  steps_.back() += report.ok() ? " ok" : " " + std::string(codeWord(report.error.code));
  if (report.applied) steps_.back() += " applied";
  const Meaning after = meaningOf(computer_);
  if (toolsRun()) noteLate(report, before.isLimitStaged);
  checkFiles(after, report);
  const bool discarded = !alerts_.given.empty() && discarding.contains(alerts_.given[0]);
  adoptFiles(after);
  if (discarded) adoptDiscarded(after, discarding);
  if (!discarded) checkWishes(before.wishes, before.isLimitStaged);
  checkReport(report, after, before.isUnlocked, !discarding.empty());
  std::erase_if(touched_, [&](const Setting* row) { return !row->differs(pane()); });
  limitTouched_ = pane().maxFilesChanged();
}

// What the tools that still run may do later.
void Session::noteLate(const ChangeReport& report, bool isLimitStaged) {
  late_.insert(touched_.begin(), touched_.end());
  for (const Setting* row : storedRows()) {
    if (mayChange(*row, report)) late_.insert(row);
  }
  limitLate_ = limitLate_ || isLimitStaged || limitTouched_;
  if (!restoring_.empty()) lateAnswers_.insert(restoring_);
  for (const auto& [path, answer] : person_.answers) {
    if (answer != DamagedAnswer::cancel) lateAnswers_.insert(path);
  }
}

void Session::adoptFiles(const Meaning& after) {
  for (const char* path : kPaths) {
    const bool failed = computer_.fileFaults.has(FileOperation::write, path);
    const bool emptied = failed && after.at(path).bytes.empty() && !known_[path].bytes.empty();
    if (emptied) (known_[path].damaged ? rescued_ : torn_).insert(path);
    if (!after.at(path).bytes.empty()) torn_.erase(path);
    if (!torn_.contains(path)) known_[path] = after.at(path);
  }
}

// The pane has loaded what is left of a torn file; when it was only left, not that of the notifications.
void Session::adoptDiscarded(const Meaning& after, const Answers& discarding) {
  for (const char* path : kPaths) {
    const bool stays = path == std::string(kMenu) && discarding.size() > 1;
    if (stays && torn_.contains(path)) continue;
    torn_.erase(path);
    known_[path] = after.at(path);
  }
}

void Session::checkReport(const ChangeReport& report, const Meaning& after, bool wasUnlocked,
                          bool isLeaving) {
  const bool isLate = toolsRun();
  // Without the lock nothing is done, and nothing is looked at.
  const bool isIdle = isLeaving && report.error.code == FailureCode::tryAgain;
  if (report.applied && !isIdle && (restoring_.empty() || report.ok())) checkBaseline(after);
  if (report.applied) disturbed_ = disturbed_ && (isLate || isIdle);
  if (report.ok() && report.applied && restoring_.empty()) checkSaved(wasUnlocked && pane().authorized());
  for (const char* path : kTemporary) {
    if (report.applied && !isLate && computer_.fileSystem.find(path) != nullptr)
      problem(std::string("left behind: ") + path);
  }
  if (!report.ok() && (report.error.sentence.empty() || report.error.sentence.back() != '.'))
    problem("no sentence: " + report.error.sentence);
  if (report.ok() && report.applied) ++tally_.saved;
  if (!report.ok()) ++tally_.failed[report.error.code];
}

bool Session::mayChange(const Setting& row, const ChangeReport& report) {
  if (touched_.contains(&row) || late_.contains(&row) || row.followed) return true;
  // With several users at once there is only one action.
  const bool isAction = &row == serverRow(&NVKServerPrefs::m_admin_loginAct);
  if (isAction && touched_.contains(serverRow(&NVKServerPrefs::m_admin_multiUser))) return true;
  const auto settings = paneSettings(interface_, pane());
  const PaneSetting* setting = settingOfRow(settings, pane(), row);
  if (setting == nullptr) return false;
  const bool isSaid = std::ranges::any_of(report.warnings, [&](const std::string& text) {
    return text.find(setting->name()) != std::string::npos;
  });
  return isSaid || std::ranges::any_of(report.changes, [&](const SettingChange& change) {
           const auto known = std::ranges::find(settings, change.name, &PaneSetting::name);
           return known != settings.end() && rowOfSetting(pane(), *known) == &row && !change.because.empty();
         });
}

bool Session::isKept(const std::string& path, const std::string& bytes) {
  for (const std::string& place : {path, computer_.settingsFiles.placeOf(path)}) {
    for (int number = 1; number < 40; ++number) {
      const auto file = computer_.fileSystem.find(setAsidePath(place, number));
      if (file != nullptr && file->bytes == bytes) return true;
    }
  }
  return false;
}

void Session::checkFile(const std::string& path, const FileMeaning& before, const FileMeaning& after,
                        const ChangeReport& report) {
  if (before.bytes == after.bytes) return;
  const bool failedWrite = computer_.fileFaults.has(FileOperation::write, path) && after.bytes.empty();
  if (failedWrite || (torn_.contains(path) && after.bytes.empty())) return;
  const bool asked = restoring_ == path || lateAnswers_.contains(path) ||
                     (person_.answers.contains(path) && person_.answers[path] != DamagedAnswer::cancel);
  const bool isHidden = before.exists && hasFault(path);
  if (isHidden && computer_.fileFaults.has(FileOperation::openRead, path))
    problem("written over unread: " + path);
  if (before.damaged || isHidden) {
    if (!asked) problem("written over without a question: " + path);
    if (before.damaged && !isHidden && !isKept(path, before.bytes)) problem("bytes are gone: " + path);
    return;
  }
  if (after.damaged) return problem("damaged by a save: " + path);
  if (rescued_.erase(path) > 0) return;
  for (const auto& [row, value] : before.values) {
    const int64_t now = after.values.at(row);
    if (now != value && !mayChange(*row, report))
      problem("overwritten: " + path + " " + row->key + " " + std::to_string(value) + " by " +
              std::to_string(now));
  }
  if (before.foreign != after.foreign) problem("foreign keys changed: " + path);
  const bool mayCut = std::ranges::any_of(
      report.warnings, [](const std::string& text) { return text.find("short") != std::string::npos; });
  if (!mayCut && before.lines != after.lines) problem("lines changed: " + path);
  if (before.limit != after.limit && !limitTouched_ && !limitLate_) problem("limit changed");
}

void Session::checkFiles(const Meaning& after, const ChangeReport& report) {
  for (const char* path : kPaths) checkFile(path, known_[path], after.at(path), report);
}

void Session::checkWishes(const std::vector<Wish>& before, bool limitStaged) {
  const bool followsNow = pane().new_user_imgDefs() == 1;
  const Setting* action = serverRow(&NVKServerPrefs::m_admin_loginAct);
  for (const Wish& wish : before) {
    if (person_.theirs.contains(wish.name)) continue;
    if (wish.row->followed && followsNow && person_.theirs.contains("user.image.defaults")) continue;
    // With several users at once there is only one action.
    if (wish.row == action) continue;
    if (wish.row->pendingValue(pane()) != wish.value)
      problem("the edit is gone: " + wish.name + " " + std::to_string(wish.value) + " is " +
              std::to_string(wish.row->pendingValue(pane())));
  }
  if (!limitStaged || !pane().authorized() || person_.theirs.contains(kOpenFilesLimitName)) return;
  const std::pair<long long, long long> stored = meaningOf(computer_, kLaunchd).limit;
  const NVKServerLimit& limit = pane().m_admin_maxFiles.launchd;
  if (!pane().maxFilesChanged() && stored != std::pair<long long, long long>(limit.soft, limit.hard))
    problem("the staged limit is gone");
}

void Session::checkBaseline(const Meaning& files) {
  for (const auto& [path, file] : files) {
    if (file.damaged || hasFault(path) || torn_.contains(path) || rescued_.contains(path)) continue;
    for (const auto& [row, value] : file.values) {
      if (row->baseline(pane()) != value)
        problem("the pane believes " + path + " " + row->key + " is " +
                std::to_string(row->baseline(pane())) + ", not " + std::to_string(value));
    }
  }
}

void Session::checkSaved(bool unlocked) {
  for (const SettingChange& change : change_->pending()) problem("still pending: " + change.name);
  for (const auto& [path, file] : meaningOf(computer_)) {
    if (file.damaged || hasFault(path) || torn_.contains(path) || rescued_.contains(path)) continue;
    for (const auto& [row, value] : file.values) {
      const bool counts = unlocked || path == std::string(kAgent);
      if (counts && !isFollowing(pane(), *row) && row->pendingValue(pane()) != value)
        problem("not saved: " + path + " " + row->key);
    }
  }
}

void Session::checkLeftovers() {
  if (computer_.locks.isHeld() && !toolsRun()) problem("the lock is held");
  for (const std::string& stream : computer_.files.openStreams()) problem("open: " + stream);
  if (computer_.runLoop.timers().size() != 1) problem("timers are left");
  if (computer_.authorization.references().size() != (pane().authorized() ? 1u : 0u))
    problem("authorizations are left");
  if (__main_pane != pane_.get()) problem("another main pane");
}

// ---- Preview, and the pane's own sequence

void Session::preview() {
  const auto controls = [this] {
    std::vector<std::tuple<int, double, int64_t, std::string, bool, std::string>> states;
    for (Control* control : pane().outlets())
      states.emplace_back(control->state(), control->doubleValue(), control->indexOfSelectedItem(),
                          control->stringValue(), control->isEnabled(), control->title());
    return states;
  };
  pane().onStateTimer();
  const auto before = controls();
  const Platform* installed = installedPlatform();
  effects_.clear();
  change_->preview();
  if (controls() != before) problem("a preview changed controls");
  if (installedPlatform() != installed) problem("a preview changed the platform");
  if (!effects_.empty()) problem("a preview did: " + effects_[0]);
  settleLate();
  checkFiles(meaningOf(computer_), ChangeReport());
}

bool Session::isUndisturbed() {
  const bool allRead = std::ranges::none_of(known_, [](const auto& file) { return file.second.damaged; });
  return isCalm_ && !disturbed_ && allRead;
}

void Session::checkPreview(const Preview& preview, const ChangeReport& report) {
  if (!report.applied) return;
  Names files;
  for (const char* path : kPaths) {
    if (std::ranges::count(preview.files, path) > 0) files.emplace_back(path);
  }
  if (files.size() != preview.files.size()) problem("a preview names a file that there is not");
  Names previewed, ran;
  for (const Launch& launch : preview.commands) previewed.push_back(launch.tool);
  for (const CommandOutcome& command : report.commands) ran.push_back(command.launch.tool);
  // A person may have chosen to restart the computer at once.
  std::erase(ran, std::string("/sbin/reboot"));
  if (previewed != ran) problem("a preview named other commands");
  if (preview.told != report.told) problem("a preview named others that are told");
  Names wanted, saved;
  for (const SettingChange& change : preview.changes) wanted.push_back(change.name + change.from + change.to);
  for (const SettingChange& change : report.changes) saved.push_back(change.name + change.from + change.to);
  if (wanted != saved) problem("a preview named other changes");
}

Undisturbed Session::recorded() {
  Undisturbed record;
  record.before = meaningOf(computer_);
  for (Control* control : pane().outlets()) {
    record.controls[std::string(control->name())] = {control->state(), control->doubleValue(),
                                                     control->indexOfSelectedItem(), control->stringValue()};
  }
  record.limits = pane().m_admin_maxFiles;
  record.authorized = pane().authorized();
  record.needsReboot = pane().m_needReboot;
  record.runs = computer_.service.daemonRuns();
  return record;
}

// The effects of a bare pane in the same state, when Apply is pressed.
Names Session::effectsAlone(SimulatedComputer& twin, const Undisturbed& apply) {
  Names effects;
  NVKServerPrefs bare(interface_);
  bare.awakeFromNib();
  if (apply.authorized) bare.buttonClicked(bare.ib_button_Auth);
  for (const auto& [name, state] : apply.controls) {
    Control& control = *bare.outlet(name);
    control.setState(std::get<0>(state));
    control.setDoubleValue(std::get<1>(state));
    control.selectItemAtIndex(std::get<2>(state));
    control.setStringValue(std::get<3>(state));
  }
  bare.m_admin_maxFiles = apply.limits;
  bare.m_needReboot = apply.needsReboot;
  bare.onStateTimer();
  twin.effects.setSink([&](EffectKind kind, const std::string& line) {
    if (kind != EffectKind::alert) effects.push_back(line);
  });
  bare.buttonClicked(bare.ib_button_Apply);
  twin.effects.setSink(nullptr);
  bare.destroy();
  return effects;
}

void Session::repeatOnATwin(const Undisturbed& apply) {
  SimulatedComputer twin;
  twin.processes.add(kAgentProcess);
  if (apply.runs) twin.service.setDaemon(900);
  for (const auto& [path, file] : apply.before) {
    if (!file.bytes.empty()) twin.fileSystem.put(path, file.bytes);
  }
  for (const int answer : apply.answers) twin.alerts.addAnswer(answer);
  installPlatform(&twin.platform());
  const Names effects = effectsAlone(twin, apply);
  installPlatform(nullptr);
  ++tally_.repeated;
  if (effects != apply.effects) {
    problem("the pane alone does something else");
    for (const std::string& line : effects) problem("  alone: " + line);
    for (const std::string& line : apply.effects) problem("  with:  " + line);
  }
  for (const auto& [path, file] : meaningOf(twin)) {
    if (file.bytes != apply.after.at(path).bytes) problem("the pane alone leaves something else in " + path);
  }
}

// ---- The sessions

void Session::run() {
  static const Step kKinds[] = {
      {"edit", 40, false, &Session::edit},
      {"apply", 20, false, &Session::apply},
      {"write elsewhere", 14, false, &Session::writeElsewhere},
      {"watch", 8, false, &Session::watch},
      {"take back", 5, false, &Session::takeBack},
      {"preview", 4, false, &Session::preview},
      {"lock", 5, false, &Session::clickLock},
      {"leave", 4, false, &Session::leave},
      {"lose rights", 1, false, &Session::loseRights},
      {"reopen", 1, false, &Session::reopen},
      {"time", 4, false, &Session::passTime},
      {"damage", 6, true, &Session::damage},
      {"restore", 3, true, &Session::restore},
      {"fail to read", 4, true, &Session::failRead},
      {"fail to write", 5, true, &Session::failWrite},
      {"tool", 8, true, &Session::failTool},
      {"hold the lock", 4, true, &Session::holdLock},
      {"peers", 2, true, &Session::gonePeers},
  };
  unsigned all = 0;
  for (const Step& step : kKinds) all += step.weight;
  for (int i = 0; i < kSteps && problems_.empty(); ++i) {
    std::size_t at = random_.below(all);
    const Step* step = kKinds;
    while (at >= step->weight) at -= (step++)->weight;
    if (step->fails && isCalm_) continue;
    steps_.emplace_back(step->name);
    settleLate();
    (this->*step->run)();
    checkLeftovers();
  }
  close();
  for (const Undisturbed& apply : undisturbed_) {
    if (problems_.empty()) repeatOnATwin(apply);
  }
}

unsigned numberIn(const char* variable, unsigned otherwise) {
  const char* text = std::getenv(variable);
  return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

TEST(SettingsChangeRandomTest, EveryPromiseHoldsInEverySession) {
  const InterfaceDescription interface = shippedInterface();
  const unsigned first = numberIn("NORVIK_CHANGE_SEED", 1);
  const unsigned count = numberIn("NORVIK_CHANGE_SESSIONS", kQuickSessions);
  Tally tally;
  for (unsigned seed = first; seed < first + count; ++seed) {
    Session session(seed, interface, tally);
    session.run();
    ASSERT_TRUE(session.problems().empty()) << "seed " << seed << session.told();
  }
  if (count < kQuickSessions) return;
  EXPECT_GT(tally.saved, 150);
  EXPECT_GT(tally.repeated, 50);
  EXPECT_GT(tally.collisions, 5);
  EXPECT_GT(tally.takenOver, 50);
  for (const FailureCode code : {FailureCode::wrongValue, FailureCode::damaged, FailureCode::notWritten,
                                 FailureCode::tryAgain, FailureCode::server, FailureCode::notAllowed}) {
    EXPECT_GT(tally.failed[code], 0) << codeWord(code);
  }
}

}  // namespace
}  // namespace norvik
