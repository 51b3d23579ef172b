// norvikctl check: the ladder of "can they reach me?" for each service, once or until they can.
#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/table.h"
#include "src/frontends/shared/qr/qr_code.h"
#include "src/frontends/shared/reach/ladder.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;
using Reached = std::vector<ServiceReach>;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kBetweenLooks{1000};
constexpr std::size_t kRungIndent = 2;

struct VerdictWords {
  const char* forPerson;
  const char* forScript;
};

// In the order of the verdicts.
constexpr VerdictWords kVerdicts[] = {
    {"yes", "passes"}, {"no", "fails"}, {"not known", "not-known"}, {"-", "not-looked-at"}};
constexpr const char* kReach[] = {"reachable", "not-reachable", "not-known", "switched-off"};

const VerdictWords& wordsOf(Verdict verdict) {
  return kVerdicts[static_cast<std::size_t>(verdict)];
}

Json textOrNull(const std::string& text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

Json rungJson(const RungResult& rung) {
  const RungRow& row = rungs()[static_cast<std::size_t>(rung.rung)];
  return {{"rung", row.key},
          {"question", row.title},
          {"verdict", wordsOf(rung.verdict).forScript},
          {"text", textOrNull(rung.sentence)},
          {"advice", textOrNull(rung.advice)}};
}

Json addressJson(const OfferedAddress& offered) {
  return {{"address", offered.address.text},    {"text", offered.text},
          {"network", offered.address.network}, {"device", offered.address.device},
          {"usable", offered.isUsable},         {"accepts", offered.accepts}};
}

Json reachJson(const ServiceReach& service) {
  Json result{{"reach", kReach[static_cast<std::size_t>(service.reach)]},
              {"port", service.port},
              {"address", textOrNull(service.address)},
              {"text", reachSentence(service)},
              {"failed", nullptr},
              {"rungs", Json::array()},
              {"addresses", Json::array()}};
  if (const RungResult* failed = service.failed()) result["failed"] = rungJson(*failed)["rung"];
  for (const RungResult& rung : service.rungs) result["rungs"].push_back(rungJson(rung));
  for (const OfferedAddress& offered : service.addresses) result["addresses"].push_back(addressJson(offered));
  return result;
}

void writeRungs(std::ostream& out, const ServiceReach& service) {
  std::vector<TableRow> rows;
  for (const RungResult& rung : service.rungs) {
    const RungRow& row = rungs()[static_cast<std::size_t>(rung.rung)];
    rows.push_back({wordsOf(rung.verdict).forPerson, rung.sentence.empty() ? row.title : rung.sentence});
    if (!rung.advice.empty()) rows.push_back({"", rung.advice});
  }
  writeTable(out, rows, kRungIndent);
}

void writeAddresses(std::ostream& out, const ServiceReach& service) {
  std::vector<TableRow> rows;
  for (const OfferedAddress& offered : service.addresses) {
    if (offered.isUsable) rows.push_back({offered.text, offered.address.network, offered.address.device});
  }
  if (rows.empty()) return;
  out << "  Addresses:\n";
  writeTable(out, rows, 2 * kRungIndent);
}

void write(std::ostream& out, const Reached& services, bool withCode) {
  for (const ServiceReach& service : services) {
    out << (&service == &services.front() ? "" : "\n") << reachSentence(service) << '\n';
    if (service.reach == Reach::switchedOff) continue;
    writeRungs(out, service);
    writeAddresses(out, service);
    const auto code =
        withCode && service.reach == Reach::reachable ? qrCodeOf(service.address) : std::nullopt;
    if (code) out << inBlocks(*code);
  }
}

// Those that count: a service that is off was switched off by choice, unless it was asked for or all are.
Reached countedFor(const Reached& services, const Arguments& named) {
  Reached on;
  std::ranges::copy_if(services, std::back_inserter(on),
                       [](const ServiceReach& service) { return service.reach != Reach::switchedOff; });
  return named.empty() && !on.empty() ? on : services;
}

// The topmost question that keeps clients out. A server on its way up or down does not run yet.
ExitStatus statusOf(const Reached& services) {
  int status = kExitOk;
  for (const ServiceReach& service : services) {
    const Rung rung = service.failed() != nullptr ? service.failed()->rung : Rung::running;
    if (service.reach == Reach::reachable) continue;
    const int own = rungs()[static_cast<std::size_t>(rung)].exitStatus;
    if (status == kExitOk || own < status) status = own;
  }
  return static_cast<ExitStatus>(status);
}

Reached look(const Context& context, NVKServerPrefs& pane, const Arguments& named) {
  const ReachQuestion question = reachQuestion(pane, context.interface, context.services.computer);
  Reached services = climb(question, context.services.computer.network);
  std::erase_if(services, [&named](const ServiceReach& service) {
    return !named.empty() && std::ranges::count(named, service.key) == 0;
  });
  return services;
}

}  // namespace

ExitStatus checkReach(const Context& context, const CommandLine& line) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  Reached services = look(context, session.pane(), line.arguments);
  const auto end = Clock::now() + line.waitForReach;
  const auto isDone = [&] {
    return statusOf(countedFor(services, line.arguments)) == kExitOk || Clock::now() >= end;
  };
  if (!isDone()) {
    context.services.repeat(kBetweenLooks, [&] {
      // Nobody edits this pane, so it may load what others have saved meanwhile.
      session.pane().discardServerAndUserChanges();
      services = look(context, session.pane(), line.arguments);
      return !isDone();
    });
  }
  if (!context.json) write(context.out, services, line.qrCode);
  Json reach;
  for (const ServiceReach& service : services) reach[service.key] = reachJson(service);
  const ExitStatus ended = finish(context.output(), ChangeReport(), {{"reach", reach}});
  return ended != kExitOk ? ended : statusOf(countedFor(services, line.arguments));
}

}  // namespace norvik::command
