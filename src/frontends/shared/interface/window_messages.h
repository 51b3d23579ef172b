// The messages that every window shows above its pages, made from what came of a change. Computes values;
// shows nothing and knows no toolkit.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/shared/change/change_report.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/interface/setting_description.h"
#include "src/frontends/shared/interface/window_texts.h"
#include "src/frontends/shared/server/server_order.h"

namespace norvik {

// One message: what it says and what a person can do about it.
struct WindowMessage {
  MessageKind kind = MessageKind::note;
  std::string sentence;
  std::vector<MessageAction> actions;  // in the order of their buttons
  std::string details;                 // for showDetails; lines

  bool isEmpty() const { return sentence.empty(); }
  // Messages of success go by themselves; the others stay until a person has dealt with them.
  bool isPassing() const { return kind == MessageKind::done || kind == MessageKind::note; }
};

// "1 change", "3 changes".
std::string countedChanges(std::size_t count);
// "• Norvik clients, Port: 4073 → 4500", one line for each; at most `most`, and then how many more there are.
std::string changeLines(const std::vector<SettingChange>& changes, std::size_t most);

// The same words with "Port number (Norvik clients)" in place of "nvk.port", which is for the command line.
// Words in which no setting is named stay as they are.
std::string withLabels(std::string words, const InterfaceDescription& interface);
WindowMessage withLabels(WindowMessage message, const InterfaceDescription& interface);

// What came of Apply. Empty where nobody pressed it and nothing is wrong.
WindowMessage appliedMessage(const ChangeReport& report);
// What came of putting the copy of a damaged file back.
WindowMessage restoredMessage(const ChangeReport& report, const FileFinding& file);
// Values that cannot be: why Apply was not pressed. Empty if none of them blocks.
WindowMessage refusedMessage(const std::vector<ValueFinding>& findings);
// Damaged files and stored values that cannot be; empty if there are none. `shown` says which values a person
// sees in place of those of the damaged files.
WindowMessage damagedMessage(const std::vector<FileFinding>& findings,
                             std::string_view shown = window_texts::kDefaultsShown);
// The question before a damaged file is written over: what is wrong with it and what each answer does.
std::string damagedQuestion(const FileFinding& file);
// What somebody else has saved meanwhile; empty if nothing of it is shown.
WindowMessage foreignMessage(const ForeignChanges& changes);
// What came of an order to the server, and of having it take up what is stored.
WindowMessage orderMessage(ServerOrder order, const OrderReport& report);
WindowMessage takenUpMessage(const OrderReport& report);
// Where the server uses other values than those that are stored; empty where it does not, as far as is known.
WindowMessage inForceMessage(const ServerInForce& server);
// A denied unlock, and why, where the computer says so.
WindowMessage unlockDeniedMessage(AuthorizationRefusal why);

// What was run and what it said, who was told and who not, warnings: lines for a person. May be empty.
std::string detailsOf(const ChangeReport& report);

// "the file" as the beginning of a sentence: "The file".
std::string asSentence(std::string words);

// The question before pending changes would be lost by leaving: "3 changes are not applied." and the changes.
std::string leaveQuestion(const std::vector<SettingChange>& changes);

}  // namespace norvik
