// What the host application and the run loop do with a pane.
#include "src/frontends/scenario/commands.h"

namespace norvik::scenario {

namespace {

void create(Session& session, Arguments&) {
  session.createPane();
}

void awake(Session& session, Arguments&) {
  if (!session.hasPane()) session.createPane();
  session.pane().awakeFromNib();
}

void selectPane(Session& session, Arguments& arguments) {
  session.selectPane(arguments.integer<uint32_t>(1));
}

// One or two of the host's calls.
template <auto... calls>
void host(Session& session, Arguments&) {
  NVKServerPrefs& pane = session.pane();
  ((pane.*calls)(), ...);
}

void becomeActive(Session& session, Arguments&) {
  session.computer.application.becomeActive();
}

void tick(Session& session, Arguments& arguments) {
  const int64_t count = arguments.atEnd() ? 1 : arguments.integer(0);
  for (int64_t i = 0; i < count; ++i) {
    const CFRunLoopTimerRef timer = session.hasPane() ? session.pane().m_uiTimer : nullptr;
    if (!session.computer.runLoop.fire(timer)) return session.print("no timer");
  }
}

void dealloc(Session& session, Arguments&) {
  session.deallocatePane();
}

using P = NVKServerPrefs;

constexpr CommandRow kLifeCommands[] = {
    {"create", create},
    {"awake", awake},
    {"pane", selectPane},
    {"will-select", host<&P::willSelect>},
    {"did-select", host<&P::didSelect>},
    {"select", host<&P::willSelect, &P::didSelect>},
    {"will-unselect", host<&P::willUnselect>},
    {"did-unselect", host<&P::didUnselect>},
    {"unselect", host<&P::willUnselect, &P::didUnselect>},
    {"main-view-did-load", host<&P::mainViewDidLoad>},
    {"become-active", becomeActive},
    {"tick", tick},
    {"destroy", host<&P::destroy>},
    {"dealloc", dealloc},
};

}  // namespace

std::span<const CommandRow> lifeCommands() {
  return kLifeCommands;
}

}  // namespace norvik::scenario
