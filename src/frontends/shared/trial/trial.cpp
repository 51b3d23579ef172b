// Writes the trial as a JSON object. A lock that ends with the program shows whether it still runs.
#include "src/frontends/shared/trial/trial.h"

#include <utility>

#include "src/adapters/services/kept_copies.h"
#include "src/frontends/shared/history/history_lines.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

using TrialJson = nlohmann::ordered_json;

constexpr const char* kTrialKey = "norvikTrial";
constexpr int kTrialVersion = 1;
// The lock that says that a trial lives; not that of its file, which is held while the file is written.
constexpr const char* kTrialMark = "trial";

std::string bytesOf(const Trial& trial) {
  const TrialJson object{{kTrialKey, kTrialVersion},
                         {"time", trial.time},
                         {"until", trial.until},
                         {"frontEnd", trial.frontEnd},
                         {"user", trial.user},
                         {"settings", recordedJson(trial.settings)},
                         {"stopsServer", trial.stopsServer == StopsServer::yes}};
  return object.dump(2, ' ', false, TrialJson::error_handler_t::replace) + "\n";
}

std::string textOr(const TrialJson& object, const char* key) {
  const auto found = object.find(key);
  return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

std::optional<Trial> trialIn(const std::string& bytes) {
  const TrialJson object = TrialJson::parse(bytes, nullptr, false);
  if (!object.is_object() || !object.contains(kTrialKey) || object[kTrialKey] != kTrialVersion)
    return std::nullopt;
  auto settings = object.contains("settings") ? recordedIn(object["settings"]) : std::nullopt;
  const auto stops = object.find("stopsServer");
  if (!settings || stops == object.end() || !stops->is_boolean()) return std::nullopt;
  return Trial{textOr(object, "time"),     textOr(object, "until"),
               textOr(object, "frontEnd"), textOr(object, "user"),
               std::move(*settings),       stops->get<bool>() ? StopsServer::yes : StopsServer::no};
}

}  // namespace

ChangeError Trials::notWritten(const std::string& why) const {
  return failure(FailureCode::notWritten,
                 sentence("The trial could not be written to {1}: {2}. Nothing was changed.",
                          {state_.placeOf(kTrialFile), why}));
}

ChangeError Trials::begin(const std::vector<RecordedSetting>& settings, StopsServer stops,
                          std::chrono::seconds length) {
  mark_ = state_.hold(kTrialMark);
  if (mark_ == nullptr) {
    const std::string why = state_.update(kTrialFile, [](const std::string&) { return std::nullopt; });
    if (!why.empty()) return notWritten(why);
    return failure(FailureCode::tryAgain, translated("Another change is on trial. Nothing was changed."));
  }
  const std::time_t now = state_.now();
  const Trial trial{rfc3339(now), rfc3339(now + length.count()), frontEnd_, state_.userName(), settings,
                    stops};
  bool isTaken = false;
  const std::string why =
      state_.update(kTrialFile, [&](const std::string& bytes) -> std::optional<std::string> {
        isTaken = trialIn(bytes).has_value();
        return isTaken ? std::nullopt : std::optional(bytesOf(trial));
      });
  if (why.empty() && !isTaken) return {};
  mark_.reset();
  if (!why.empty()) return notWritten(why);
  return failure(FailureCode::tryAgain,
                 translated("A change that was on trial before is not taken back yet. Nothing was changed."));
}

std::string Trials::end() {
  if (mark_ == nullptr) return "";
  const bool isRemoved = state_.remove(kTrialFile);
  mark_.reset();
  return isRemoved ? ""
                   : sentence("{1} could not be removed; what it names is taken back at the next start.",
                              {state_.placeOf(kTrialFile)});
}

std::optional<Trial> Trials::abandoned() {
  if (mark_ != nullptr || state_.read(kTrialFile).kind != FileKind::regular) return std::nullopt;
  mark_ = state_.hold(kTrialMark);
  // It may have been kept between the two looks.
  auto trial = mark_ != nullptr ? trialIn(state_.read(kTrialFile).bytes) : std::nullopt;
  if (!trial) mark_.reset();
  return trial;
}

std::string Trials::damage() {
  const FileContent content = state_.read(kTrialFile);
  if (content.kind == FileKind::missing || trialIn(content.bytes)) return "";
  return sentence("{1} is no record of a change on trial, so nothing is taken back. Remove it.",
                  {state_.placeOf(kTrialFile)});
}

}  // namespace norvik
