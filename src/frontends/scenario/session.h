// One scenario while it runs: the computer, the panes that were created on it, and what the current command
// prints.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/simulated/simulated_computer.h"
#include "src/frontends/scenario/trace.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::scenario {

class Session {
 public:
  // Installs the computer. The module keeps state for the life of the process, so a process can run only one
  // session.
  explicit Session(InterfaceDescription shipped);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // The lines that a command prints: its effects, then its own output. Throws Malformed.
  std::vector<std::string> run(const std::string& words, const std::optional<std::string>& body);

  // Adds a line to the current command's output.
  void print(std::string line) { output_.push_back(std::move(line)); }

  // The names of all open streams, and of the authorizations and timers that no pane holds. Between two
  // commands, no rule leaves any of them.
  std::vector<std::string> leftBehind() const;
  // Ends every pane. Their effects are not shown.
  void deallocatePanes();

  // Creates a pane and makes it the current one.
  void createPane();
  // Makes the pane with that number, from 1, the current one; throws Malformed if there is none.
  void selectPane(std::size_t number);
  // Ends the current pane; then there is no current one.
  void deallocatePane();
  // The current pane; throws Malformed if there is none.
  NVKServerPrefs& pane() const;
  bool hasPane() const { return current_ != 0; }
  // The number of a pane; 0 for null.
  std::size_t numberOf(const NVKServerPrefs* pane) const;
  // The current pane's control with that name; throws Malformed if there is none.
  Control& control(const std::string& name) const;

  // Panes created from now on have these tabs. The controls of the shipped tabs stay, outside the new ones.
  void setTabs(const std::vector<std::string>& labels);

  SimulatedComputer computer;
  Trace trace;

 private:
  InterfaceDescription interface_;
  std::vector<std::unique_ptr<NVKServerPrefs>> panes_;
  std::size_t current_ = 0;  // number of the current pane; 0 for none
  std::vector<std::string> effects_;
  std::vector<std::string> output_;
};

}  // namespace norvik::scenario
