// The sentences above the pages: what came of a change, what a person can do about it, and what is counted.
#include "src/frontends/shared/interface/window_messages.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

using Actions = std::vector<MessageAction>;

constexpr MessageKind kEveryKind[] = {MessageKind::done, MessageKind::note, MessageKind::warning,
                                      MessageKind::failure, MessageKind::progress};
constexpr MessageAction kEveryAction[] = {MessageAction::retry,        MessageAction::showDetails,
                                          MessageAction::restoreCopy,  MessageAction::takeUp,
                                          MessageAction::chooseValues, MessageAction::showSetting};

TEST(WindowTexts, EveryKindAndActionHasWordsOfItsOwn) {
  std::set<std::string> words;
  for (const MessageKind kind : kEveryKind) words.insert(wordOf(kind));
  for (const MessageAction action : kEveryAction) words.insert(titleOf(action));
  words.erase("");
  EXPECT_EQ(words.size(), std::size(kEveryKind) + std::size(kEveryAction));
}

ChangeReport saved() {
  ChangeReport report;
  report.applied = true;
  report.saved = {"server settings", "user settings"};
  report.told = {"the server"};
  return report;
}

ChangeReport failure(FailureCode code) {
  ChangeReport report;
  report.error.code = code;
  report.error.sentence = "The file could not be written: No space left on device.";
  report.error.advice = "Free some space.";
  return report;
}

TEST(WindowMessages, ASuccessSaysWhatWasSavedAndWhoWasTold) {
  const WindowMessage message = appliedMessage(saved());
  EXPECT_EQ(message.kind, MessageKind::done);
  EXPECT_EQ(message.sentence, "Saved the server settings and user settings. Told the server.");
  EXPECT_TRUE(message.actions.empty());
  EXPECT_TRUE(message.isPassing());
}

TEST(WindowMessages, ASuccessThatNobodyCouldBeToldIsAWarning) {
  ChangeReport report = saved();
  report.notTold = {"the menu agent"};
  const WindowMessage message = appliedMessage(report);
  EXPECT_EQ(message.kind, MessageKind::warning);
  EXPECT_NE(message.sentence.find("Could not tell the menu agent."), std::string::npos);
  EXPECT_FALSE(message.isPassing());
}

TEST(WindowMessages, WhatOthersHadChangedIsSaid) {
  ChangeReport report = saved();
  report.takenOver = {"nvk.sound"};
  EXPECT_TRUE(appliedMessage(report).sentence.starts_with("Somebody else had changed nvk.sound"));
}

TEST(WindowMessages, SettingsAreNamedAsTheWindowNamesThem) {
  const InterfaceDescription interface = shippedInterface();
  ChangeReport report = saved();
  report.takenOver = {"nvk.sound", "user.image.depth"};
  const WindowMessage message = withLabels(appliedMessage(report), interface);
  EXPECT_TRUE(message.sentence.starts_with(
      "Somebody else had changed Play sound on the client (Norvik clients) and Colour depth (Image); "))
      << message.sentence;
  ChangeReport lost = failure(FailureCode::notWritten);
  lost.notSaved = {"nvk.port.custom"};
  EXPECT_EQ(withLabels(appliedMessage(lost), interface).details,
            "Not saved: Use a port other than 4073 (Norvik clients)");
  EXPECT_EQ(withLabels("Not saved: nvk.port.", interface), "Not saved: Port number (Norvik clients).");
  for (const char* words : {"", "my.nvk.port", "nvk.port.else", "nvk.ports", "/etc/norvik/svr.cfg"})
    EXPECT_EQ(withLabels(words, interface), words);
}

TEST(WindowMessages, AFailureAfterTheSaveSaysWhatIsSaved) {
  ChangeReport report = failure(FailureCode::server);
  report.saved = {"server settings"};
  EXPECT_TRUE(appliedMessage(report).sentence.starts_with("Saved the server settings. The file could"));
}

TEST(WindowMessages, ARestoredCopyIsDone) {
  FileFinding file;
  file.label = "the server's settings file";
  ChangeReport report;
  report.warnings = {"What /etc/norvik/svr.cfg held is kept in /etc/norvik/svr.cfg.damaged."};
  const WindowMessage message = restoredMessage(report, file);
  EXPECT_EQ(message.kind, MessageKind::done);
  EXPECT_EQ(message.sentence,
            "The copy of the server's settings file was put back. " + report.warnings.front());
  report.notTold = {"the server"};
  EXPECT_EQ(restoredMessage(report, file).kind, MessageKind::warning);
}

TEST(WindowMessages, WithoutApplyThereIsNone) {
  EXPECT_TRUE(appliedMessage(ChangeReport()).isEmpty());
}

TEST(WindowMessages, AFailureSaysWhyAndWhatToDo) {
  const WindowMessage message = appliedMessage(failure(FailureCode::notWritten));
  EXPECT_EQ(message.kind, MessageKind::failure);
  EXPECT_EQ(message.sentence, "The file could not be written: No space left on device. Free some space.");
  EXPECT_EQ(message.actions, Actions{MessageAction::retry});
}

TEST(WindowMessages, AFailureOfAToolHasDetails) {
  ChangeReport report = failure(FailureCode::server);
  report.commands = {{{"/usr/sbin/nvkservice", {"apply"}}, {}}};
  report.commands[0].outcome.end = ToolOutcome::End::exited;
  report.commands[0].outcome.status = 3;
  report.commands[0].outcome.words = "no daemon";
  const WindowMessage message = appliedMessage(report);
  EXPECT_EQ(message.actions, (Actions{MessageAction::retry, MessageAction::showDetails}));
  EXPECT_EQ(message.details, "/usr/sbin/nvkservice apply ended with status 3: no daemon");
}

TEST(WindowMessages, AWrongValueIsShownAndNotRetried) {
  ChangeReport report = failure(FailureCode::wrongValue);
  report.error.outlet = "ib_admin_edbox_nvkPort";
  EXPECT_EQ(appliedMessage(report).actions, Actions{MessageAction::showSetting});
}

TEST(WindowMessages, CancellingIsNoFailure) {
  EXPECT_EQ(appliedMessage(failure(FailureCode::cancelled)).kind, MessageKind::note);
}

TEST(WindowMessages, RefusedValuesAreCounted) {
  const ValueFinding warning{"rdp.port", "", "Port 1 is in use.", false};
  const ValueFinding wrong{"nvk.port", "", "A port is a number.", true};
  EXPECT_TRUE(refusedMessage({warning}).isEmpty());
  EXPECT_EQ(refusedMessage({warning, wrong}).sentence, "Nothing was applied. A port is a number.");
  EXPECT_EQ(refusedMessage({wrong, wrong}).sentence,
            "Nothing was applied. A port is a number. One more value cannot be applied.");
  EXPECT_EQ(refusedMessage({wrong, wrong, wrong}).sentence,
            "Nothing was applied. A port is a number. 2 more values cannot be applied.");
}

TEST(WindowMessages, ADamagedFileOffersItsCopy) {
  FileFinding file;
  file.damaged = true;
  file.sentence = "The server's settings file is damaged: line 3.";
  EXPECT_EQ(damagedMessage({file}).sentence, file.sentence + " The values shown are the defaults.");
  EXPECT_TRUE(damagedMessage({file}).actions.empty());
  file.copyTime = "2026-01-01T00:00:00Z";
  EXPECT_EQ(damagedMessage({file}).actions, Actions{MessageAction::restoreCopy});
  EXPECT_EQ(damagedMessage({file}, "Others are shown.").sentence, file.sentence + " Others are shown.");
  EXPECT_TRUE(damagedMessage({}).isEmpty());
}

TEST(WindowMessages, TheQuestionAboutADamagedFileSaysWhatEachAnswerDoes) {
  FileFinding file;
  file.sentence = "the file is damaged.";
  const std::string replaces(window_texts::kReplaceText);
  EXPECT_EQ(damagedQuestion(file), "The file is damaged.\n\n" + replaces);
  file.copyTime = "2026-01-31T12:30:05Z";
  EXPECT_EQ(damagedQuestion(file),
            "The file is damaged.\n\nRestore Copy begins with the copy of 2026-01-31 12:30 UTC. " + replaces);
  file.copyTime = "yesterday";
  EXPECT_NE(damagedQuestion(file).find("the copy of yesterday. "), std::string::npos);
}

TEST(WindowMessages, AStoredValueThatCannotBeIsNoDamagedFile) {
  FileFinding value;
  value.sentence = "The stored port, 70000, cannot be.";
  EXPECT_EQ(damagedMessage({value}).sentence, value.sentence);
}

SettingChange soundOn() {
  SettingChange change;
  change.label = "Sound";
  change.page = "Norvik clients";
  change.from = "off";
  change.to = "on";
  return change;
}

TEST(WindowMessages, ForeignChangesAreNamedAndCollisionsAskedAbout) {
  ForeignChanges changes;
  changes.filesChanged = true;
  EXPECT_TRUE(foreignMessage(changes).isEmpty()) << "keys that nobody sees here";
  changes.takenOver = {soundOn()};
  EXPECT_EQ(foreignMessage(changes).sentence,
            "Somebody else has changed Sound (Norvik clients). The new values are shown.");
  changes.collisions = {{"nvk.port", "Port", "Norvik clients", "4073", "4500", "4600"}};
  EXPECT_EQ(foreignMessage(changes).actions, Actions{MessageAction::chooseValues});
  EXPECT_EQ(foreignMessage(changes).sentence,
            "Somebody else has changed Port (Norvik clients), which you are changing too.");
}

TEST(WindowMessages, ADeniedUnlockSaysWhyAsFarAsIsKnown) {
  const std::string denied(window_texts::kUnlockDenied);
  const std::string nothing(window_texts::kNothingChanged);
  EXPECT_EQ(unlockDeniedMessage(AuthorizationRefusal::none).sentence, denied + " " + nothing);
  for (const auto why : {AuthorizationRefusal::refused, AuthorizationRefusal::dismissed,
                         AuthorizationRefusal::noAgent, AuthorizationRefusal::noService}) {
    const WindowMessage message = unlockDeniedMessage(why);
    EXPECT_NE(sentenceOf(why), "");
    EXPECT_EQ(message.sentence, denied + " " + sentenceOf(why) + " " + nothing);
    EXPECT_EQ(message.actions, Actions{MessageAction::retry});
    EXPECT_EQ(message.kind == MessageKind::failure, why != AuthorizationRefusal::dismissed);
  }
}

TEST(WindowMessages, ChangesAreCountedAndListed) {
  EXPECT_EQ(countedChanges(1), "1 change");
  EXPECT_EQ(countedChanges(3), "3 changes");
  EXPECT_EQ(changeLines({soundOn(), soundOn(), soundOn()}, 1),
            "• Norvik clients, Sound: off → on\nand 2 more");
  EXPECT_EQ(leaveQuestion({soundOn()}), "1 change is not applied.");
  EXPECT_EQ(leaveQuestion({soundOn(), soundOn()}), "2 changes are not applied.");
}

}  // namespace
}  // namespace norvik
