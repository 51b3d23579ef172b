// The status as metrics, in the text format of Prometheus.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "src/frontends/command/context.h"
#include "src/frontends/shared/reach/ladder.h"
#include "src/frontends/shared/server/in_force.h"

namespace norvik::command {

struct MetricSample {
  std::vector<std::pair<std::string, std::string>> labels;
  int64_t value = 0;
};

struct Metric {
  std::string name;
  std::string help;
  std::vector<MetricSample> samples;  // none where nothing was seen
};

// What was seen of the server and of its files, in the order of the manual page. What is not known has no
// sample.
std::vector<Metric> metricsOf(const Context& context, const NVKServerPrefs& pane,
                              const ServerInForce& inForce, const std::vector<ServiceReach>& reach);

// Each metric with its help and its samples; one without samples is left out. A label's value may be
// anything.
void writeMetrics(std::ostream& out, const std::vector<Metric>& metrics);

}  // namespace norvik::command
