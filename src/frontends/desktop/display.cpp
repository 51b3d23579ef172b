// Which options need a screen, and what names one.
#include "src/frontends/desktop/display.h"

#include <QByteArray>
#include <QtGlobal>
#include <algorithm>
#include <span>
#include <string_view>

namespace norvik::desktop {

namespace {

constexpr std::string_view kWithoutScreen[] = {"--picture", "--help", "--help-all", "--version", "-h", "-v"};
constexpr std::string_view kNamingOne[] = {"-platform", "--platform", "-display", "--display"};
constexpr const char* kVariablesNamingOne[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};

// Whether one of the words is given, alone or followed by "=" and a value.
bool hasOneOf(std::span<const char* const> given, std::span<const std::string_view> words) {
  return std::ranges::any_of(given, [words](std::string_view word) {
    return std::ranges::find(words, word.substr(0, word.find('='))) != words.end();
  });
}

}  // namespace

bool prepareDisplay(int argc, const char* const* argv) {
  const std::span<const char* const> given(argv, static_cast<std::size_t>(argc));
  if (hasOneOf(given, kWithoutScreen)) qputenv("QT_QPA_PLATFORM", "offscreen");
  return hasOneOf(given, kNamingOne) || std::ranges::any_of(kVariablesNamingOne, [](const char* variable) {
           return !qEnvironmentVariableIsEmpty(variable);
         });
}

}  // namespace norvik::desktop
