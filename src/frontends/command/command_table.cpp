// The rows of the command table, and what the compiler can check of them.
#include "src/frontends/command/command_table.h"

#include <algorithm>

#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

constexpr std::string_view kLimitSteps[] = {kAdjustStep, kResetStep};
constexpr std::string_view kServices[] = {"nvk", "rdp"};

// clang-format off
constexpr ArgumentDescription kNone{};
constexpr ArgumentDescription kPage{
    ArgumentKind::pageOrSetting, "PAGE", english("A page, the start of its name, or a setting"), 0, 1, {}};
constexpr ArgumentDescription kNames{
    ArgumentKind::setting, "NAME", english("A setting; may be repeated"), 1, kAnyNumber, {}};
constexpr ArgumentDescription kAssignments{
    ArgumentKind::assignment, "NAME=VALUE", english("A setting and its new value; may be repeated"), 1, kAnyNumber, {}};
constexpr ArgumentDescription kStep{
    ArgumentKind::choice, "STEP", english("adjust or reset"), 0, 1, kLimitSteps};
constexpr ArgumentDescription kPages{
    ArgumentKind::pageOrSetting, "PAGE", english("A page, the start of its name, or a setting; without one, all settings"), 0, kAnyNumber, {}};
constexpr ArgumentDescription kFile{
    ArgumentKind::file, "FILE", english("A property list or a profile; without one, the settings files of this computer"), 0, 1, {}};
constexpr ArgumentDescription kProfile{
    ArgumentKind::file, "FILE", english("A profile; - for the standard input"), 1, 1, {}};
constexpr ArgumentDescription kStoredFile{
    ArgumentKind::file, "FILE", english("A settings file of this computer; without one, all that are damaged"), 0, 1, {}};
constexpr ArgumentDescription kService{
    ArgumentKind::choice, "SERVICE", english("nvk or rdp; without one, the services that are switched on"), 0, 1, kServices};
constexpr ArgumentDescription kEntry{
    ArgumentKind::number, "N", english("The number of an entry of the history; without one, 1, the latest"), 0, 1, {}};
constexpr ArgumentDescription kShell{
    ArgumentKind::choice, "SHELL", english("bash, zsh or fish"), 1, 1, kShells};

constexpr Command kCommands[] = {
    {"status", english("Show whether the server runs, how to connect to it, the lock, and what is not saved"),
     kNone, SettingsUse::reads, showStatus},
    {"check", english("Show step by step whether clients can connect; the exit status names the first step that fails"),
     kService, SettingsUse::none, checkReach},
    {"show", english("Show the settings of one page or of all pages, or one setting in full"),
     kPage, SettingsUse::reads, showSettings},
    {"get", english("Print the values of settings, one per line"),
     kNames, SettingsUse::reads, getSettings},
    {"set", english("Change settings, save them and put them into effect"),
     kAssignments, SettingsUse::previews, setSettings},
    {"unset", english("Give settings their default values, save them and put them into effect"),
     kNames, SettingsUse::previews, unsetSettings},
    {"is-running", english("Tell whether the server runs, by the exit status: 0 where it does, 3 where it does not"),
     kNone, SettingsUse::none, isServerRunning},
    {"apply", english("Make the running server take up the settings that are stored"),
     kNone, SettingsUse::changes, takeUpStored},
    {"start", english("Start the server"),
     kNone, SettingsUse::reads, startServer},
    {"stop", english("Stop the server, which ends every connection"),
     kNone, SettingsUse::none, stopServer},
    {"restart", english("Stop the server if it is running, and start it"),
     kNone, SettingsUse::reads, restartServer},
    {"export", english("Print settings as a profile, for other computers"),
     kPages, SettingsUse::reads, exportProfile},
    {"import", english("Change settings as a profile says, save them and put them into effect"),
     kProfile, SettingsUse::previews, importProfile},
    {"diff", english("Show what import would change; the exit status is 0 for nothing, 1 for something"),
     kProfile, SettingsUse::reads, diffProfile},
    {"validate", english("Check the stored settings, a file as server settings, or a profile"),
     kFile, SettingsUse::none, validate},
    {"restore", english("Put the kept copies of damaged settings files back"),
     kStoredFile, SettingsUse::changes, restoreFiles},
    {"history", english("Show the changes that were made, the latest first"),
     kNone, SettingsUse::none, showHistory},
    {"undo", english("Take a change of the history back, the latest unless another one is named"),
     kEntry, SettingsUse::previews, undoChange},
    {"limits", english("Show the open files limit, adjust it to the current values, or reset it"),
     kStep, SettingsUse::changes, openFilesLimit},
    {"displays", english("Open the tool that manages displays"),
     kNone, SettingsUse::none, openDisplayManager},
    {"access", english("Open the tool that manages who may connect"),
     kNone, SettingsUse::none, openAccessManager},
    {"watch", english("Print a line for each change of state, address or lock, until interrupted"),
     kNone, SettingsUse::reads, watch},
    {"completion", english("Print a completion script for a shell"),
     kShell, SettingsUse::none, printCompletion},
};
// clang-format on

constexpr bool isComplete(const Command& command) {
  const ArgumentDescription& argument = command.argument;
  return command.run != nullptr && !command.help.empty() &&
         (argument.kind == ArgumentKind::none) == (argument.most == 0) &&
         (argument.kind == ArgumentKind::choice) == !argument.choices.empty() &&
         std::ranges::count(kCommands, command.name, &Command::name) == 1;
}
static_assert(std::ranges::all_of(kCommands, isComplete),
              "every command has one row, with help, a handler and what its arguments are");

}  // namespace

std::span<const Command> commands() {
  return kCommands;
}

const Command* findCommand(std::string_view name) {
  const auto* found = std::ranges::find(kCommands, name, &Command::name);
  return found != std::end(kCommands) ? found : nullptr;
}

}  // namespace norvik::command
