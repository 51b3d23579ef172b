// Owns the panes and collects what is printed.
#include "src/frontends/scenario/session.h"

#include <utility>

#include "src/frontends/scenario/arguments.h"
#include "src/frontends/scenario/commands.h"
#include "src/frontends/scenario/known_words.h"

namespace norvik::scenario {

Session::Session(InterfaceDescription shipped) : interface_(std::move(shipped)) {
  installPlatform(&computer.platform());
  // A scenario itself says when the state timer fires, with `tick`.
  computer.runLoop.setFiresInPasses(false);
  computer.effects.setSink([this](EffectKind kind, const std::string& line) {
    if (trace.shows(kind)) effects_.push_back(line);
  });
}

Session::~Session() {
  deallocatePanes();
  installPlatform(nullptr);
}

std::vector<std::string> Session::run(const std::string& words, const std::optional<std::string>& body) {
  effects_.clear();
  output_.clear();
  Arguments arguments(splitWords(words), body);
  const auto command = commandNamed(arguments.word());
  command(*this, arguments);
  arguments.end();
  std::vector<std::string> lines = std::move(effects_);
  lines.insert(lines.end(), output_.begin(), output_.end());
  return lines;
}

std::vector<std::string> Session::leftBehind() const {
  auto authorizations = computer.authorization.references();
  auto timers = computer.runLoop.timers();
  for (const auto& pane : panes_) {
    if (pane == nullptr) continue;
    authorizations.erase(pane->m_authRef);
    timers.erase(pane->m_uiTimer);
  }
  std::vector<std::string> names = computer.files.openStreams();
  for (const auto& [reference, name] : authorizations) names.push_back(name);
  for (const auto& [reference, name] : timers) names.push_back(name);
  return names;
}

void Session::deallocatePanes() {
  panes_.clear();
  current_ = 0;
}

void Session::createPane() {
  panes_.push_back(std::make_unique<NVKServerPrefs>(interface_));
  current_ = panes_.size();
}

void Session::selectPane(std::size_t number) {
  if (number == 0 || number > panes_.size() || panes_[number - 1] == nullptr) {
    throw Malformed("there is no pane " + std::to_string(number));
  }
  current_ = number;
}

void Session::deallocatePane() {
  pane();
  panes_[current_ - 1].reset();
  current_ = 0;
}

NVKServerPrefs& Session::pane() const {
  if (current_ == 0) throw Malformed("there is no pane");
  return *panes_[current_ - 1];
}

std::size_t Session::numberOf(const NVKServerPrefs* pane) const {
  if (pane == nullptr) return 0;
  for (std::size_t i = 0; i < panes_.size(); ++i) {
    if (panes_[i].get() == pane) return i + 1;
  }
  return 0;
}

Control& Session::control(const std::string& name) const {
  if (Control* control = pane().outlet(name)) return *control;
  std::vector<std::string_view> known;
  for (const Control* control : pane().outlets()) known.push_back(control->name());
  throwUnknown("control", name, known);
}

void Session::setTabs(const std::vector<std::string>& labels) {
  std::vector<ControlDescription> controls;
  for (const ControlDescription* control : interface_.controls()) controls.push_back(*control);
  interface_.frame = std::move(controls);
  interface_.tabs.clear();
  for (const std::string& label : labels) interface_.tabs.emplace_back().label = label;
}

}  // namespace norvik::scenario
