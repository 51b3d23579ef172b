// A change on trial: put into force, and taken back unless somebody keeps it. It is written to a file of the
// user's before it is put into force, so that a trial whose program did not survive is taken back by the next
// front end that starts.
//
//   Trials trials(state, "window");
//   if (ChangeError error = trials.begin(settings, StopsServer::no, kUsualTrial)) ...   nothing is in force
//   ...apply, and show the countdown...
//   trials.end();                      it is kept, or it was taken back
//
// At the start of a front end:
//   if (const auto trial = trials.abandoned()) ...takeBackTrial, then trials.end()
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/services/user_state.h"
#include "src/frontends/shared/history/change_records.h"

namespace norvik {

inline constexpr const char* kTrialFile = "trial.json";

enum class StopsServer { no, yes };

struct Trial {
  std::string time, until;  // RFC 3339, UTC
  std::string frontEnd;     // that began it
  std::string user;
  std::vector<RecordedSetting> settings;
  StopsServer stopsServer = StopsServer::no;  // the server ran before, and is started to take it back
};

class Trials {
 public:
  // Borrows the state. Main thread only, like the state.
  Trials(UserState& state, std::string frontEnd) : state_(state), frontEnd_(std::move(frontEnd)) {}

  // Writes what is about to be put into force. A failure where that could not be written, or where another
  // trial of this user's lives or was not taken back yet; nothing must be put into force then.
  ChangeError begin(const std::vector<RecordedSetting>& settings, StopsServer stops,
                    std::chrono::seconds length);
  // The trial is kept, or it is taken back. Does nothing where none is held. A sentence for a person where
  // its file could not be removed, so that it would be taken back later all the same; else empty.
  std::string end();
  // Leaves the trial to the next front end that starts, as when it could not be taken back.
  void leave() { mark_.reset(); }

  // The trial that a program of this user's has left, which is this program's from now on until `end` or
  // `leave`. Nothing where there is none, or where its program lives.
  std::optional<Trial> abandoned();
  // What is wrong with the file of a trial, for a person: it is there and cannot be read. Empty for nothing.
  std::string damage();

 private:
  ChangeError notWritten(const std::string& why) const;

  UserState& state_;
  const std::string frontEnd_;
  std::unique_ptr<HeldLock> mark_;  // held for as long as the trial is this program's
};

}  // namespace norvik
