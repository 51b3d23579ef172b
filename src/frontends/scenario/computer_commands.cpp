// Names, addresses, versions, bundles, windows and answers of the simulated computer.
#include "src/frontends/scenario/commands.h"
#include "src/frontends/scenario/malformed.h"

namespace norvik::scenario {

namespace {

void hostname(Session& session, Arguments& arguments) {
  session.computer.host.setHostName(arguments.textOr("none"));
}

void addresses(Session& session, Arguments& arguments) {
  session.computer.host.setAddresses(arguments.textsOr("none"));
}

void setSystemVersion(Session& session, Arguments& arguments) {
  SimulatedSystemVersion::Parts parts;
  for (auto& part : parts) {
    part = arguments.takes("none") ? std::nullopt : std::optional(arguments.integer<int32_t>());
  }
  session.computer.systemVersion.setParts(parts);
}

void bundle(Session& session, Arguments& arguments) {
  std::optional<std::string> identifier;
  if (!arguments.takes("main")) identifier = arguments.text();
  SimulatedBundles::Info info;
  while (!arguments.atEnd()) {
    const bool isShort = arguments.takes("short");
    if (!isShort && !arguments.takes("version")) throw Malformed("expected short or version");
    info.insert_or_assign(isShort ? "CFBundleShortVersionString" : "CFBundleVersion", arguments.text());
  }
  if (identifier) return session.computer.bundles.setBundle(*identifier, std::move(info));
  session.computer.bundles.setMainBundle(std::move(info));
}

void info(Session& session, Arguments& arguments) {
  if (arguments.takes("none")) return session.computer.bundles.removePaneInfo();
  const std::string key = arguments.text();
  session.computer.bundles.setPaneInfo(key, arguments.text());
}

void resource(Session& session, Arguments& arguments) {
  const std::string name = arguments.text();
  session.computer.bundles.setResourceMissing(name, arguments.takes("none"));
}

void tabs(Session& session, Arguments& arguments) {
  session.setTabs(arguments.texts());
}

void window(Session& session, Arguments& arguments) {
  if (arguments.takes("none")) return session.computer.application.setMainWindow(std::nullopt);
  const double width = arguments.real();
  session.computer.application.setMainWindow(Size{width, arguments.real()});
}

void answer(Session& session, Arguments& arguments) {
  do session.computer.alerts.addAnswer(arguments.integer<int32_t>());
  while (!arguments.atEnd());
}

// `trace +sleep +display -log`; a word without a sign has the sign of the word before it.
void trace(Session& session, Arguments& arguments) {
  char sign = '\0';
  do {
    std::string kind = arguments.word();
    if (kind[0] == '+' || kind[0] == '-') {
      sign = kind[0];
      kind.erase(0, 1);
    }
    if (sign == '\0') throw Malformed("expected + or - before the kind " + kind);
    session.trace.set(kind, sign == '+');
  } while (!arguments.atEnd());
}

constexpr CommandRow kComputerCommands[] = {
    {"hostname", hostname}, {"addresses", addresses}, {"system-version", setSystemVersion},
    {"bundle", bundle},     {"info", info},           {"resource", resource},
    {"tabs", tabs},         {"window", window},       {"answer", answer},
    {"trace", trace},
};

}  // namespace

std::span<const CommandRow> computerCommands() {
  return kComputerCommands;
}

}  // namespace norvik::scenario
