// The files of the computer by the shared table; one file of its own through an adapter that knows no other.
#include "src/frontends/command/stored_faults.h"

#include <algorithm>

#include "src/adapters/property_lists/codec.h"
#include "src/frontends/command/diagnostic.h"
#include "src/frontends/shared/change/stored_files.h"
#include "src/frontends/shared/edits/fixed_lists.h"

namespace norvik::command {

namespace {

// A file has no copy where nobody has saved it.
class NoCopies : public SettingsFiles {
 public:
  FileContent inspect(const std::string& /*path*/) override { return {}; }
  bool keepCopy(const std::string& /*path*/, std::string_view /*bytes*/) override { return false; }
  std::optional<KeptCopy> copyOf(const std::string& /*path*/) override { return std::nullopt; }
  std::optional<std::string> setAside(const std::string& /*path*/, std::string_view /*bytes*/) override {
    return std::nullopt;
  }
  bool remove(const std::string& /*path*/) override { return false; }
};

std::string reasonOf(const FileFinding& finding, const FileStates& states) {
  const auto state = std::ranges::find(states, finding.file, &FileState::path);
  return finding.damaged && state != states.end() ? state->damage : finding.sentence;
}

StoredFaults faultsIn(const FileStates& states, Platform& computer, SettingsFiles& files,
                      const InterfaceDescription& interface) {
  const NVKServerPrefs pane(interface);  // never awake: it only says which controls a setting has
  StoredFaults faults;
  for (FileFinding& finding : findingsOf(states, computer, files, interface, pane)) {
    std::string reason = reasonOf(finding, states);
    faults.push_back({std::move(finding), std::move(reason)});
  }
  return faults;
}

StoredFile serverFile() {
  return *std::ranges::find_if(
      storedFiles(), [](const StoredFile& file) { return file.group == Group::server && !file.byTool; });
}

}  // namespace

StoredFaults storedFaults(const Context& context) {
  SettingsFiles& files = context.services.computer.files;
  return faultsIn(inspectFiles(context.computer, files), context.computer, files, context.interface);
}

StoredFaults faultsOfFile(const Context& context, const std::string& path, TypedFile typed) {
  StoredFile file = serverFile();
  file.label = english("the file");
  if (typed.damage.empty()) typed.damage = damageOf(file, typed.bytes);
  FixedLists lists(context.computer.propertyLists, decodePropertyList(typed.bytes));
  Platform computer = platformWith(context.computer, lists);
  NoCopies copies;
  const FileStates states{{file, path, {FileKind::regular, typed.bytes, ""}, typed.damage}};
  return faultsIn(states, computer, copies, context.interface);
}

void writeWarnings(std::ostream& err, const StoredFaults& faults) {
  for (const StoredFault& fault : faults)
    writeDiagnostic(err, sentence("warning: {1}", {fault.finding.sentence}));
}

}  // namespace norvik::command
