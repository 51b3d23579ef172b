// The change transaction on the simulated computer: what it refuses, what it takes over, what it asks, and
// what it says afterwards.
#include "src/frontends/shared/change/settings_change.h"

#include "tests/frontends/shared/changing_pane.h"

namespace norvik {
namespace {

using Names = std::vector<std::string>;

class SettingsChangeTest : public ChangingPane {};

// ---- Pending and preview

TEST_F(SettingsChangeTest, NothingIsPendingOnAFreshComputer) {
  open();
  EXPECT_EQ(namesOf(change->pending()), Names{});
  EXPECT_TRUE(change->findings().empty());
  const Preview preview = change->preview();
  EXPECT_TRUE(preview.changes.empty() && preview.files.empty() && preview.commands.empty());
  EXPECT_EQ(lines, Names{});
}

TEST_F(SettingsChangeTest, PreviewNamesEverythingThatApplyDoes) {
  open();
  typeNvkPort("5000");
  EXPECT_EQ(namesOf(change->pending()), (Names{"nvk.port.custom off on", "nvk.port 4073 5000"}));
  const Preview preview = change->preview();
  EXPECT_EQ(preview.files, Names{kServer});
  EXPECT_EQ(preview.groups, Names{"server settings"});
  EXPECT_EQ(preview.told, Names{"the server"});
  EXPECT_FALSE(preview.endsConnections);  // no server runs
  EXPECT_FALSE(preview.needsRestart);
  EXPECT_EQ(lines, Names{}) << "a preview does nothing";
  const ChangeReport report = apply();
  ASSERT_EQ(report.commands.size(), preview.commands.size());
  for (std::size_t i = 0; i < report.commands.size(); ++i) {
    EXPECT_EQ(report.commands[i].launch.tool, preview.commands[i].tool);
    EXPECT_EQ(report.commands[i].launch.arguments, preview.commands[i].arguments);
  }
}

TEST_F(SettingsChangeTest, PreviewLeavesThePaneAsItIs) {
  open();
  typeNvkPort("5000");
  const std::string address = pane->ib_admin_label_nvkAddress.stringValue();
  change->preview();
  EXPECT_EQ(__main_pane, pane.get());
  EXPECT_EQ(installedPlatform() != nullptr, true);
  EXPECT_EQ(pane->ib_admin_edbox_nvkPort.stringValue(), "5000");
  EXPECT_EQ(pane->m_admin_nvkPort, 4073);
  EXPECT_EQ(pane->ib_admin_label_nvkAddress.stringValue(), address);
  EXPECT_TRUE(pane->ib_button_Apply.isEnabled());
}

TEST_F(SettingsChangeTest, ARestartOfTheComputerIsAnnounced) {
  open();
  pane->buttonClicked(pane->ib_admin_button_maxFAdjust);
  EXPECT_TRUE(change->preview().needsRestart);
  EXPECT_FALSE(namesOf(change->pending()).empty());
}

TEST_F(SettingsChangeTest, OneChangeIsTakenBackAndTheOthersStay) {
  open();
  typeNvkPort("5000");
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  change->takeBack("nvk.port");
  EXPECT_EQ(namesOf(change->pending()), Names{"user.mouse.swap off on"});
  EXPECT_EQ(pane->ib_admin_edbox_nvkPort.stringValue(), "4073");
  change->takeBackAll();
  EXPECT_EQ(namesOf(change->pending()), Names{});
}

TEST_F(SettingsChangeTest, ASliderThatALoadLeavesAloneIsTakenBackToo) {
  put(kServer, {{"ImageCaptBuffer", int64_t{3}}});
  open();
  pane->ib_admin_slider_imgBuff.setDoubleValue(5);
  EXPECT_EQ(change->pending().size(), 1u);
  change->takeBackAll();
  EXPECT_EQ(namesOf(change->pending()), Names{});
}

// ---- Check

TEST_F(SettingsChangeTest, AValueThatCannotBeDoesNotReachThePane) {
  for (const char* text : {"70000", "abc", "0", ""}) {
    open();
    typeNvkPort(text);
    switchBox(pane->ib_user_chkbox_mseSwap, true);
    const ChangeReport report = apply();
    EXPECT_EQ(report.error.code, FailureCode::wrongValue) << text;
    EXPECT_EQ(report.error.setting, "nvk.port");
    EXPECT_EQ(report.error.outlet, "ib_admin_edbox_nvkPort");
    EXPECT_FALSE(report.applied);
    EXPECT_EQ(lines, Names{}) << text;
    change.reset();
    pane->destroy();
    pane.reset();
    recording.reset();
  }
}

TEST_F(SettingsChangeTest, BothServicesCannotHaveOnePort) {
  open();
  typeNvkPort("3389");
  EXPECT_EQ(apply().error.code, FailureCode::wrongValue);
  EXPECT_EQ(lines, Names{});
}

TEST_F(SettingsChangeTest, WhiteSpaceAroundAPortDoesNotCount) {
  open();
  typeNvkPort(" 5000 ");
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNvkPort(), 5000);
}

TEST_F(SettingsChangeTest, APortInUseIsAWarning) {
  open();
  used = 5000;
  typeNvkPort("5000");
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok());
  ASSERT_EQ(report.warnings.size(), 1u);
}

// ---- Damaged files

TEST_F(SettingsChangeTest, ADamagedFileIsNotAMissingOne) {
  open();
  EXPECT_TRUE(change->findings().empty());
  computer.fileSystem.put(kServer, "<plist><dict><key>NVKService</key>");
  change->look();
  ASSERT_EQ(change->findings().size(), 1u);
  EXPECT_TRUE(change->findings()[0].damaged);
  EXPECT_EQ(change->findings()[0].file, kServer);
  computer.fileSystem.put(kServer, "");
  change->look();
  EXPECT_TRUE(change->findings().empty()) << "an empty file holds nothing that could be lost";
}

TEST_F(SettingsChangeTest, AFileThatMayNotBeReadIsDamagedToo) {
  put(kServer, portFile(4500));
  computer.fileFaults.set(FileOperation::openRead, kServer, true);
  open();
  ASSERT_EQ(change->findings().size(), 1u);
  typeNvkPort("5000");
  EXPECT_EQ(apply().error.code, FailureCode::damaged);
  EXPECT_EQ(lines, Names{});
}

TEST_F(SettingsChangeTest, SavingOverADamagedFileIsRefusedUntilAPersonSaysSo) {
  computer.fileSystem.put(kServer, "damaged");
  open();
  typeNvkPort("5000");
  const ChangeReport refused = apply();
  EXPECT_EQ(refused.error.code, FailureCode::damaged);
  EXPECT_EQ(person.files.size(), 1u);
  EXPECT_EQ(computer.fileSystem.find(kServer)->bytes, "damaged");
  person.damaged = DamagedAnswer::replace;
  const ChangeReport replaced = apply();
  EXPECT_TRUE(replaced.ok()) << replaced.error.sentence;
  EXPECT_EQ(storedNvkPort(), 5000);
  ASSERT_EQ(replaced.warnings.size(), 1u);
  bool isKept = false;
  for (const char* place :
       {"/etc/norvik/svr.cfg.damaged", "/Users/user/.local/state/norvik/svr.cfg.damaged"}) {
    const auto file = computer.fileSystem.find(place);
    isKept = isKept || (file != nullptr && file->bytes == "damaged");
  }
  EXPECT_TRUE(isKept || replaced.warnings[0].find(".damaged") != std::string::npos) << replaced.warnings[0];
}

TEST_F(SettingsChangeTest, ADamagedFileOfAnotherGroupDoesNotHinderASave) {
  computer.fileSystem.put(kServer, "damaged");
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(person.files.size(), 0u);
}

TEST_F(SettingsChangeTest, TheCopyOfADamagedFileIsRestoredAndTheEditStays) {
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  ASSERT_TRUE(apply().ok());
  computer.fileSystem.put(kServer, "damaged");
  change->takeOver();
  ASSERT_EQ(change->findings().size(), 1u);
  EXPECT_NE(change->findings()[0].copyTime, "");
  EXPECT_EQ(pane->m_admin_nvkPort, 4500) << "nothing is loaded from a file that cannot be read";
  typeNvkPort("5000");
  person.damaged = DamagedAnswer::restore;
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok()) << report.error.sentence;
  EXPECT_EQ(storedNvkPort(), 5000);
  EXPECT_TRUE(hasForeignKey()) << "from the copy";
}

TEST_F(SettingsChangeTest, TheCopyIsPutBackWithoutAnyChange) {
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  ASSERT_TRUE(apply().ok());
  const std::string good = computer.fileSystem.find(kServer)->bytes;
  computer.fileSystem.put(kServer, "damaged");
  change->takeOver();
  const ChangeReport report = change->restore(change->findings().at(0));
  EXPECT_TRUE(report.ok()) << report.error.sentence;
  EXPECT_EQ(computer.fileSystem.find(kServer)->bytes, good);
  EXPECT_EQ(pane->m_admin_nvkPort, 4500);
  EXPECT_TRUE(change->findings().empty());
}

TEST_F(SettingsChangeTest, StoredValuesThatCannotBeAreNamed) {
  put(kServer, {{"ActionOnConnect", int64_t{7}},
                {"ImageColorDepth", int64_t{3}},
                {"NVKService", PropertyList::Dictionary{{"PortNumber", int64_t{70000}}}},
                {"RDPService", PropertyList::Dictionary{{"PortNumber", int64_t{0}}}}});
  open();
  std::vector<std::string> keys;
  for (const FileFinding& finding : change->findings()) {
    EXPECT_FALSE(finding.damaged);
    keys.push_back(finding.key);
  }
  EXPECT_EQ(keys, (Names{"ActionOnConnect", "ImageColorDepth", "NVKService/PortNumber"}));
  EXPECT_EQ(
      change->findings()[2].sentence,
      "\"NVKService/PortNumber\" in /etc/norvik/svr.cfg is 70000; it should be a whole number from 1 to "
      "65535.");
}

// ---- Others

TEST_F(SettingsChangeTest, WhatOthersChangedIsTakenOverBeforeTheSave) {
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  PropertyList::Dictionary theirs = portFile(4600);
  theirs["Another"] = "key";
  put(kServer, theirs);
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok());
  EXPECT_EQ(report.takenOver, Names{"nvk.port"});
  EXPECT_EQ(storedNvkPort(), 4600);
  EXPECT_NE(listAt(kServer)->find("Another"), nullptr);
  EXPECT_EQ(boolValue(listAt(kServer)->find("NVKService")->find("SoundOutputEnabled")), false);
}

TEST_F(SettingsChangeTest, AKeyThatThePaneDoesNotKnowIsTakenOverToo) {
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  PropertyList::Dictionary theirs = portFile(4500);
  theirs["Another"] = "key";
  put(kServer, theirs);
  EXPECT_TRUE(apply().ok());
  EXPECT_NE(listAt(kServer)->find("Another"), nullptr);
}

TEST_F(SettingsChangeTest, ACollisionIsAsked) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  put(kServer, portFile(4600));
  EXPECT_EQ(apply().error.code, FailureCode::cancelled);
  ASSERT_EQ(person.collisions.size(), 1u);
  EXPECT_EQ(person.collisions[0].name, "nvk.port");
  EXPECT_EQ(person.collisions[0].loaded, "4500");
  EXPECT_EQ(person.collisions[0].theirs, "4600");
  EXPECT_EQ(person.collisions[0].yours, "4700");
  EXPECT_EQ(storedNvkPort(), 4600);
  person.side = Side::mine;
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNvkPort(), 4700);
}

TEST_F(SettingsChangeTest, TakingTheirsDropsTheEditAndNothingElse) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  put(kServer, portFile(4600));
  person.side = Side::theirs;
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNvkPort(), 4600);
  EXPECT_EQ(pane->ib_admin_edbox_nvkPort.stringValue(), "4600");
  EXPECT_FALSE(boolValue(listAt(kServer)->find("NVKService")->find("SoundOutputEnabled")));
}

TEST_F(SettingsChangeTest, TheSameChangeByBothIsNoCollision) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4600");
  put(kServer, portFile(4600));
  EXPECT_TRUE(apply().ok());
  EXPECT_TRUE(person.collisions.empty());
}

TEST_F(SettingsChangeTest, AnUndisturbedSaveRunsThePanesOwnSequence) {
  open();
  typeNvkPort("5000");
  apply();
  const std::string temporary = pane->getTempFilePath("server.conf");
  EXPECT_EQ(lines,
            (Names{"write " + temporary, "launch /bin/mv -f " + temporary + " /etc/norvik/svr.cfg",
                   "launch /bin/chmod 644 /etc/norvik/svr.cfg",
                   "launch /usr/sbin/chown root /etc/norvik/svr.cfg", "launch /usr/sbin/nvkservice apply"}));
}

TEST_F(SettingsChangeTest, TheLockIsWaitedForUpToItsLimit) {
  open();
  typeNvkPort("5000");
  computer.locks.holdElsewhere(std::chrono::seconds(3));
  EXPECT_TRUE(apply().ok());
  typeNvkPort("5001");
  computer.locks.holdElsewhere(std::nullopt);
  EXPECT_EQ(apply().error.code, FailureCode::tryAgain);
  EXPECT_EQ(storedNvkPort(), 5000);
}

// ---- After

TEST_F(SettingsChangeTest, AFailedApplyCommandIsTheServersFailureInItsOwnWords) {
  open();
  typeNvkPort("5000");
  computer.tools.setFailure("/usr/sbin/nvkservice", "apply", 3, "no such service");
  const ChangeReport report = apply();
  EXPECT_EQ(report.error.code, FailureCode::server);
  EXPECT_NE(report.error.sentence.find("no such service"), std::string::npos) << report.error.sentence;
  EXPECT_EQ(report.saved, Names{"server settings"});
  EXPECT_EQ(report.notTold, Names{"the server"});
}

TEST_F(SettingsChangeTest, AFailedMoveIsNotASave) {
  open();
  typeNvkPort("5000");
  computer.tools.setFailure("/bin/mv", std::nullopt, 1, "no space left");
  const ChangeReport report = apply();
  EXPECT_EQ(report.error.code, FailureCode::notWritten);
  EXPECT_EQ(report.saved, Names{});
  EXPECT_EQ(report.notSaved, Names{"nvk.port"});
  EXPECT_EQ(computer.fileSystem.find(pane->getTempFilePath("server.conf")), nullptr) << "left behind";
  EXPECT_EQ(namesOf(change->pending()), (Names{"nvk.port.custom off on", "nvk.port 4073 5000"}))
      << "the edit is there to be applied again";
  EXPECT_TRUE(pane->ib_button_Apply.isEnabled());
  computer.tools.setUsual("/bin/mv", std::nullopt);
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNvkPort(), 5000);
}

TEST_F(SettingsChangeTest, ARefusedToolIsToldApart) {
  open();
  typeNvkPort("5000");
  computer.authorization.refuse("/usr/sbin/nvkservice", "apply");
  const ChangeReport report = apply();
  EXPECT_EQ(report.error.code, FailureCode::notAllowed);
  EXPECT_TRUE(report.commands.back().launch.refused);
}

TEST_F(SettingsChangeTest, AToolThatDoesNotEndIsATimeOut) {
  open();
  typeNvkPort("5000");
  computer.tools.setDuration("/bin/mv", std::nullopt, std::nullopt);
  const ChangeReport report = apply();
  EXPECT_EQ(report.error.code, FailureCode::tryAgain);
  EXPECT_EQ(report.saved, Names{});
}

TEST_F(SettingsChangeTest, AFullDiskIsSaidAndTheEditStays) {
  computer.fileFaults.set(FileOperation::write, kAgent, true);
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  const ChangeReport report = apply();
  EXPECT_EQ(report.error.code, FailureCode::notWritten);
  EXPECT_NE(report.error.sentence.find(kAgent), std::string::npos);
  EXPECT_EQ(change->pending().size(), 1u);
}

TEST_F(SettingsChangeTest, WhomNobodyCouldTellIsNotReportedAsTold) {
  open();
  computer.notifications.setDelivers(false);
  switchBox(pane->ib_admin_chkbox_ntfShowNews, false);
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok());
  EXPECT_EQ(report.told, Names{});
  EXPECT_EQ(report.notTold, Names{"the menu agent"});
}

// ---- Where the pane applies by its own question

TEST_F(SettingsChangeTest, LeavingDoesNotApplyWhatCannotBe) {
  open();
  typeNvkPort("70000");
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  computer.alerts.addAnswer(NSAlertDefaultReturn);
  const ChangeReport report = change->around([this] { pane->didUnselect(); });
  EXPECT_TRUE(report.applied);
  EXPECT_EQ(report.error.code, FailureCode::wrongValue);
  EXPECT_EQ(storedNvkPort(), -1);
  EXPECT_TRUE(boolValue(listAt(kAgent)->find("SwapMouseButtons")));
  EXPECT_EQ(pane->ib_admin_edbox_nvkPort.stringValue(), "70000") << "there to be mended";
}

TEST_F(SettingsChangeTest, LeavingWithoutApplyingReportsNothing) {
  open();
  typeNvkPort("5000");
  computer.alerts.addAnswer(NSAlertAlternateReturn);
  const ChangeReport report = change->around([this] { pane->didUnselect(); });
  EXPECT_FALSE(report.applied);
  EXPECT_TRUE(report.ok());
  EXPECT_EQ(lines, Names{});
  EXPECT_EQ(namesOf(change->pending()), Names{});
}

TEST_F(SettingsChangeTest, LeavingDoesNotWriteOverADamagedFile) {
  computer.fileSystem.put(kServer, "damaged");
  open();
  typeNvkPort("5000");
  computer.alerts.addAnswer(NSAlertDefaultReturn);
  const ChangeReport report = change->around([this] { pane->didUnselect(); });
  EXPECT_EQ(report.error.code, FailureCode::damaged);
  EXPECT_EQ(computer.fileSystem.find(kServer)->bytes, "damaged");
}

TEST_F(SettingsChangeTest, LockingWithApplyNowReadsBack) {
  open();
  typeNvkPort("5000");
  computer.tools.setFailure("/bin/mv", std::nullopt, 1, "no");
  computer.alerts.addAnswer(NSAlertDefaultReturn);
  const ChangeReport report = change->around([this] { pane->buttonClicked(pane->ib_button_Auth); });
  EXPECT_EQ(report.error.code, FailureCode::notWritten);
}

TEST_F(SettingsChangeTest, TakeUpRunsTheServersOwnCommand) {
  open();
  EXPECT_TRUE(change->takeUp().ok());
  EXPECT_EQ(lines, Names{"launch /usr/sbin/nvkservice apply"});
}

}  // namespace
}  // namespace norvik
