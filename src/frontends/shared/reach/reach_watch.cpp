// The pane is asked on the main thread, the network beside it.
#include "src/frontends/shared/reach/reach_watch.h"

#include <atomic>
#include <utility>

#include "src/frontends/shared/reach/reach_texts.h"

namespace norvik {

namespace {

// All that a look would find different.
std::string signatureOf(const ServerInForce& inForce, int32_t pid) {
  std::string words = std::to_string(pid);
  for (const ServiceInForce& service : inForce.services) {
    words += " " + std::to_string(static_cast<int>(service.inForce)) + " " +
             (service.stored.isOn ? std::to_string(service.stored.port) : "off");
    for (const uint16_t port : service.ports) words += "," + std::to_string(port);
  }
  return words;
}

}  // namespace

// One look, shared with the thread that makes it. It sees the computer's network until it is stopped: from
// then on each question is answered at once, with nothing.
struct ReachWatch::Look : public Network {
  explicit Look(Network& of) : computer(of) {}

  std::vector<NetworkAddress> addresses() override {
    return isStopped ? std::vector<NetworkAddress>() : computer.addresses();
  }
  NameLookup lookUp(const std::string& name, std::chrono::milliseconds limit) override {
    return isStopped ? NameLookup() : computer.lookUp(name, limit);
  }
  bool connects(const std::string& address, uint16_t port, std::chrono::milliseconds limit) override {
    return !isStopped && computer.connects(address, port, limit);
  }
  Firewall firewall(uint16_t port) override { return isStopped ? Firewall() : computer.firewall(port); }

  Network& computer;
  std::atomic<bool> isStopped = false;
  std::vector<ServiceReach> services;  // the answer
};

ReachWatch::ReachWatch(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                       ComputerServices services, RunInBackground background)
    : pane_(pane),
      interface_(interface),
      services_(std::move(services)),
      background_(std::move(background)) {}

ReachWatch::~ReachWatch() {
  stop();
}

void ReachWatch::stop() {
  if (look_ != nullptr) look_->isStopped = true;
  look_.reset();
}

void ReachWatch::follow(const ServerInForce& inForce) {
  const std::string now = signatureOf(inForce, pane_.m_serverPid);
  if (std::exchange(inForce_, now) != now) look();
}

void ReachWatch::look() {
  isOutdated_ = true;
  if (isSeen_ && !isLooking()) begin();
}

void ReachWatch::setSeen(bool isSeen) {
  if (std::exchange(isSeen_, isSeen) == isSeen) return;
  if (!isSeen && isLooking()) {
    stop();
    isOutdated_ = true;
  } else if (isSeen && isOutdated_) {
    begin();
  }
}

void ReachWatch::begin() {
  isOutdated_ = false;
  const auto look = std::make_shared<Look>(services_.network);
  look_ = look;
  if (changed) changed();
  const auto question = std::make_shared<ReachQuestion>(reachQuestion(pane_, interface_, services_));
  background_([question, look] { look->services = climb(*question, *look); },
              [this, look] {
                if (!look->isStopped) end();  // else this may be gone
              });
}

void ReachWatch::end() {
  found_ = std::move(look_->services);
  look_.reset();
  if (changed) changed();
  if (isOutdated_ && isSeen_ && !isLooking()) begin();
}

std::vector<ServiceReach> ReachWatch::known() const {
  const bool isKnown = !isLooking() && !pane_.isServerChanging();
  return isKnown ? found_ : std::vector<ServiceReach>();
}

std::string ReachWatch::line() const {
  return reachLine(pane_.ib_admin_label_svrState.stringValue(), known());
}

}  // namespace norvik
