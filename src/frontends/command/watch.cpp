// norvikctl watch: the status line by line, as it changes. The pane's own timer reads the state.
#include <chrono>
#include <ctime>
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/adapters/services/kept_copies.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/progress.h"
#include "src/frontends/command/session.h"
#include "src/frontends/command/status.h"

namespace norvik::command {

namespace {

constexpr std::chrono::milliseconds kPass{250};
constexpr int kPassesBetweenLoads = 4;
constexpr std::size_t kLabelWidth = 16;

std::string timeNow(const char* format) {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  char text[40];
  return {text, std::strftime(text, sizeof text, format, &parts)};
}

void writeLine(const Context& context, const StatusLine& line) {
  if (context.json) {
    const nlohmann::ordered_json json{
        {"time", rfc3339(std::time(nullptr))}, {"what", line.key}, {"text", line.text}};
    context.out << json.dump() << std::endl;
    return;
  }
  std::string label = line.label;
  label.resize(std::max(label.size(), kLabelWidth), ' ');
  context.out << timeNow("%T") << "  " << label << line.text << std::endl;
}

}  // namespace

ExitStatus watch(const Context& context, const CommandLine& /*line*/) {
  Questions questions({}, context.err);
  Progress progress(nullptr);
  Session session(context, questions, progress, RecordingMode::looking);
  NVKServerPrefs& pane = session.pane();
  std::vector<StatusLine> shown;
  int pass = 0;
  context.services.repeat(kPass, [&] {
    // Nobody edits this pane, so it may load what others have saved meanwhile.
    if (pass > 0 && pass % kPassesBetweenLoads == 0) pane.discardServerAndUserChanges();
    ++pass;
    const auto now = statusLines(context, pane);
    for (std::size_t i = 0; i < now.size(); ++i) {
      if (shown.empty() || now[i].text != shown[i].text) writeLine(context, now[i]);
    }
    shown = now;
    return context.out.good();
  });
  return kExitOk;
}

}  // namespace norvik::command
