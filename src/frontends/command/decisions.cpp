// The answers are in the order of the question's row.
#include "src/frontends/command/decisions.h"

#include "src/frontends/command/ending.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

constexpr DamagedAnswer kAnswers[] = {DamagedAnswer::cancel, DamagedAnswer::restore, DamagedAnswer::replace};

Question questionAbout(const FileFinding& file) {
  const std::string copy = file.copyTime.empty() ? translated("There is no copy of it to restore.")
                                                 : sentence("A copy of it was kept at {1}.", {file.copyTime});
  return {
      findQuestion(kDamagedQuestion),
      translated("A settings file is damaged"),
      file.sentence + "\n" +
          joinedSentences(copy, translated("Saving begins with that copy, or without anything of the file; "
                                           "what it holds now is kept beside it in both cases.")),
      {translated("Cancel"), translated("Restore the Copy"), translated("Replace the File")},
      std::nullopt};
}

}  // namespace

std::optional<std::vector<Side>> Decisions::resolve(const std::vector<Collision>& collisions) {
  for (const Collision& collision : collisions) {
    warnings_.push_back(
        sentence("Somebody else has just changed {1} from {2} to {3}; it was made {4} all the same.",
                 {collision.name, collision.loaded, collision.theirs, collision.yours}));
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
  ChangeError error = failure(
      FailureCode::damaged, joinedSentences(file.sentence, translated("Nothing was changed.")), file.setting);
  const char* replace = "--answer damaged=replace";
  error.advice =
      file.copyTime.empty()
          ? sentence("There is no copy of it. Repair it, or use {1} to begin without anything of it.",
                     {replace})
          : sentence(
                "Repair it, or use {1} to begin with its copy of {2}, or {3} to begin without anything of it.",
                {"--answer damaged=restore", file.copyTime, replace});
  return error;
}

}  // namespace norvik::command
