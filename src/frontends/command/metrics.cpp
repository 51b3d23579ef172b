// A metric for each fact that a person who watches many computers asks about.
#include "src/frontends/command/metrics.h"

#include <algorithm>
#include <optional>
#include <ostream>

#include "src/frontends/command/status.h"
#include "src/frontends/shared/change/stored_files.h"

namespace norvik::command {

namespace {

// Whether the server does what is stored for the service; nothing where that was not seen.
std::optional<bool> isInForce(const ServiceInForce& service) {
  switch (service.inForce) {
    case InForce::notKnown:
    case InForce::accepts:
      return std::nullopt;
    case InForce::stopped:
      return !service.stored.isOn;
    default:
      return !service.differs();
  }
}

std::optional<bool> isReachable(const ServiceReach& service) {
  if (service.reach == Reach::notKnown) return std::nullopt;
  return service.reach == Reach::reachable;
}

// A running server whose sockets nobody saw may have taken up anything.
std::optional<bool> isRestartPending(const ServerInForce& inForce, bool running) {
  if (!running) return false;
  const auto& services = inForce.services;
  if (std::ranges::any_of(services, canBeTakenUp)) return true;
  const bool isSeen =
      std::ranges::all_of(services, [](const auto& each) { return isInForce(each).has_value(); });
  return isSeen ? std::optional(false) : std::nullopt;
}

Metric single(const char* name, const char* help, std::optional<int64_t> value) {
  Metric metric{name, help, {}};
  if (value) metric.samples.push_back({{}, *value});
  return metric;
}

// A sample for each service of which `valueOf` knows something.
template <typename Services, typename ValueOf>
Metric byService(const char* name, const char* help, const Services& services, ValueOf valueOf) {
  Metric metric{name, help, {}};
  for (const auto& service : services) {
    const std::optional<int64_t> value = valueOf(service);
    if (value) metric.samples.push_back({{{"service", service.key}}, *value});
  }
  return metric;
}

Metric damagedFiles(const Context& context, const StoredFaults& faults) {
  Metric metric{"norvik_settings_file_damaged", "Whether the settings file is there and cannot be read.", {}};
  for (const StoredFile& file : storedFiles()) {
    const std::string path = context.computer.propertyLists.stringByExpandingTildeInPath(file.path);
    const bool isDamaged = std::ranges::any_of(faults, [&](const StoredFault& fault) {
      return fault.finding.damaged && fault.finding.file == path;
    });
    metric.samples.push_back({{{"file", path}}, isDamaged});
  }
  return metric;
}

void writeLabel(std::ostream& out, const std::string& name, const std::string& value) {
  out << name << "=\"";
  for (const char c : value) {
    if (c == '\n') {
      out << "\\n";
    } else {
      out << (c == '"' || c == '\\' ? "\\" : "") << c;
    }
  }
  out << '"';
}

}  // namespace

std::vector<Metric> metricsOf(const Context& context, const NVKServerPrefs& pane,
                              const ServerInForce& inForce, const std::vector<ServiceReach>& reach) {
  const StoredFaults faults = context.faults.value_or(StoredFaults());
  const auto& services = inForce.services;
  const bool running = pane.m_serverPid != -1;
  const auto impossible =
      std::ranges::count_if(faults, [](const StoredFault& fault) { return !fault.finding.damaged; });
  return {
      single("norvik_server_running", "Whether the server runs.", running),
      single("norvik_server_pending_restart",
             "Whether the running server has not taken up the stored settings.",
             isRestartPending(inForce, running)),
      byService("norvik_service_enabled", "Whether the stored settings allow clients to connect.", services,
                [](const ServiceInForce& each) { return each.stored.isOn; }),
      byService("norvik_service_port", "The stored port.", services,
                [](const ServiceInForce& each) { return each.stored.port; }),
      byService("norvik_service_in_force", "Whether the server does what is stored.", services, isInForce),
      byService("norvik_service_reachable", "Whether clients can connect, as far as this computer can see.",
                reach, isReachable),
      damagedFiles(context, faults),
      single("norvik_impossible_values", "How many stored values cannot be.", impossible),
      {"norvik_panel_info", "The version of norvikctl, as a label.", {{{{"version", NORVIK_VERSION}}, 1}}},
  };
}

void writeMetrics(std::ostream& out, const std::vector<Metric>& metrics) {
  for (const Metric& metric : metrics) {
    if (metric.samples.empty()) continue;
    out << "# HELP " << metric.name << ' ' << metric.help << "\n# TYPE " << metric.name << " gauge\n";
    for (const MetricSample& sample : metric.samples) {
      out << metric.name;
      for (const auto& label : sample.labels) {
        out << (&label == &sample.labels.front() ? '{' : ',');
        writeLabel(out, label.first, label.second);
      }
      out << (sample.labels.empty() ? " " : "} ") << sample.value << '\n';
    }
  }
}

}  // namespace norvik::command
