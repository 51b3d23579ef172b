// The computer of the pane in its host: the host application's platform interfaces over the toolkit, all
// others of the computer that it runs on, by that computer's adapter. A plain C++ header.
#pragma once

#include <memory>

#include "src/frontends/prefpane/pane_bundles.h"
#include "src/frontends/prefpane/pane_session.h"

namespace norvik {
struct LinuxComputerOptions;
}

namespace norvik::prefpane {

class PaneComputer {
 public:
  // Installs itself as the platform for as long as it lives. On Linux works on the sandbox that the
  // environment variable NORVIK_ROOT names, or on the system itself if it is empty or not set; on the Mac
  // always on the system.
  PaneComputer();
  explicit PaneComputer(const LinuxComputerOptions& options);  // on Linux only
  ~PaneComputer();
  PaneComputer(const PaneComputer&) = delete;
  PaneComputer& operator=(const PaneComputer&) = delete;

  PaneBundles& bundles();
  // For the sessions of all panes of the process.
  SessionComputer forSession();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace norvik::prefpane
