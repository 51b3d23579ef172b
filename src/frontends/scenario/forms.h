// Values in a scenario's output.
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>

#include "src/adapters/simulated/text_form.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/text/escape.h"

namespace norvik::scenario {

template <std::same_as<bool> Boolean>
std::string form(Boolean value) {
  return value ? "YES" : "NO";
}
inline std::string form(int32_t value) {
  return std::to_string(value);
}
inline std::string form(int64_t value) {
  return std::to_string(value);
}
inline std::string form(const std::string& text) {
  return quoted(text);
}
inline std::string form(const char* text) {
  return quotedOrNull(text);
}

// Something that the pane holds or not: a reference, a dictionary, a list.
template <typename Opaque>
std::string form(Opaque* reference) {
  return reference == nullptr ? "null" : "set";
}
template <typename Held>
std::string form(const std::optional<Held>& held) {
  return held ? "set" : "null";
}
inline std::string form(const PictureRef& picture) {
  return picture ? quoted(picture->name) : "null";
}

inline std::string form(const NVKServerLimit& limit) {
  return std::to_string(limit.hard) + '/' + std::to_string(limit.soft);
}
inline std::string form(const NVKServerLimits& limits) {
  return "system=" + form(limits.system) + " launchd=" + form(limits.launchd) +
         " backup=" + form(limits.backup) + " action=" + std::to_string(limits.action);
}

}  // namespace norvik::scenario
