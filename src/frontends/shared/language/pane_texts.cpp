// The texts are written twice, here and where they are said, as the module and the adapters cannot mark them;
// a test finds one that is missing.
#include "src/frontends/shared/language/pane_texts.h"

#include <algorithm>
#include <iterator>

#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

// How many of the texts begin a sentence.
constexpr std::size_t kAddressSentences = 2;

// clang-format off
constexpr std::string_view kPaneTexts[] = {
    english("Norvik clients can connect to this computer using the following address:\n\n{1}"),
    english("RDP clients can connect to this computer using the following address:\n\n{1}"),
    english("Norvik clients cannot connect to this computer."),
    english("RDP clients cannot connect to this computer."),
    english("Current User"),
    english("Server Administrator"),
    english("Start"),
    english("Stop"),
    english("Started"),
    english("Stopped"),
    english("Starting..."),
    english("Stopping..."),
    english("Click Start to allow others to access this computer."),
    english("Click Stop to prevent others from accessing this computer."),
    english("Click the lock to prevent administrative changes"),
    english("Click the lock to make administrative changes"),
    english("Authenticating..."),
    english("Adjust"),
    english("Reset"),
    english("Revert"),
    english("Yes"),
    english("No"),
    english("Yes, Proceed"),
    english("No, Thank You"),
    english("No, I'll Do It Later"),
    english("Reboot is required"),
    english("Some changes you have made require reboot.\n\nDo you want to reboot now?"),
    english("No, I'll Reboot Later"),
    english("Yes, Reboot Now"),
    english("Norvik Server options changed"),
    english("Norvik preferences was changed"),
    english("What do you want to do with changes you made?"),
    english("Apply Now"),
    english("Discard Changes"),
    english("Apply now"),
    english("Discard changes"),
    english("Continue editing"),
    english("Multiuser Mode Adjustment"),
    english("If you wish to connect more than one user simultaneously, it is recommended that you adjust \"Open Files Limit\" as well.\n\n"
            "Do you want to make this adjustment automatically?\n"),
    english("Norvik OpenGL driver mode"),
    english("You have chosen Norvik OpenGL driver mode.\n"
            "This mode is recommended for serving multiple remote connections simultaneously. Please note that Norvik OpenGL driver was created to resolve known issues with the sharing of the OpenGL hardware driver for multiple connections. However, Norvik OpenGL driver cannot guarantee correct functionality for all applications that require hadrware acceleration. It is strongly recommended to enable remote login access (SSH) before applying this mode. To disable Norvik OpenGL driver using the command line, please enter the following command:\n\n"
            "sudo nvkservice gldcmd uninstall -f\n\n"
            "Are you sure you want to switch to Norvik OpenGL driver mode?\n"),
    english("Disabling Quartz Extreme acceleration"),
    english("This adjustment may solve a number of graphics problems in remote desktop sessions. However, we cannot guarantee correct functionality for all applications that require hardware acceleration.\n\n"
            "Are you sure you want to disable Quartz Extreme acceleration?\n"),
    english("Resetting Open Files Limit"),
    english("Are you sure you want to reset the limit to the default value, which may be less than the current value?"),
    // Values, as a window shows them.
    english("on"),
    english("off"),
    english("mixed"),
    english("none"),
    english("default"),
    // Why the computer did not grant rights: the adapters' sentences.
    english("The password was wrong, or this person is no administrator."),
    english("The request for administrator rights was cancelled."),
    english("Nobody could be asked for a password: this session has no authentication agent. Use a terminal, or work as root."),
    english("Administrator rights cannot be asked for: polkit does not answer. Work as root."),
    english("Administrator rights cannot be asked for: the authorization service does not answer. Work as root."),
};
// clang-format on

constexpr std::string_view kAddressPlace = "{1}";

std::string_view beginningOf(std::string_view pattern) {
  return pattern.substr(0, pattern.size() - kAddressPlace.size());
}

// "Starting..." of "Starting.......": a text that grows while something is under way.
std::string_view withoutGrowth(std::string_view text) {
  constexpr std::size_t kDots = 3;
  const std::size_t behind = text.find_last_not_of('.') + 1;
  return text.size() - behind < kDots ? text : text.substr(0, behind + kDots);
}

bool isKnown(std::string_view text) {
  return std::ranges::find(kPaneTexts, text) != std::end(kPaneTexts);
}

}  // namespace

std::string paneText(std::string_view text) {
  for (std::size_t i = 0; i < kAddressSentences; ++i) {
    const std::string_view beginning = beginningOf(kPaneTexts[i]);
    if (text.starts_with(beginning)) return sentence(kPaneTexts[i], {text.substr(beginning.size())});
  }
  const std::string_view still = withoutGrowth(text);
  if (still.size() < text.size() && isKnown(still))
    return translated(still) + std::string(text.substr(still.size()));
  return translated(text);
}

std::vector<std::string> paneTitles(std::string_view title) {
  static const std::vector<std::vector<std::string>> kChangingTitles = {{"Start", "Stop"},
                                                                        {"Adjust", "Reset", "Revert"}};
  for (const auto& titles : kChangingTitles) {
    const auto isShown = [&](const std::string& each) { return each == title || translated(each) == title; };
    if (std::ranges::none_of(titles, isShown)) continue;
    std::vector<std::string> shown;
    shown.reserve(titles.size());
    for (const std::string& each : titles) shown.push_back(translated(each));
    return shown;
  }
  return {paneText(title)};
}

std::span<const std::string_view> paneTexts() {
  return kPaneTexts;
}

}  // namespace norvik
