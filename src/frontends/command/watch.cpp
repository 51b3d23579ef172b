// norvikctl watch: the status as it changes, by line or by object. The pane's own timer reads the state.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/adapters/services/kept_copies.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/display_width.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/status.h"
#include "src/frontends/shared/server/client_services.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::chrono::milliseconds kPass{250};
constexpr int kPassesBetweenLoads = 4;
constexpr std::size_t kLabelWidth = 16;

// What is in force, looked at only when it can have changed. A port whose owner cannot be seen is tried once
// only, because the program that listens there notices every connection.
class WatchedPorts {
 public:
  const ServerInForce& look(const Context& context, const NVKServerPrefs& pane, bool isTime) {
    std::vector<int64_t> now{pane.m_serverPid};
    for (const ClientService& service : kClientServices) {
      now.push_back(pane.*service.storedState);
      now.push_back(pane.*service.storedPort);
    }
    const bool isSettled = std::ranges::any_of(
        inForce_.services, [](const ServiceInForce& service) { return service.inForce == InForce::accepts; });
    if (now != seen_ || (isTime && !isSettled)) {
      inForce_ = serverInForce(pane, context.interface, context.services.computer.ports);
    }
    seen_ = std::move(now);
    return inForce_;
  }

 private:
  std::vector<int64_t> seen_;
  ServerInForce inForce_;
};

class Watch {
 public:
  Watch(const Context& context, NVKServerPrefs& pane) : context_(context), pane_(pane) {}

  // Looks, and writes what has changed; false where nobody reads it any more.
  bool pass() {
    const bool isTime = passes_++ % kPassesBetweenLoads == 0;
    // Nobody edits this pane, so it may load what others have saved meanwhile.
    if (isTime && passes_ > 1) pane_.discardServerAndUserChanges();
    const ServerInForce& inForce = ports_.look(context_, pane_, isTime);
    if (context_.json) {
      writeObject(inForce);
    } else {
      writeLines(inForce);
    }
    return context_.out.good();
  }

 private:
  void writeObject(const ServerInForce& inForce) {
    Json now = statusJson(pane_, inForce);
    if (now == shownObject_) return;
    Json line{
        {"schema", kSchemaVersion}, {"command", context_.command}, {"ok", true},
        {"error", nullptr},         {"warnings", Json::array()},   {"time", rfc3339(std::time(nullptr))}};
    line.update(now);
    context_.out << line.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
    shownObject_ = std::move(now);
  }

  void writeLines(const ServerInForce& inForce) {
    auto now = statusLines(context_, pane_, inForce);
    for (std::size_t i = 0; i < now.size(); ++i) {
      if (shownLines_.empty() || now[i].text != shownLines_[i].text) writeLine(now[i]);
    }
    shownLines_ = std::move(now);
  }

  void writeLine(const StatusLine& line) {
    const std::time_t time = std::time(nullptr);
    std::tm parts{};
    localtime_r(&time, &parts);
    char clock[16];
    const std::size_t length = std::strftime(clock, sizeof clock, "%T", &parts);
    std::string label = line.label;
    label.append(kLabelWidth - std::min(displayWidth(label), kLabelWidth), ' ');
    context_.out << std::string_view(clock, length) << "  " << label << line.text << std::endl;
  }

  const Context& context_;
  NVKServerPrefs& pane_;
  WatchedPorts ports_;
  int passes_ = 0;
  std::vector<StatusLine> shownLines_;
  Json shownObject_;
};

}  // namespace

ExitStatus watch(const Context& context, const CommandLine& /*line*/) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  Watch watch(context, session.pane());
  context.services.repeat(kPass, [&watch] { return watch.pass(); });
  return kExitOk;
}

}  // namespace norvik::command
