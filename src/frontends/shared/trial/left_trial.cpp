// Found, taken back, let go of.
#include "src/frontends/shared/trial/left_trial.h"

#include <utility>

#include "src/server/mac/text/join.h"

namespace norvik {

WindowMessage takeBackLeft(Trials& trials, UserState& state,
                           const std::function<TrialReturn(const Trial& left)>& takeBack) {
  if (const std::string damage = trials.damage(); !damage.empty())
    return {MessageKind::warning, damage, {}, {}};
  const auto left = trials.abandoned();
  if (!left) return {};
  const TrialReturn back = takeBack(*left);
  std::vector<std::string> sentences = sentencesOf(*left, back, state);
  if (!back.isBack) {
    trials.leave();
    return {MessageKind::warning, joined(sentences, " "), {MessageAction::revert, MessageAction::keep}, {}};
  }
  if (std::string warning = trials.end(); !warning.empty()) sentences.push_back(std::move(warning));
  return {MessageKind::done, joined(sentences, " "), {}, {}};
}

}  // namespace norvik
