// Each question is an operation; the ladder is a table of them.
#include "src/frontends/shared/reach/ladder.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/reach/address_use.h"
#include "src/frontends/shared/server/client_services.h"
#include "src/frontends/shared/server/server_order.h"
#include "src/server/mac/ui/addresses.h"

namespace norvik {

namespace {

constexpr int64_t kHighestPort = 65535;
constexpr std::chrono::milliseconds kNameLimit{2000};
constexpr std::chrono::milliseconds kConnectionLimit{500};

// clang-format off
constexpr RungRow kRungs[] = {
    {Rung::installed,  "installed",   english("The server is installed"),               10},
    {Rung::running,    "running",     english("The server runs"),                       11},
    {Rung::switchedOn, "switched-on", english("The service is switched on"),            12},
    {Rung::inForce,    "in-force",    english("What is stored is in force"),            13},
    {Rung::listening,  "listening",   english("The server listens on the port"),        14},
    {Rung::address,    "address",     english("This computer has an address for others"), 15},
    {Rung::hostName,   "host-name",   english("Its name leads to that address"),        16},
    {Rung::connection, "connection",  english("Connections are accepted"),              17},
    {Rung::firewall,   "firewall",    english("The firewall lets them in"),             18},
};
// clang-format on

constexpr bool inTheOrderOfTheRungs() {
  for (std::size_t i = 0; i < std::size(kRungs); ++i) {
    if (kRungs[i].rung != static_cast<Rung>(i)) return false;
  }
  return std::size(kRungs) == static_cast<std::size_t>(Rung::firewall) + 1;
}
static_assert(inTheOrderOfTheRungs(), "every rung has one row, in the order of the ladder");

// What an answer says, before it is known which question it answers.
struct Answer {
  Verdict verdict;
  std::string sentence;
  std::string advice;
};

Answer yes(std::string sentence, std::string advice = "") {
  return {Verdict::passes, std::move(sentence), std::move(advice)};
}
Answer no(std::string sentence, std::string advice) {
  return {Verdict::fails, std::move(sentence), std::move(advice)};
}
Answer notKnown(std::string sentence, std::string advice = "") {
  return {Verdict::notKnown, std::move(sentence), std::move(advice)};
}

class Climb {
 public:
  Climb(const ReachQuestion& question, const ServiceQuestion& asked, Network& network)
      : question_(question), asked_(asked), service_(asked.service), network_(network) {
    result_.key = service_.key;
    result_.title = service_.title;
    result_.port = service_.stored.port;
  }

  ServiceReach result() {
    constexpr Answer (Climb::*kAnswers[])() = {&Climb::installed, &Climb::running,    &Climb::switchedOn,
                                               &Climb::inForce,   &Climb::listening,  &Climb::address,
                                               &Climb::hostName,  &Climb::connection, &Climb::firewall};
    static_assert(std::size(kAnswers) == std::size(kRungs));
    for (std::size_t i = 0; i < std::size(kRungs); ++i) {
      const bool ends = result_.failed() != nullptr || isUnsettled_;
      const Answer answer = ends ? Answer{Verdict::notLookedAt, "", ""} : (this->*kAnswers[i])();
      result_.rungs.push_back({kRungs[i].rung, answer.verdict, answer.sentence, answer.advice});
    }
    result_.reach = reach();
    if (result_.address.empty()) result_.address = bestAddress();
    return std::move(result_);
  }

 private:
  Answer installed() {
    if (question_.installation) return no(question_.installation.sentence, question_.installation.advice);
    return yes(translated("The server is installed."));
  }

  Answer running() {
    isUnsettled_ = question_.isChanging;
    if (isUnsettled_)
      return notKnown(translated("The server is being started or stopped."),
                      translated("Look again in a moment."));
    if (question_.serverPid == -1)
      return no(translated("The server does not run."), translated("Start the server."));
    return yes(sentence("The server runs, process {1}.", {std::to_string(question_.serverPid)}));
  }

  Answer switchedOn() {
    if (service_.stored.isOn) return yes(translated("The service is switched on."));
    return no(translated("The service is switched off."), translated("Switch it on and apply."));
  }

  Answer inForce() {
    const std::string stored = std::to_string(service_.stored.port);
    if (service_.inForce == InForce::listens && !service_.differs())
      return yes(sentence("The server uses port {1}, as it is stored.", {stored}));
    // Another program on the port, and a server that listens nowhere, are the next question's.
    const bool isElsewhere = service_.inForce == InForce::listens || service_.inForce == InForce::elsewhere;
    if (!isElsewhere || service_.takenBy)
      return notKnown(translated("Whether the server has taken up what is stored cannot be seen."));
    std::vector<std::string> ports;
    for (const uint16_t port : service_.ports) ports.push_back(std::to_string(port));
    return no(sentence("Port {1} is stored, but the server listens on {2}.", {stored, allOf(ports)}),
              translated("Apply, so that the server takes up what is stored."));
  }

  Answer listening() {
    const int64_t number = service_.stored.port;
    const std::string port = std::to_string(number);
    if (number < 1 || number > kHighestPort)
      return no(sentence("The number {1} is stored, which is no port.", {port}),
                translated("Choose a port from 1 to 65535 and apply."));
    if (service_.takenBy) {
      return no(sentence("Port {1} is taken by {2}.", {port, holderInWords(*service_.takenBy)}),
                translated("Stop that program, or choose another port and apply."));
    }
    switch (service_.inForce) {
      case InForce::listens:
        return yes(sentence("The server listens on port {1}.", {port}));
      case InForce::accepts:
        return notKnown(
            sentence("A program listens on port {1}; whether it is the server cannot be seen.", {port}));
      case InForce::silent:
      case InForce::refuses:
        return no(sentence("Nothing listens on port {1}.", {port}),
                  translated("Stop the server and start it again."));
      default:
        return notKnown(sentence("Whether the server listens on port {1} cannot be seen.", {port}));
    }
  }

  Answer address() {
    for (NetworkAddress& own : network_.addresses()) {
      const AddressUse use = useOf(own.text);
      if (use == AddressUse::noAddress) continue;
      std::string text = hostAndPort(own.text, service_.stored.port, asked_.standardPort);
      result_.addresses.push_back({std::move(own), std::move(text), use == AddressUse::others, false});
    }
    // Those for others first, and IPv4 before IPv6, which fewer networks carry.
    std::ranges::stable_sort(result_.addresses, {}, [](const OfferedAddress& offered) {
      const bool isIPv6 = offered.address.text.find(':') != std::string::npos;
      return (offered.isUsable ? 0 : 2) + (isIPv6 ? 1 : 0);
    });
    const std::vector<std::string> usable = usableAddresses();
    if (usable.empty()) {
      return no(translated("This computer has no address that other computers can use."),
                translated("Connect this computer to a network."));
    }
    const bool isForItself = useOf(question_.host) == AddressUse::thisOne;
    return yes(sentence("Other computers can use {1}.", {oneOf(usable)}),
               isForItself
                   ? sentence("The page shows {1}, which only this computer can use.", {question_.host})
                   : "");
  }

  Answer hostName() {
    const std::string& name = question_.host;
    if (name.empty() || useOf(name) != AddressUse::noAddress)
      return yes(translated("Clients are given an address and no name."));
    const NameLookup lookup = network_.lookUp(name, kNameLimit);
    if (!lookup.answered)
      return notKnown(sentence("The name service does not answer for {1}.", {name}), useAddress());
    if (lookup.addresses.empty()) return no(sentence("The name {1} leads nowhere.", {name}), useAddress());
    if (std::ranges::any_of(lookup.addresses, [this](const auto& found) { return isOwn(found); })) {
      result_.address = hostAndPort(name, service_.stored.port, asked_.standardPort);
      return yes(sentence("The name {1} leads to this computer.", {name}));
    }
    const std::string found = allOf(lookup.addresses);
    // Many systems give a computer's own name such an address, for itself alone.
    if (std::ranges::all_of(lookup.addresses,
                            [](const auto& each) { return useOf(each) == AddressUse::thisOne; }))
      return notKnown(
          sentence("Here the name {1} leads to {2}; where it leads others cannot be seen.", {name, found}),
          useAddress());
    return no(sentence("The name {1} leads to {2}, which is not this computer.", {name, found}),
              joinedSentences(useAddress(),
                              translated("Behind a router that passes connections on, that may be right.")));
  }

  Answer connection() {
    for (OfferedAddress& offered : result_.addresses) {
      const auto port = static_cast<uint16_t>(service_.stored.port);
      offered.accepts = offered.isUsable && network_.connects(offered.address.text, port, kConnectionLimit);
    }
    std::vector<std::string> accepted;
    for (const OfferedAddress& offered : result_.addresses) {
      if (offered.accepts) accepted.push_back(offered.text);
    }
    if (!accepted.empty())
      return yes(sentence("A connection from this computer to {1} is accepted.", {allOf(accepted)}));
    result_.address.clear();
    return no(sentence("A connection from this computer to {1} is not accepted.", {oneOf(usableAddresses())}),
              translated("The server may listen for this computer alone, or a firewall is in the way."));
  }

  Answer firewall() {
    const auto port = static_cast<uint16_t>(service_.stored.port);
    const Firewall seen = network_.firewall(port);
    if (seen.view == FirewallView::letsIn)
      return yes(sentence("The firewall {1} lets connections in.", {seen.name}));
    if (seen.view == FirewallView::keepsOut) {
      return no(
          sentence("The firewall {1} keeps connections to port {2} out.", {seen.name, std::to_string(port)}),
          sentence("Let TCP port {1} in.", {std::to_string(port)}));
    }
    if (seen.name.empty())
      return notKnown(
          translated("Whether a firewall keeps others out cannot be seen without administrator rights."));
    return notKnown(sentence("The firewall {1} is on; whether it lets connections in cannot be seen "
                             "without administrator rights.",
                             {seen.name}),
                    adviceAbout(seen.name));
  }

  // What shows an administrator the rules of a firewall that is known to us.
  static std::string adviceAbout(const std::string& firewall) {
    const std::string command =
        firewall == "firewalld" ? "firewall-cmd --list-all-zones" : firewall + " status";
    return sentence("An administrator sees it with \"{1}\".", {command});
  }

  std::vector<std::string> usableAddresses() const {
    std::vector<std::string> texts;
    for (const OfferedAddress& offered : result_.addresses) {
      if (offered.isUsable) texts.push_back(offered.text);
    }
    return texts;
  }

  std::string useAddress() const {
    return sentence("Give others the address {1}.", {usableAddresses().front()});
  }

  bool isOwn(const std::string& address) const {
    return std::ranges::any_of(result_.addresses, [&address](const OfferedAddress& offered) {
      return offered.isUsable && offered.address.text == address;
    });
  }

  // One that was tried, or else one that others can use.
  std::string bestAddress() const {
    const auto tried = std::ranges::find_if(result_.addresses, &OfferedAddress::accepts);
    if (tried != result_.addresses.end()) return tried->text;
    const std::vector<std::string> usable = usableAddresses();
    return usable.empty() ? "" : usable.front();
  }

  // What cannot be seen is the rule for a user without rights; a connection that was accepted counts more.
  Reach reach() const {
    if (!service_.stored.isOn) return Reach::switchedOff;
    if (isUnsettled_) return Reach::notKnown;
    return result_.failed() == nullptr ? Reach::reachable : Reach::notReachable;
  }

  const ReachQuestion& question_;
  const ServiceQuestion& asked_;
  const ServiceInForce& service_;
  Network& network_;
  ServiceReach result_;
  bool isUnsettled_ = false;
};

}  // namespace

std::span<const RungRow> rungs() {
  return kRungs;
}

const RungResult* ServiceReach::failed() const {
  const auto found = std::ranges::find(rungs, Verdict::fails, &RungResult::verdict);
  return found != rungs.end() ? &*found : nullptr;
}

ReachQuestion reachQuestion(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                            const ComputerServices& services) {
  ReachQuestion question;
  question.installation = installationError(services.files);
  question.isChanging = pane.isServerChanging();
  question.serverPid = pane.m_serverPid;
  question.host = SBUF_CURHOST;
  ServerInForce server = serverInForce(pane, interface, services.ports);
  for (std::size_t i = 0; i < std::size(kClientServices); ++i)
    question.services.push_back({std::move(server.services[i]), kClientServices[i].standardPort});
  return question;
}

std::vector<ServiceReach> climb(const ReachQuestion& question, Network& network) {
  std::vector<ServiceReach> results;
  for (const ServiceQuestion& service : question.services) {
    results.push_back(Climb(question, service, network).result());
  }
  return results;
}

std::string reachSentence(const ServiceReach& service) {
  switch (service.reach) {
    case Reach::reachable:
      return sentence("{1} can connect to {2}, as far as this computer can see.",
                      {translated(service.title), service.address});
    case Reach::notReachable:
      return joinedSentences(sentence("{1} cannot connect.", {translated(service.title)}),
                             service.failed()->sentence);
    case Reach::notKnown:
      return sentence("{1}: it is not known yet whether they can connect.", {translated(service.title)});
    case Reach::switchedOff:
      return sentence("{1}: switched off.", {translated(service.title)});
  }
  return "";
}

}  // namespace norvik
