// Orders to the server: start, stop, restart, and take up what is stored. All front ends give them here. The
// pane carries them out as it does for a person at its buttons, and says nothing of what came of it; this is
// what looks before, waits for the tools, looks after and says so. Knows no toolkit. Main thread only.
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/services/computer_services.h"
#include "src/frontends/shared/change/change_report.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/server/in_force.h"

namespace norvik {

enum class ServerOrder { start, stop, restart };

// What a click on a button orders now; nothing for any other control. The start button stops a server that
// runs.
std::optional<ServerOrder> orderOf(const NVKServerPrefs& pane, const Control& button);

// The question before an order that ends connections. The last button gives the order up.
struct OrderQuestion {
  std::string title, message;
  std::vector<std::string> buttons;
};
// Nothing for an order that ends none.
std::optional<OrderQuestion> questionBefore(ServerOrder order);

// Asks that question; true for an order that needs none. Blocks until it is answered.
bool isAgreed(ServerOrder order, AlertPanels& panels);

// What orders work on. Borrows everything; the pane works over `recording`.
struct OrderedServer {
  NVKServerPrefs& pane;
  RecordingPlatform& recording;
  const InterfaceDescription& interface;
  ComputerServices services;
  // Blocks until the tools have ended, at most until the limit; a window paints meanwhile.
  std::function<bool(std::chrono::milliseconds limit)> waitForTools;
  // Blocks for that long in real time; a window paints meanwhile.
  std::function<void(std::chrono::milliseconds time)> pause;
  std::chrono::milliseconds toolLimit{30'000};
};

struct OrderReport {
  ChangeReport change;  // the error with what to do about it, warnings, commands
  std::string note;     // where less was done than was ordered, as noteBefore has it
  int32_t before = -1;  // the server's process, -1 for none
  int32_t after = -1;
  ServerInForce inForce;  // after

  bool ok() const { return change.ok(); }
};

// Why no order can be carried out on a computer without the server's tool; none where it is there.
ChangeError installationError(SettingsFiles& files);
// The controls that can be used, and make sense, only where there is a server.
std::array<const Control*, 5> serversOwn(const NVKServerPrefs& pane);

// What a person should know beforehand: "The server is already running."; empty where all is as expected.
std::string noteBefore(ServerOrder order, const NVKServerPrefs& pane);

// Whether there is nothing to do, so that no rights are needed.
bool isFulfilled(ServerOrder order, const NVKServerPrefs& pane);

// Carries the order out; blocks for as long as the pane does, and until the tools have ended. Does not ask.
// The pane's lock has to be open unless the order is fulfilled. The order fails where the server is not
// installed, where a tool was refused, failed or does not end, where the server does not come up or go down
// in time, and where it runs and clients cannot connect as stored, because somebody else has the port.
OrderReport carryOut(ServerOrder order, OrderedServer& server);

// Has the running server take up what is stored, and waits, for at most five seconds, until it listens on the
// stored ports. Takes the lock of changes. Fails as SettingsChange::takeUp does, and where clients cannot
// connect as stored afterwards. For a server that is stopped there is only a note.
OrderReport takeUp(SettingsChange& change, OrderedServer& server);

// The first reason why clients cannot connect as it is stored, for a server that should have taken it up.
// None where nothing is known, and while the server is stopped.
ChangeError connectionError(const ServerInForce& inForce);

}  // namespace norvik
