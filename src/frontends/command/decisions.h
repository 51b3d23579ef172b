// What the change transaction asks of a person, put to the terminal or answered by options.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "src/frontends/command/questions.h"
#include "src/frontends/shared/change/settings_change.h"

namespace norvik::command {

class Decisions : public ChangeDecisions {
 public:
  // Borrows both; the warnings are for the person.
  Decisions(Questions& questions, std::vector<std::string>& warnings)
      : questions_(questions), warnings_(warnings) {}

  // The line names the values that it wants, so they are saved, whatever somebody else has made of them
  // meanwhile; and it is said.
  std::optional<std::vector<Side>> resolve(const std::vector<Collision>& collisions) override;
  // Asks once for each file. Cancels where nobody answers.
  DamagedAnswer decideDamaged(const FileFinding& file) override;

 private:
  Questions& questions_;
  std::vector<std::string>& warnings_;
  std::map<std::string, DamagedAnswer> decided_;  // by the file's path
};

// Why a damaged file was not written over, with the ways to answer the question.
ChangeError damagedError(const FileFinding& file);

}  // namespace norvik::command
