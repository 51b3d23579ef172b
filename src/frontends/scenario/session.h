// One scenario while it runs: the computer, the panes that were created on it, and what the present command
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
  // Installs the computer. The module keeps state for the life of the process, so a process is for one
  // session.
  explicit Session(InterfaceDescription shipped);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // The lines that a command prints: its effects, then its own output. Throws Malformed.
  std::vector<std::string> run(const std::string& words, const std::optional<std::string>& body);

  // Adds a line to the present command's output.
  void print(std::string line) { output_.push_back(std::move(line)); }

  // What is open on the computer, or held there by no pane, each by its name: streams, authorizations,
  // timers. Between two commands no rule leaves anything of it.
  std::vector<std::string> leftBehind() const;
  // Ends every pane. What they do to the computer is shown nowhere.
  void deallocatePanes();

  // Makes a pane and makes it the current one.
  void createPane();
  // Makes the pane of that number, from 1, the current one; throws Malformed where there is none.
  void selectPane(std::size_t number);
  // Ends the current pane; there is no current one then.
  void deallocatePane();
  // The current pane; throws Malformed where there is none.
  NVKServerPrefs& pane() const;
  bool hasPane() const { return current_ != 0; }
  // The number of a pane; 0 for null.
  std::size_t numberOf(const NVKServerPrefs* pane) const;
  // The current pane's control of that name; throws Malformed where there is none.
  Control& control(const std::string& name) const;

  // Panes made from now on have these tabs. The controls of the shipped ones stay, outside of them.
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
