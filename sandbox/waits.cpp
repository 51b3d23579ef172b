// Waiting by the sandbox's clock.
#include "sandbox/waits.h"

#include <charconv>
#include <cmath>
#include <thread>

#include "src/server/mac/text/trim.h"

namespace norvik::sandbox {

std::optional<double> parseSpeed(std::string_view text) {
  double factor = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), factor);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  if (!std::isfinite(factor) || factor <= 0) return std::nullopt;
  return factor;
}

double speed(const Root& root) {
  const auto text = readFile(root.own("clock"));
  return text ? parseSpeed(trimmed(*text, kBlanks)).value_or(1) : 1;
}

void waitFor(const Root& root, std::chrono::milliseconds time) {
  std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(time) / speed(root));
}

bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()>& condition) {
  constexpr std::chrono::milliseconds kPause(10);
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

}  // namespace norvik::sandbox
