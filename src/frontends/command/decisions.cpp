// The answers are in the order of the question's row.
#include "src/frontends/command/decisions.h"

#include "src/frontends/command/ending.h"

namespace norvik::command {

namespace {

constexpr DamagedAnswer kAnswers[] = {DamagedAnswer::cancel, DamagedAnswer::restore, DamagedAnswer::replace};

Question questionAbout(const FileFinding& file) {
  const std::string copy = file.copyTime.empty() ? "There is no copy of it to restore."
                                                 : "A copy of it was kept at " + file.copyTime + ".";
  return {findQuestion(kDamagedQuestion),
          "A settings file is damaged",
          file.sentence + "\n" + copy +
              " Saving begins with that copy, or without anything of the file; what it " +
              "holds now is kept beside it in both cases.",
          {"Cancel", "Restore the Copy", "Replace the File"},
          std::nullopt};
}

}  // namespace

std::optional<std::vector<Side>> Decisions::resolve(const std::vector<Collision>& collisions) {
  for (const Collision& collision : collisions) {
    warnings_.push_back("Somebody else has just changed " + collision.name + " from " + collision.loaded +
                        " to " + collision.theirs + "; it was made " + collision.yours + " all the same.");
  }
  return std::vector<Side>(collisions.size(), Side::mine);
}

DamagedAnswer Decisions::decideDamaged(const FileFinding& file) {
  const auto known = decided_.find(file.file);
  if (known != decided_.end()) return known->second;
  const DamagedAnswer answer = kAnswers[questions_.ask(questionAbout(file)).value_or(0)];
  decided_.emplace(file.file, answer);
  return answer;
}

ChangeError damagedError(const FileFinding& file) {
  ChangeError error = failure(FailureCode::damaged, file.sentence + " Nothing was changed.", file.setting);
  const std::string replace = "--answer damaged=replace to begin without anything of it";
  error.advice = file.copyTime.empty()
                     ? "There is no copy of it. Repair it, or use " + replace + "."
                     : "Repair it, or use --answer damaged=restore to begin with its copy of " +
                           file.copyTime + ", or " + replace + ".";
  return error;
}

}  // namespace norvik::command
