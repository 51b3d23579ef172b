// Looked for by a delay of the run loop. A trial that stays in force may be kept or taken back by its
// message.
#include "src/frontends/prefpane/pane_trial.h"
#include "src/frontends/prefpane/run_loop_sources.h"
#include "src/frontends/shared/trial/left_trial.h"
#include "src/frontends/shared/trial/trial_texts.h"

namespace norvik::prefpane {

struct PaneTrial::Parts {
  MainView& view;
  PaneChanges& changes;
  PaneServer& server;
  UserState& state;
  Platform& computer;
  Trials trials{state, "pane"};
  bool hasLooked = false;
  Delay look{[this] {
    hasLooked = true;
    takeBack();
  }};

  void show(const WindowMessage& message) {
    view.messages().show(MessageSubject::trial, withLabels(message, view.interface()));
    view.refresh();
  }

  // An empty message takes the one before away: somebody else has taken it back.
  void takeBack() {
    show(takeBackLeft(trials, state, [this](const Trial& left) {
      return changes.takeBack(left, server.ordered(), computer);
    }));
  }

  void keep() {
    trials.abandoned();  // its file is to go
    const std::string warning = trials.end();
    const MessageKind kind = warning.empty() ? MessageKind::done : MessageKind::warning;
    show({kind, warning.empty() ? translated(trial_texts::kKept) : warning, {}, {}});
  }
};

PaneTrial::PaneTrial(MainView& view, PaneChanges& changes, PaneServer& server, UserState* state,
                     Platform& computer) {
  if (state == nullptr) return;
  parts_ = std::unique_ptr<Parts>(new Parts{view, changes, server, *state, computer});
  changes.onTrial = [parts = parts_.get()](MessageAction action) {
    action == MessageAction::keep ? parts->keep() : parts->takeBack();
  };
}

PaneTrial::~PaneTrial() {
  if (parts_ != nullptr) parts_->changes.onTrial = nullptr;
}

void PaneTrial::setSeen(bool isSeen) {
  if (parts_ == nullptr || parts_->hasLooked) return;
  isSeen ? parts_->look.start(0) : parts_->look.stop();
}

}  // namespace norvik::prefpane
