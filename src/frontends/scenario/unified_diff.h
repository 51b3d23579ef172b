// The difference of two texts as people read it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvik::scenario {

// A unified diff with three lines of context; empty where the lines are the same. The names stand in its
// head.
std::string unifiedDiff(const std::vector<std::string>& before, const std::vector<std::string>& after,
                        std::string_view beforeName, std::string_view afterName);

}  // namespace norvik::scenario
