// The change transaction where it is easy to get wrong: files that change at the wrong moment, quirks of the
// pane's loads, tools that are late, files that are damaged in every way.
#include <algorithm>
#include <stdexcept>

#include "src/frontends/shared/change/settings_change.h"
#include "tests/frontends/shared/changing_pane.h"

namespace norvik {
namespace {

using Names = std::vector<std::string>;
using namespace std::chrono_literals;

class SettingsChangeEdgesTest : public ChangingPane {
 protected:
  // The values of the server's file besides the port of another test.
  void putServer(PropertyList::Dictionary more) {
    PropertyList::Dictionary dictionary = portFile(4500);
    for (auto& [key, value] : more) dictionary.insert_or_assign(key, value);
    put(kServer, dictionary);
  }
  void stageLimit() {
    pane->buttonClicked(pane->ib_admin_button_maxFAdjust);
    pane->onStateTimer();
    ASSERT_TRUE(pane->maxFilesChanged());
  }
  Names pendingNames() { return namesOf(change->pending()); }
  bool wasLaunched(const std::string& words) const {
    return std::ranges::any_of(
        lines, [&](const std::string& line) { return line.find(words) != std::string::npos; });
  }
};

// ---- Quirks of the pane's loads

TEST_F(SettingsChangeEdgesTest, ACaptureBufferOfOthersIsTakenOverThoughALoadDoesNotShowIt) {
  putServer({{"ImageCaptBuffer", int64_t{3}}});
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  putServer({{"ImageCaptBuffer", int64_t{5}}});
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok());
  EXPECT_EQ(report.takenOver, Names{"image.buffer"});
  EXPECT_EQ(storedNumber(kServer, "ImageCaptBuffer"), 5);
}

TEST_F(SettingsChangeEdgesTest, WhatIsTakenOverOfACaptureBufferNamesTheirValue) {
  putServer({{"ImageCaptBuffer", int64_t{3}}});
  open();
  putServer({{"ImageCaptBuffer", int64_t{5}}});
  EXPECT_EQ(namesOf(change->foreignChanges().takenOver), Names{"image.buffer 3 5"});
}

TEST_F(SettingsChangeEdgesTest, AnEditToAFormerlyUneditedValueIsAnEdit) {
  putServer({{"ImageCaptBuffer", int64_t{5}}});
  open();
  EXPECT_EQ(pendingNames(), Names{"image.buffer 5 3"}) << "the slider stays where it is";
  ASSERT_TRUE(apply().ok());
  pane->ib_admin_slider_imgBuff.setDoubleValue(4);
  pane->onStateTimer();
  ASSERT_TRUE(apply().ok());
  pane->ib_admin_slider_imgBuff.setDoubleValue(3);
  putServer({{"ImageCaptBuffer", int64_t{4}}, {"Another", "key"}});
  change->takeOver();
  EXPECT_EQ(pendingNames(), Names{"image.buffer 4 3"});
}

TEST_F(SettingsChangeEdgesTest, AValueThatTheBoxCannotShowIsSaidToChangeAlong) {
  putServer({{"WakeupMode", int64_t{3}}});
  open();
  ASSERT_EQ(change->pending().size(), 1u);
  EXPECT_EQ(change->pending()[0].name, "system.wake");
  EXPECT_NE(change->pending()[0].because, "");
  change->takeBackAll();
  EXPECT_EQ(change->pending().size(), 1u) << "no position of the box means 3";
}

TEST_F(SettingsChangeEdgesTest, AHalfTypedPortStaysWhenOthersChangeSomethingElse) {
  putServer({});
  open();
  typeNvkPort("abc");
  putServer({{"ImageColorDepth", int64_t{8}}});
  change->takeOver();
  EXPECT_EQ(pane->ib_admin_edbox_nvkPort.stringValue(), "abc");
  EXPECT_EQ(pane->new_admin_imgDept(), 8);
  EXPECT_EQ(apply().error.code, FailureCode::wrongValue);
}

TEST_F(SettingsChangeEdgesTest, ABoxThatWasJustTickedStaysTicked) {
  open();
  switchBox(pane->ib_admin_chkbox_nvkPort, true);
  put(kAgent, {{"SwapMouseButtons", true}});
  change->takeOver();
  EXPECT_TRUE(pane->ib_admin_chkbox_nvkPort.isOn()) << "a person is about to type the port";
  EXPECT_EQ(pane->ib_user_chkbox_mseSwap.state(), kOnState);
}

TEST_F(SettingsChangeEdgesTest, ANewOwnImageValueIsComparedWithTheStoredOne) {
  put(kAgent, {{"ImageUseDefaults", true}, {"ImageColorDepth", int64_t{4}}});
  open();
  switchBox(pane->ib_user_chkbox_imgDefs, false);
  EXPECT_EQ(pendingNames(), (Names{"user.image.defaults on off", "user.image.depth 4 6"}));
}

TEST_F(SettingsChangeEdgesTest, AFollowingUserSeesTheServersForeignValueAndKeepsTheEdit) {
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  putServer({{"ImageColorDepth", int64_t{8}}});
  change->takeOver();
  EXPECT_EQ(pane->new_user_imgDept(), 8);
  EXPECT_EQ(pendingNames(), Names{"user.mouse.swap off on"});
}

TEST_F(SettingsChangeEdgesTest, AValueOfAFollowingUserThatNobodySeesIsNotSaidToBeTakenOver) {
  put(kAgent, {{"ImageUseDefaults", true}, {"ImageColorDepth", int64_t{4}}});
  open();
  put(kAgent, {{"ImageUseDefaults", true}, {"ImageColorDepth", int64_t{5}}});
  EXPECT_EQ(namesOf(change->foreignChanges().takenOver), Names{});
}

TEST_F(SettingsChangeEdgesTest, TakingBackOfTheFollowingBringsTheOwnValuesBack) {
  put(kAgent, {{"ImageUseDefaults", false}, {"ImageColorDepth", int64_t{4}}});
  open();
  switchBox(pane->ib_user_chkbox_imgDefs, true);
  EXPECT_EQ(pane->new_user_imgDept(), 6);
  change->takeBack("user.image.defaults");
  EXPECT_EQ(pane->new_user_imgDept(), 4);
  EXPECT_EQ(pendingNames(), Names{});
}

TEST_F(SettingsChangeEdgesTest, TheSessionModeChangesOthersAlongAndEachCanBeTakenBack) {
  putServer({{"WakeupMode", int64_t{1}}, {"ActionOnConnect", int64_t{1}}});
  open();
  computer.alerts.addAnswer(NSAlertAlternateReturn);
  switchBox(pane->ib_admin_chkbox_multiUser, true);
  EXPECT_EQ(pendingNames(),
            (Names{"connect.multiuser off on", "connect.act on off", "connect.action lock hidden",
                   "system.wake off on", "system.screensaver.disable off on"}));
  change->takeBack("connect.multiuser");
  EXPECT_EQ(pendingNames(), (Names{"connect.act on off", "connect.action lock hidden", "system.wake off on",
                                   "system.screensaver.disable off on"}));
  change->takeBack("connect.act");
  change->takeBack("system.wake");
  change->takeBack("system.screensaver.disable");
  EXPECT_EQ(pendingNames(), Names{});
  EXPECT_EQ(pane->ib_admin_rbutton_lockScreen.state(), kOnState);
}

// ---- Taking back

TEST_F(SettingsChangeEdgesTest, TakingOneChangeBackHidesNoChangeOfOthers) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  put(kServer, portFile(4600));
  change->takeBack("nvk.sound");
  EXPECT_EQ(apply().error.code, FailureCode::cancelled);
  EXPECT_EQ(person.collisions.size(), 1u);
  EXPECT_EQ(storedNvkPort(), 4600);
}

TEST_F(SettingsChangeEdgesTest, TakingBackRunsNoTool) {
  open();
  typeNvkPort("4700");
  stageLimit();
  change->takeBack("nvk.port");
  change->takeBackAll();
  EXPECT_EQ(pendingNames(), Names{});
  EXPECT_EQ(lines, Names{});
}

TEST_F(SettingsChangeEdgesTest, AStagedLimitIsTakenBackByTheFieldThatShowsIt) {
  open();
  stageLimit();
  const auto changes = change->pending();
  ASSERT_EQ(changes.size(), 2u);
  change->takeBack(changes[0].name);
  EXPECT_EQ(pendingNames(), Names{});
  EXPECT_FALSE(pane->maxFilesChanged());
}

// ---- The open files limit

TEST_F(SettingsChangeEdgesTest, AForeignChangeOfTheLimitIsAskedAboutWhereOneIsStaged) {
  computer.fileSystem.put(kLaunchd, "limit maxfiles 256 512\n# theirs\n");
  open();
  stageLimit();
  computer.fileSystem.put(kLaunchd, "limit maxfiles 1024 2048\n# theirs\nsetenv A B\n");
  EXPECT_EQ(apply().error.code, FailureCode::cancelled);
  ASSERT_EQ(person.collisions.size(), 1u);
  EXPECT_EQ(person.collisions[0].loaded, "256 and 512");
  EXPECT_EQ(person.collisions[0].theirs, "1024 and 2048");
  EXPECT_EQ(person.collisions[0].yours, "10240 and 12288");
  EXPECT_TRUE(pane->maxFilesChanged());
  person.side = Side::mine;
  computer.alerts.addAnswer(NSAlertDefaultReturn);
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(bytesAt(kLaunchd), "limit maxfiles 10240 12288\n# theirs\nsetenv A B\n");
}

TEST_F(SettingsChangeEdgesTest, ALimitThatOthersSetToTheSameIsNotSavedAgain) {
  open();
  stageLimit();
  computer.fileSystem.put(kLaunchd, "limit maxfiles 10240 12288\n# theirs\n");
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok());
  EXPECT_FALSE(report.applied);
  EXPECT_EQ(person.questions, 0);
  EXPECT_EQ(bytesAt(kLaunchd), "limit maxfiles 10240 12288\n# theirs\n");
}

TEST_F(SettingsChangeEdgesTest, ALimitWithoutANumberIsNoneToBothSides) {
  computer.fileSystem.put(kLaunchd, "limit maxfiles 1024 unlimited\n");
  open();
  stageLimit();
  put(kServer, portFile(4600));
  EXPECT_TRUE(change->foreignChanges().collisions.empty());
}

TEST_F(SettingsChangeEdgesTest, AForeignLimitIsNamedAmongWhatIsTakenOver) {
  open();
  computer.fileSystem.put(kLaunchd, "limit maxfiles 1024 2048\n");
  const ForeignChanges foreign = change->foreignChanges();
  ASSERT_EQ(foreign.takenOver.size(), 1u);
  EXPECT_EQ(foreign.takenOver[0].to, "1024 and 2048");
}

TEST_F(SettingsChangeEdgesTest, AStagedLimitOfALockedPaneIsNeitherAskedAboutNorSaidToBeSaved) {
  open();
  stageLimit();
  loseRights();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  computer.fileSystem.put(kLaunchd, "limit maxfiles 1024 2048\n");
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok());
  EXPECT_EQ(person.questions, 0);
  EXPECT_EQ(report.saved, Names{"user settings"});
}

TEST_F(SettingsChangeEdgesTest, ALimitThatIsSavedIsNotPendingAgainWhereTheServersFileFails) {
  open();
  stageLimit();
  computer.fileFaults.set(FileOperation::openWrite, pane->getTempFilePath("server.conf"), true);
  computer.alerts.addAnswer(NSAlertDefaultReturn);
  const ChangeReport report = apply();
  EXPECT_EQ(report.error.code, FailureCode::notWritten);
  EXPECT_EQ(bytesAt(kLaunchd), "limit maxfiles 10240 12288\n");
  EXPECT_EQ(report.saved, Names{"open files limit"});
  EXPECT_EQ(pendingNames(), Names{});
}

TEST_F(SettingsChangeEdgesTest, ALineThatTheSaveWouldTearApartRefusesTheLimit) {
  const std::string text = "# caf\xC3\xA9\nlimit maxfiles 256 512\n";
  computer.fileSystem.put(kLaunchd, text);
  open();
  stageLimit();
  const ChangeReport report = apply();
  EXPECT_EQ(report.error.code, FailureCode::notSettable);
  EXPECT_NE(report.error.sentence.find("line 1 of /etc/launchd.conf"), std::string::npos)
      << report.error.sentence;
  EXPECT_EQ(bytesAt(kLaunchd), text);
  EXPECT_EQ(pendingNames().size(), 2u);
}

TEST_F(SettingsChangeEdgesTest, ALineThatTheSaveWouldShortenIsAWarning) {
  computer.fileSystem.put(kLaunchd, "limit maxfiles 256 512\n# \xC3\xA9t\n");
  open();
  EXPECT_TRUE(change->check().empty()) << "nothing is staged";
  stageLimit();
  const auto findings = change->check();
  ASSERT_EQ(findings.size(), 1u);
  EXPECT_FALSE(findings[0].blocks);
  EXPECT_NE(findings[0].sentence.find("line 2 of /etc/launchd.conf"), std::string::npos);
  computer.alerts.addAnswer(NSAlertDefaultReturn);
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(bytesAt(kLaunchd), "limit maxfiles 10240 12288\n# \xC3\xA9\n");
}

// ---- Collisions

TEST_F(SettingsChangeEdgesTest, AChoiceCollidesAsOneSetting) {
  putServer({{"ActionOnConnect", int64_t{0}}});
  open();
  pane->buttonClicked(pane->ib_admin_rbutton_lockScreen);
  putServer({{"ActionOnConnect", int64_t{2}}});
  EXPECT_EQ(apply().error.code, FailureCode::cancelled);
  ASSERT_EQ(person.collisions.size(), 1u);
  EXPECT_EQ(person.collisions[0].name, "connect.action");
  EXPECT_EQ(person.collisions[0].loaded, "console");
  EXPECT_EQ(person.collisions[0].theirs, "hidden");
  EXPECT_EQ(person.collisions[0].yours, "lock");
  person.side = Side::theirs;
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(pane->ib_admin_rbutton_toHidden.state(), kOnState);
  EXPECT_EQ(storedNumber(kServer, "ActionOnConnect"), 2);
}

TEST_F(SettingsChangeEdgesTest, AChoiceThatIsSwitchedOffIsNone) {
  putServer({{"ActionOnConnect", int64_t{0}}});
  open();
  switchBox(pane->ib_admin_chkbox_actOnLogin, false);
  putServer({{"ActionOnConnect", int64_t{2}}});
  apply();
  ASSERT_EQ(person.collisions.size(), 1u);
  EXPECT_EQ(person.collisions[0].yours, "none");
}

TEST_F(SettingsChangeEdgesTest, BothPortsCollideAndEachIsAskedAbout) {
  put(kServer, {});
  open();
  typeNvkPort("4700");
  pane->ib_admin_chkbox_rdpPort.setState(kOnState);
  pane->ib_admin_edbox_rdpPort.setStringValue("4701");
  put(kServer, {{"NVKService", PropertyList::Dictionary{{"PortNumber", int64_t{5000}}}},
                {"RDPService", PropertyList::Dictionary{{"PortNumber", int64_t{5001}}}}});
  apply();
  ASSERT_EQ(person.collisions.size(), 2u);
  EXPECT_EQ(person.collisions[0].name, "nvk.port");
  EXPECT_EQ(person.collisions[1].name, "rdp.port");
}

TEST_F(SettingsChangeEdgesTest, APortThatOthersTookForTheOtherServiceIsRefused) {
  put(kServer, {});
  open();
  typeNvkPort("5000");
  put(kServer, {{"RDPService", PropertyList::Dictionary{{"PortNumber", int64_t{5000}}}}});
  EXPECT_EQ(apply().error.code, FailureCode::wrongValue);
  EXPECT_FALSE(wasLaunched("mv"));
}

TEST_F(SettingsChangeEdgesTest, AChangeThatComesWhileAPersonAnswersIsAskedAboutToo) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  put(kServer, portFile(4600));
  person.side = Side::mine;
  person.whileAsking = [this] {
    if (person.questions == 1) put(kServer, portFile(4650));
  };
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(person.questions, 2);
  EXPECT_EQ(person.collisions[0].theirs, "4650");
  EXPECT_EQ(storedNvkPort(), 4700);
}

TEST_F(SettingsChangeEdgesTest, AChangeThatComesWhileTheToolsRunIsNotWrittenOverLater) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  computer.effects.setSink([this](EffectKind kind, const std::string& line) {
    if (kind != EffectKind::launch || line.find("apply") == std::string::npos) return;
    PropertyList::Dictionary theirs = portFile(4700);
    theirs["Another"] = "key";
    theirs["ImageColorDepth"] = int64_t{8};
    put(kServer, theirs);
  });
  EXPECT_TRUE(apply().ok());
  computer.effects.setSink(nullptr);
  EXPECT_EQ(pane->new_admin_imgDept(), 8);
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  EXPECT_TRUE(apply().ok());
  EXPECT_NE(listAt(kServer)->find("Another"), nullptr);
  EXPECT_EQ(storedNumber(kServer, "ImageColorDepth"), 8);
}

TEST_F(SettingsChangeEdgesTest, APreviewIsOfOnesOwnChangesAlone) {
  open();
  typeNvkPort("4700");
  put(kAgent, {{"SwapMouseButtons", true}});
  EXPECT_EQ(change->preview().files, Names{kServer});
}

// ---- Damaged files

TEST_F(SettingsChangeEdgesTest, AFileThatIsDamagedMeanwhileIsNoCollision) {
  put(kServer, portFile(4500));
  open();
  pane->ib_admin_chkbox_nvkPort.setState(kOffState);
  pane->buttonClicked(pane->ib_admin_chkbox_nvkPort);
  pane->onStateTimer();
  computer.fileSystem.put(kServer, "damaged");
  EXPECT_EQ(apply().error.code, FailureCode::damaged);
  EXPECT_TRUE(person.collisions.empty());
  EXPECT_EQ(person.files.size(), 1u);
  EXPECT_EQ(pendingNames(), (Names{"nvk.port.custom on off", "nvk.port 4500 4073"}))
      << "though 4073 is the value of a file that cannot be read";
  put(kServer, portFile(4500));
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNvkPort(), 4073);
  EXPECT_TRUE(hasForeignKey());
}

TEST_F(SettingsChangeEdgesTest, ReplacingAFileThatWasDamagedMeanwhileKeepsWhatWasLoaded) {
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  computer.fileSystem.put(kServer, "damaged");
  person.damaged = DamagedAnswer::replace;
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok()) << report.error.sentence;
  EXPECT_EQ(storedNvkPort(), 4500);
  EXPECT_TRUE(hasForeignKey());
  EXPECT_TRUE(change->findings().empty());
}

TEST_F(SettingsChangeEdgesTest, WhereOneOfTwoDamagedFilesIsCancelledBothStayAsTheyAre) {
  put(kAgent, {{"SwapMouseButtons", false}});
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  ASSERT_TRUE(apply().ok());
  switchBox(pane->ib_user_chkbox_mseSwap, false);
  switchBox(pane->ib_admin_chkbox_nvkSound, true);
  computer.fileSystem.put(kAgent, "damaged");
  computer.fileSystem.put(kServer, "damaged too");
  person.damagedAt = {{kAgent, DamagedAnswer::restore}};
  EXPECT_EQ(apply().error.code, FailureCode::damaged);
  EXPECT_EQ(person.files.size(), 2u);
  EXPECT_EQ(bytesAt(kAgent), "damaged");
  EXPECT_EQ(bytesAt(kServer), "damaged too");
  EXPECT_EQ(pendingNames().size(), 2u);
}

TEST_F(SettingsChangeEdgesTest, TwoDamagedFilesAreMendedEachInItsWay) {
  put(kAgent, {{"SwapMouseButtons", false}, {"Foreign", "kept"}});
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  ASSERT_TRUE(apply().ok());
  close();
  computer.fileSystem.put(kAgent, "damaged");
  computer.fileSystem.put(kServer, "damaged too");
  open();
  ASSERT_EQ(change->findings().size(), 2u);
  typeNvkPort("4800");
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  person.damagedAt = {{kAgent, DamagedAnswer::replace}, {kServer, DamagedAnswer::restore}};
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok()) << report.error.sentence;
  EXPECT_EQ(storedNvkPort(), 4800);
  EXPECT_TRUE(hasForeignKey());
  EXPECT_EQ(storedNumber(kAgent, "SwapMouseButtons"), 1);
}

TEST_F(SettingsChangeEdgesTest, ADamagedCopyIsNotPutBack) {
  put(kServer, portFile(4500));
  put(kAgent, {{"SwapMouseButtons", false}});
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  ASSERT_TRUE(apply().ok());
  for (const char* path : {kServer, kAgent}) {
    computer.fileSystem.put(path, "damaged");
    computer.fileSystem.put(computer.settingsFiles.placeOf(path), "a damaged copy");
    change->takeOver();
    lines.clear();
    EXPECT_EQ(change->restore(change->findings().at(0)).error.code, FailureCode::damaged);
    EXPECT_EQ(bytesAt(path), "damaged");
    EXPECT_EQ(lines, Names{});
    switchBox(pane->ib_admin_chkbox_nvkClipb, false);
    switchBox(pane->ib_user_chkbox_mseSwap, false);
    person.damaged = DamagedAnswer::restore;
    EXPECT_EQ(apply().error.code, FailureCode::damaged);
    EXPECT_EQ(bytesAt(path), "damaged");
    computer.fileSystem.remove(path);
    change->takeOver();
    change->takeBackAll();
  }
}

TEST_F(SettingsChangeEdgesTest, ACopyOfTheAdministratorsFileIsNotPutBackWhileLocked) {
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  ASSERT_TRUE(apply().ok());
  computer.fileSystem.put(kServer, "damaged");
  change->takeOver();
  loseRights();
  const ChangeReport report = change->restore(change->findings().at(0));
  EXPECT_EQ(report.error.code, FailureCode::notAllowed);
  EXPECT_TRUE(report.saved.empty());
  EXPECT_EQ(bytesAt(kServer), "damaged");
}

TEST_F(SettingsChangeEdgesTest, RestoringAFileThatIsGoodAgainDoesNothingAndHidesNoChange) {
  put(kServer, portFile(4500));
  open();
  computer.fileSystem.put(kServer, "damaged");
  change->takeOver();
  put(kServer, portFile(4600));
  const ChangeReport report = change->restore(change->findings().at(0));
  EXPECT_EQ(report.error.code, FailureCode::notSettable);
  EXPECT_FALSE(report.applied);
  EXPECT_EQ(storedNvkPort(), 4600);
  EXPECT_EQ(namesOf(change->foreignChanges().takenOver), Names{"nvk.port 4500 4600"});
}

TEST_F(SettingsChangeEdgesTest, ACopyThatCannotBeWrittenIsSaidAndTheFileStays) {
  put(kAgent, {{"SwapMouseButtons", false}});
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  ASSERT_TRUE(apply().ok());
  computer.fileSystem.put(kAgent, "damaged");
  change->takeOver();
  computer.fileFaults.set(FileOperation::openWrite, kAgent, true);
  const ChangeReport report = change->restore(change->findings().at(0));
  EXPECT_EQ(report.error.code, FailureCode::notWritten);
  EXPECT_TRUE(report.saved.empty());
  EXPECT_EQ(bytesAt(kAgent), "damaged");
  EXPECT_EQ(change->findings().size(), 1u);
  EXPECT_FALSE(computer.locks.isHeld());
}

TEST_F(SettingsChangeEdgesTest, ACopyThatIsWrittenHalfwayLosesNothingThatThePaneKnows) {
  put(kAgent, {{"SwapMouseButtons", false}, {"Foreign", "kept"}});
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  ASSERT_TRUE(apply().ok());
  computer.fileSystem.put(kAgent, "damaged");
  change->takeOver();
  computer.fileFaults.set(FileOperation::write, kAgent, true);
  EXPECT_EQ(change->restore(change->findings().at(0)).error.code, FailureCode::notWritten);
  EXPECT_EQ(bytesAt(kAgent), "");
  computer.fileFaults.set(FileOperation::write, kAgent, false);
  switchBox(pane->ib_user_chkbox_mseSwap, false);
  EXPECT_TRUE(apply().ok());
  EXPECT_NE(listAt(kAgent)->find("Foreign"), nullptr);
}

TEST_F(SettingsChangeEdgesTest, AFileThatCannotBeSetAsideIsNotReplaced) {
  computer.fileSystem.put(kServer, "damaged");
  open();
  typeNvkPort("5000");
  person.damaged = DamagedAnswer::replace;
  computer.fileFaults.set(FileOperation::openWrite, computer.settingsFiles.placeOf(kServer) + ".damaged",
                          true);
  EXPECT_EQ(apply().error.code, FailureCode::notWritten);
  EXPECT_EQ(bytesAt(kServer), "damaged");
  EXPECT_EQ(pendingNames(), (Names{"nvk.port.custom off on", "nvk.port 4073 5000"}));
}

TEST_F(SettingsChangeEdgesTest, AFileThatOnlyOthersMayReadIsNotReplaced) {
  put(kServer, portFile(4500));
  computer.fileFaults.set(FileOperation::openRead, kServer, true);
  open();
  typeNvkPort("5000");
  person.damaged = DamagedAnswer::replace;
  const ChangeReport report = apply();
  EXPECT_EQ(report.error.code, FailureCode::damaged);
  EXPECT_NE(report.error.advice, "");
  computer.fileFaults.set(FileOperation::openRead, kServer, false);
  EXPECT_EQ(storedNvkPort(), 4500);
}

TEST_F(SettingsChangeEdgesTest, AFileOnABrokenMediumIsReplacedAndItIsSaid) {
  put(kServer, portFile(4500));
  computer.fileFaults.set(FileOperation::read, kServer, true);
  open();
  typeNvkPort("5000");
  person.damaged = DamagedAnswer::replace;
  computer.effects.setSink([this](EffectKind kind, const std::string& line) {
    if (kind == EffectKind::launch && line.find("/bin/mv") != std::string::npos)
      computer.fileFaults.set(FileOperation::read, kServer, false);
  });
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok()) << report.error.sentence;
  EXPECT_EQ(storedNvkPort(), 5000);
  ASSERT_EQ(report.warnings.size(), 1u);
  EXPECT_NE(report.warnings[0].find("could not be kept"), std::string::npos) << report.warnings[0];
}

TEST_F(SettingsChangeEdgesTest, ASaveThatCannotBeReadBackIsNotKnownToHaveSucceeded) {
  open();
  computer.fileFaults.set(FileOperation::read, kAgent, true);
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  EXPECT_EQ(apply().error.code, FailureCode::notWritten);
  EXPECT_EQ(pendingNames(), Names{"user.mouse.swap off on"});
}

TEST_F(SettingsChangeEdgesTest, AFolderInPlaceOfAFileIsNotReplaced) {
  computer.fileSystem.addDirectory(kServer);
  open();
  typeNvkPort("5000");
  person.damaged = DamagedAnswer::replace;
  EXPECT_EQ(apply().error.code, FailureCode::damaged);
  EXPECT_FALSE(wasLaunched("mv"));
}

TEST_F(SettingsChangeEdgesTest, ADamagedFileOfTheSystemIsNotWrittenOverByItsTool) {
  computer.fileSystem.put(kSaver, "damaged");
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  EXPECT_TRUE(apply().ok()) << "the tool that writes it is not run";
  switchBox(pane->ib_admin_chkbox_scrSaver, true);
  EXPECT_EQ(apply().error.code, FailureCode::damaged);
  lines.clear();
  switchBox(pane->ib_admin_chkbox_nvkPrint, false);
  const ChangeReport report = leave(NSAlertDefaultReturn);
  EXPECT_EQ(report.error.code, FailureCode::damaged);
  EXPECT_FALSE(wasLaunched("defaults"));
  EXPECT_EQ(bytesAt(kSaver), "damaged");
  EXPECT_EQ(pendingNames(), Names{"system.screensaver.disable off on"}) << "the other one is saved";
}

TEST_F(SettingsChangeEdgesTest, AFileOfTheSystemIsTakenOverThoughTheServersCannotBeRead) {
  put(kServer, portFile(4500));
  open();
  computer.fileSystem.put(kServer, "damaged");
  put(kSaver, {{"loginWindowIdleTime", int64_t{0}}});
  change->takeOver();
  EXPECT_EQ(pane->m_admin_scrSaver, 0);
  EXPECT_EQ(pane->m_admin_nvkPort, 4500);
  EXPECT_EQ(pendingNames(), Names{});
}

TEST_F(SettingsChangeEdgesTest, AFileThatAppearsIsTakenOver) {
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  put(kServer, portFile(4600));
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNvkPort(), 4600);
  EXPECT_TRUE(hasForeignKey());
}

TEST_F(SettingsChangeEdgesTest, AWriteThatEmptiesTheFileLosesNothingOnceItSucceeds) {
  put(kAgent, {{"ImageUseDefaults", false}, {"ImageColorDepth", int64_t{4}}, {"Foreign", "kept"}});
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  computer.fileFaults.set(FileOperation::write, kAgent, true);
  EXPECT_EQ(apply().error.code, FailureCode::notWritten);
  computer.fileFaults.set(FileOperation::write, kAgent, false);
  EXPECT_EQ(pendingNames(), Names{"user.mouse.swap off on"});
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNumber(kAgent, "ImageColorDepth"), 4);
  EXPECT_NE(listAt(kAgent)->find("Foreign"), nullptr);
}

// ---- Tools

TEST_F(SettingsChangeEdgesTest, WhatIsNotKnownToBeSavedIsStillPending) {
  open();
  typeNvkPort("5000");
  computer.tools.setDuration("/bin/mv", std::nullopt, 60s);
  EXPECT_EQ(apply().error.code, FailureCode::tryAgain);
  EXPECT_EQ(pendingNames(), (Names{"nvk.port.custom off on", "nvk.port 4073 5000"}));
  EXPECT_TRUE(computer.tools.wait(60s));
  EXPECT_TRUE(change->foreignChanges().any());
  EXPECT_TRUE(change->foreignChanges().collisions.empty());
  change->takeOver();
  EXPECT_EQ(pendingNames(), Names{});
  EXPECT_EQ(storedNvkPort(), 5000);
}

TEST_F(SettingsChangeEdgesTest, ASecondApplyWaitsForTheToolsOfTheFirst) {
  open();
  typeNvkPort("5000");
  computer.tools.setDuration("/bin/mv", std::nullopt, 40s);
  EXPECT_EQ(apply().error.code, FailureCode::tryAgain);
  const std::string temporary = pane->getTempFilePath("server.conf");
  const std::string first = bytesAt(temporary);
  typeNvkPort("5001");
  computer.tools.setUsual("/bin/mv", std::nullopt);
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNvkPort(), 5001);
  EXPECT_EQ(bytesAt(temporary), "missing");
}

TEST_F(SettingsChangeEdgesTest, WhatALateToolLeavesBehindGoesWithTheNextApply) {
  open();
  typeNvkPort("5000");
  computer.tools.setFailure("/bin/mv", std::nullopt, 1, "late");
  computer.tools.setDuration("/bin/mv", std::nullopt, 40s);
  EXPECT_EQ(apply().error.code, FailureCode::tryAgain);
  change->takeBackAll();
  const std::string temporary = pane->getTempFilePath("server.conf");
  EXPECT_NE(bytesAt(temporary), "missing") << "the tool may still move it";
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(bytesAt(temporary), "missing");
}

TEST_F(SettingsChangeEdgesTest, NothingIsLaunchedBehindAToolThatDoesNotEnd) {
  open();
  typeNvkPort("5000");
  computer.tools.setDuration("/bin/mv", std::nullopt, std::nullopt);
  EXPECT_EQ(apply().error.code, FailureCode::tryAgain);
  const std::string temporary = pane->getTempFilePath("server.conf");
  const std::string first = bytesAt(temporary);
  typeNvkPort("5001");
  lines.clear();
  EXPECT_EQ(apply().error.code, FailureCode::tryAgain);
  EXPECT_EQ(lines, Names{});
  EXPECT_EQ(bytesAt(temporary), first) << "the first tool moves what it was given";
  EXPECT_EQ(pendingNames(), (Names{"nvk.port.custom off on", "nvk.port 4073 5001"}));
}

// ---- Locked, left, interrupted

TEST_F(SettingsChangeEdgesTest, ALockedPaneAppliesTheUsersChangesAlone) {
  put(kServer, portFile(4500));
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  loseRights();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  lines.clear();
  const ChangeReport report = apply();
  EXPECT_TRUE(report.ok());
  EXPECT_EQ(report.saved, Names{"user settings"});
  EXPECT_EQ(lines, Names{std::string("write ") + kAgent});
  EXPECT_TRUE(pane->authorize(true, false));
  EXPECT_EQ(pendingNames(), Names{"nvk.sound on off"}) << "the edit outlives the lock";
  putServer({{"ImageColorDepth", int64_t{8}}});
  change->takeOver();
  EXPECT_EQ(pendingNames(), Names{"nvk.sound on off"}) << "and is still an edit";
}

TEST_F(SettingsChangeEdgesTest, LeavingWithoutTheChangeLockWritesNothingAtAll) {
  open();
  switchBox(pane->ib_admin_chkbox_scrSaver, true);
  switchBox(pane->ib_admin_chkbox_ntfShowNews, false);
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  stageLimit();
  const Names before = pendingNames();
  computer.locks.holdElsewhere(std::nullopt);
  lines.clear();
  const ChangeReport report = leave(NSAlertDefaultReturn);
  EXPECT_EQ(report.error.code, FailureCode::tryAgain);
  EXPECT_FALSE(wasLaunched("defaults"));
  EXPECT_FALSE(wasLaunched("mv"));
  EXPECT_EQ(bytesAt(kAgent), "missing");
  EXPECT_EQ(pendingNames(), before);
}

TEST_F(SettingsChangeEdgesTest, LeavingWithoutTheChangeLockHidesNoChangeOfOthers) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  put(kServer, portFile(4600));
  computer.locks.holdElsewhere(std::nullopt);
  leave(NSAlertDefaultReturn);
  computer.locks.holdElsewhere(0ms);
  EXPECT_EQ(apply().error.code, FailureCode::cancelled);
  EXPECT_EQ(person.collisions.size(), 1u);
}

TEST_F(SettingsChangeEdgesTest, AnImpossibleValueOutlivesTheLock) {
  open();
  typeNvkPort("70000");
  computer.alerts.addAnswer(NSAlertDefaultReturn);
  const ChangeReport report = change->around([this] { pane->buttonClicked(pane->ib_button_Auth); });
  EXPECT_EQ(report.error.code, FailureCode::wrongValue);
  EXPECT_FALSE(pane->authorized());
  pane->buttonClicked(pane->ib_button_Auth);
  EXPECT_EQ(pane->ib_admin_edbox_nvkPort.stringValue(), "70000");
  EXPECT_EQ(change->check().size(), 1u);
}

TEST_F(SettingsChangeEdgesTest, AfterDiscardingThePaneKnowsWhatItLoaded) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  put(kServer, portFile(4600));
  leave(NSAlertAlternateReturn);
  typeNvkPort("4800");
  EXPECT_EQ(pendingNames(), Names{"nvk.port 4600 4800"});
  EXPECT_FALSE(change->foreignChanges().any());
}

TEST_F(SettingsChangeEdgesTest, NotificationsThatDiscardingLeavesPendingStayEdits) {
  open();
  switchBox(pane->ib_admin_chkbox_ntfShowNews, false);
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  leave(NSAlertAlternateReturn);
  put(kMenu, {{"NvkNotificationShowNotices", false}});
  change->takeOver();
  EXPECT_EQ(pendingNames(), Names{"notify.news on off"});
}

TEST_F(SettingsChangeEdgesTest, ContinuingToEditKeepsEveryEdit) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  computer.alerts.addAnswer(NSAlertOtherReturn);
  const ChangeReport report = change->around([this] { pane->buttonClicked(pane->ib_button_Auth); });
  EXPECT_FALSE(report.applied);
  put(kServer, portFile(4600));
  EXPECT_EQ(change->foreignChanges().collisions.size(), 1u);
}

TEST_F(SettingsChangeEdgesTest, WhatComesWhileAPersonChoosesIsAskedAboutToo) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  pane->ib_admin_chkbox_rdpPort.setState(kOnState);
  pane->ib_admin_edbox_rdpPort.setStringValue("4701");
  put(kServer, portFile(4600));
  person.side = Side::theirs;
  person.whileAsking = [this] {
    PropertyList::Dictionary more = portFile(4600);
    more["RDPService"] = PropertyList::Dictionary{{"PortNumber", int64_t{5001}}};
    more["ImageColorDepth"] = int64_t{8};
    put(kServer, more);
  };
  EXPECT_EQ(change->agree(person), (Names{"image.depth", "nvk.port", "rdp.port"}));
  EXPECT_EQ(person.questions, 2);
  EXPECT_EQ(pendingNames(), Names{});
  EXPECT_EQ(pane->new_admin_rdpPort(), 5001);
}

TEST_F(SettingsChangeEdgesTest, CancellingTheChoiceLeavesEverythingAsItIs) {
  put(kServer, portFile(4500));
  open();
  typeNvkPort("4700");
  put(kServer, portFile(4600));
  EXPECT_EQ(change->agree(person), std::nullopt);
  EXPECT_EQ(change->foreignChanges().collisions.size(), 1u);
}

TEST_F(SettingsChangeEdgesTest, AnExceptionReleasesTheLockAndTheQuestion) {
  open();
  typeNvkPort("4700");
  EXPECT_THROW(change->around([this] { pane->didUnselect(); }), UnansweredAlert);
  EXPECT_FALSE(recording->answered);
  put(kServer, portFile(4600));
  person.whileAsking = [] { throw std::runtime_error("no answer"); };
  EXPECT_THROW(apply(), std::runtime_error);
  EXPECT_FALSE(computer.locks.isHeld());
}

// ---- What is said

// One way in which Apply fails.
struct FailureCase {
  const char* name;
  void (*cause)(SimulatedComputer& computer);
};
constexpr FailureCase kFailures[] = {
    {"locked", [](SimulatedComputer& c) { c.locks.holdElsewhere(std::nullopt); }},
    {"move", [](SimulatedComputer& c) { c.tools.setFailure("/bin/mv", std::nullopt, 1, "no space left"); }},
    {"killed", [](SimulatedComputer& c) { c.tools.setKilled("/bin/chmod", std::nullopt, 9); }},
    {"server", [](SimulatedComputer& c) { c.tools.setFailure("/usr/sbin/nvkservice", "apply", 3, ""); }},
    {"slow", [](SimulatedComputer& c) { c.tools.setDuration("/bin/mv", std::nullopt, std::nullopt); }},
    {"refused", [](SimulatedComputer& c) { c.authorization.refuse("/bin/mv", std::nullopt); }},
    {"disk",
     [](SimulatedComputer& c) {
       c.fileFaults.set(FileOperation::write, "/Users/user/Library/Preferences/com.veltrane.nvkagent.plist",
                        true);
     }},
    {"temporary",
     [](SimulatedComputer& c) {
       c.fileFaults.set(FileOperation::openWrite, "/tmp/norvik.prefs.tmp.server.conf.812", true);
     }},
    {"damaged", [](SimulatedComputer& c) { c.fileSystem.put("/etc/norvik/svr.cfg", "damaged"); }},
};

class SettingsChangeFailureTest : public ChangingPane, public testing::WithParamInterface<FailureCase> {};

bool readsAsSentence(const std::string& text) {
  return !text.empty() && (text.front() < 'a' || text.front() > 'z') && text.back() == '.';
}

TEST_P(SettingsChangeFailureTest, IsSaidInASentenceWithTheNextStep) {
  open();
  typeNvkPort("5000");
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  GetParam().cause(computer);
  const ChangeReport report = apply();
  EXPECT_FALSE(report.ok());
  EXPECT_TRUE(readsAsSentence(report.error.sentence)) << report.error.sentence;
  EXPECT_TRUE(readsAsSentence(report.error.advice)) << report.error.sentence << " / " << report.error.advice;
  const bool toolsHaveEnded = computer.services().tools.wait(std::chrono::milliseconds(0));
  EXPECT_EQ(computer.locks.isHeld(), !toolsHaveEnded) << "the tools that still run hold the lock";
}
INSTANTIATE_TEST_SUITE_P(All, SettingsChangeFailureTest, testing::ValuesIn(kFailures),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace norvik
