// The difference between two texts, for people.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvik::scenario {

// A unified diff with three lines of context, headed by the names; empty if the lines are the same.
std::string unifiedDiff(const std::vector<std::string>& before, const std::vector<std::string>& after,
                        std::string_view beforeName, std::string_view afterName);

}  // namespace norvik::scenario
