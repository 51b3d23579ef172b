// The history: every change that begins is one line, by any front end; and how an entry is taken back.
#include "src/frontends/shared/history/history.h"

#include "src/frontends/shared/history/reversal.h"
#include "tests/frontends/shared/changing_pane.h"

namespace norvik {

class HistoryTest : public ChangingPane {
 protected:
  using Texts = std::vector<std::string>;

  std::string place() { return computer.userState.placeOf(kHistoryFile); }
  void putHistory(const std::string& bytes) { computer.fileSystem.put(place(), bytes); }
  std::string historyBytes() { return bytesAt(place()); }
  HistoryReading read() { return readHistory(computer.userState); }
  RecordedChange latest() {
    const HistoryReading reading = read();
    return reading.entries.empty() ? RecordedChange() : reading.entries.front().change;
  }
  static RecordedChange soundOff() {
    return {{{"nvk.sound", true, false}}, FailureCode::none, {"server settings"}, {}};
  }
  Reversal reversal(const RecordedChange& recorded, ChangedAgain again = ChangedAgain::leftAlone) {
    Reversal found = reversalOf(computer.platform(), interface, recorded.settings, again);
    pane->updateGui(false, false);
    return found;
  }
  // Takes the latest change back as a front end does.
  ChangeReport undo(ChangedAgain again = ChangedAgain::leftAlone) {
    change->takeOver();
    EditedPane edited(*pane, interface);
    EXPECT_FALSE(applyReversal(edited, reversal(latest(), again), notes));
    return apply();
  }

  std::vector<std::string> notes;
};

TEST_F(HistoryTest, AnApplyIsAnEntryWithTheTypesOfItsValues) {
  open();
  typeNvkPort("5073");
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  pane->ib_admin_popup_imgMode.selectItemAtIndex(0);
  ASSERT_TRUE(apply().ok());
  const HistoryReading reading = read();
  ASSERT_EQ(reading.entries.size(), 1U);
  const HistoryEntry& entry = reading.entries.front();
  EXPECT_EQ(entry.time, "2010-07-05T05:20:00Z");
  EXPECT_EQ(entry.frontEnd, "window");
  EXPECT_EQ(entry.user, "user");
  EXPECT_EQ(entry.outcome, "ok");
  const std::vector<RecordedSetting> expected{{"nvk.port.custom", false, true},
                                              {"nvk.port", int64_t{4073}, int64_t{5073}},
                                              {"nvk.sound", true, false},
                                              {"image.quality", "High", "Low"}};
  EXPECT_EQ(entry.change.settings, expected);
  EXPECT_EQ(entry.change.saved, Texts{"server settings"});
  EXPECT_EQ(computer.fileSystem.find(place())->mode, 0600U);
}

TEST_F(HistoryTest, NothingToApplyIsNoEntry) {
  open();
  apply();
  EXPECT_EQ(historyBytes(), "missing");
}

TEST_F(HistoryTest, AChangeThatFailedAfterItBeganIsAnEntryToo) {
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  computer.fileFaults.set(FileOperation::openWrite, pane->getTempFilePath("server.conf"), true);
  EXPECT_FALSE(apply().ok());
  EXPECT_EQ(read().entries.at(0).outcome, "not-written");
  EXPECT_EQ(latest().notSaved, Texts{"nvk.sound"});
  EXPECT_EQ(latest().saved, Texts());
}

TEST_F(HistoryTest, WhatThePaneAppliesByItsOwnQuestionIsAnEntry) {
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  pane->didSelect();
  leave(NSAlertDefaultReturn);
  ASSERT_EQ(read().entries.size(), 1U);
  EXPECT_EQ(latest().settings.at(0).name, "user.mouse.swap");
}

TEST_F(HistoryTest, ACopyThatIsPutBackIsAnEntry) {
  put(kServer, portFile(4600));
  open();
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  ASSERT_TRUE(apply().ok());
  computer.fileSystem.put(kServer, "damaged");
  change->look();
  ASSERT_EQ(change->findings().size(), 1U);
  ASSERT_TRUE(change->restore(change->findings().front()).ok());
  EXPECT_EQ(read().entries.size(), 2U);
  EXPECT_TRUE(latest().settings.empty());
  EXPECT_EQ(latest().saved.size(), 1U);
}

TEST_F(HistoryTest, TheOpenFilesLimitIsOneSetting) {
  open();
  pane->buttonClicked(pane->ib_admin_button_maxFAdjust);
  computer.alerts.addAnswer(NSAlertDefaultReturn);
  ASSERT_TRUE(apply().ok());
  const std::vector<RecordedSetting> expected{{kOpenFilesLimitName, "default", "10240 and 12288"}};
  EXPECT_EQ(latest().settings, expected);
  const Reversal found = reversal(latest());
  EXPECT_TRUE(found.edits.empty());
  EXPECT_EQ(found.limit, LimitStep::reset);
}

TEST_F(HistoryTest, AHistoryThatCannotBeWrittenIsAWarningAndNoFailure) {
  const auto warnings = [&](bool on) {
    switchBox(pane->ib_user_chkbox_mseSwap, on);
    const ChangeReport report = apply();
    EXPECT_TRUE(report.ok());
    EXPECT_EQ(report.saved, Texts{"user settings"});
    return report.warnings;
  };
  open();
  computer.fileFaults.set(FileOperation::write, place(), true);
  EXPECT_EQ(warnings(true), Texts{"The change is not in the history, as " + place() +
                                  " could not be written: No space left on device."});
  computer.fileFaults.set(FileOperation::write, place(), false);
  computer.fileSystem.addDirectory(place());
  EXPECT_EQ(warnings(false), Texts{"The change is not in the history, as " + place() +
                                   " could not be written: Is a directory."});
  EXPECT_EQ(read().unreadable, "Is a directory");
}

TEST_F(HistoryTest, LinesThatAreNoEntriesAreSkippedAndKept) {
  const std::string foreign = std::string("not json\n{\"norvikChange\": 2}\n\0\0\n[]\n\n", 36) +
                              "{\"norvikChange\": 1, \"time\": \"x\"}\n{\"norvikChange\":1,\"ti";
  putHistory(foreign);
  ASSERT_EQ(history.record(soundOff()), "");
  EXPECT_TRUE(historyBytes().starts_with(foreign + "\n{\"norvikChange\":1,\"time\":")) << historyBytes();
  EXPECT_EQ(read().entries.size(), 1U);
  EXPECT_EQ(read().skipped, 7U);
}

TEST_F(HistoryTest, TheOldestEntriesGoAndForeignLinesStay) {
  history.record({{{"first", true, false}}, FailureCode::none, {}, {}});
  history.record({{{"second", true, false}}, FailureCode::none, {}, {}});
  std::string bytes = "foreign\n" + historyBytes();
  const std::string line = bytes.substr(bytes.rfind('\n', bytes.size() - 2) + 1);
  for (std::size_t i = 2; i < kMostHistoryEntries; ++i) bytes += line;
  putHistory(bytes);
  history.record(soundOff());
  const HistoryReading reading = read();
  EXPECT_EQ(reading.entries.size(), kMostHistoryEntries);
  EXPECT_EQ(reading.skipped, 1U);
  EXPECT_EQ(reading.entries.front().change, soundOff());
  EXPECT_EQ(reading.entries.back().change.settings.front().name, "second");
  EXPECT_TRUE(historyBytes().starts_with("foreign\n"));
}

TEST_F(HistoryTest, TextsThatAreNoUtf8AndKeysOfLaterVersionsAreNoTrouble) {
  history.record({{{"a", "\xff\xfe", "b\nc"}}, FailureCode::none, {}, {}});
  EXPECT_EQ(read().entries.at(0).change.settings.at(0).after, SettingValue("b\nc"));
  const std::string line = historyBytes();
  putHistory(line.substr(0, line.size() - 2) + ",\"later\":[1]}\n");
  EXPECT_EQ(read().entries.size(), 1U);
}

// ---- Taking back

TEST_F(HistoryTest, AnEntryIsTakenBackAndTheUndoIsAnEntry) {
  open();
  typeNvkPort("5073");
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  ASSERT_TRUE(apply().ok());
  EXPECT_TRUE(undo().ok());
  EXPECT_EQ(storedNvkPort(), 4073);
  EXPECT_FALSE(pane->ib_admin_chkbox_nvkPort.isOn());
  EXPECT_TRUE(pane->ib_admin_chkbox_nvkSound.isOn());
  EXPECT_EQ(notes, Texts());
  EXPECT_EQ(read().entries.size(), 2U);
  EXPECT_TRUE(undo().ok()) << "and that once more";
  EXPECT_EQ(storedNvkPort(), 5073);
}

TEST_F(HistoryTest, WhatWasChangedAgainIsNamedAndLeftAlone) {
  open();
  typeNvkPort("5073");
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  ASSERT_TRUE(apply().ok());
  put(kServer, portFile(6000));
  const Reversal found = reversal(latest());
  EXPECT_EQ(found.notes,
            (Texts{"nvk.port.custom stays on, as it belongs to a setting that was changed again since.",
                   "nvk.port stays 6000, as it was changed again since: the change had made it 5073."}));
  EXPECT_TRUE(found.leavesSome);
  ASSERT_EQ(found.edits.size(), 1U);
  EXPECT_EQ(found.edits[0].name, "user.mouse.swap");
  EXPECT_TRUE(undo().ok());
  EXPECT_EQ(storedNvkPort(), 6000);
}

TEST_F(HistoryTest, WhatWasChangedAgainIsTakenBackTooIfAPersonSaysSo) {
  open();
  typeNvkPort("5073");
  ASSERT_TRUE(apply().ok());
  put(kServer, portFile(6000));
  EXPECT_TRUE(undo(ChangedAgain::takenBackToo).ok());
  EXPECT_EQ(storedNvkPort(), 4073);
}

TEST_F(HistoryTest, WhatIsBackAlreadyIsNoEdit) {
  open();
  typeNvkPort("5073");
  ASSERT_TRUE(apply().ok());
  put(kServer, portFile(4073));
  const Reversal found = reversal(latest());
  EXPECT_TRUE(found.empty());
  EXPECT_FALSE(found.leavesSome);
}

TEST_F(HistoryTest, AnImageValueOfAUserWhoFollowsAgainIsLeftAlone) {
  open();
  switchBox(pane->ib_user_chkbox_imgDefs, false);
  pane->ib_user_slider_imgDept.setIntegerValue(8);
  ASSERT_TRUE(apply().ok());
  ASSERT_EQ(latest().settings.size(), 2U);
  EXPECT_TRUE(undo().ok());
  EXPECT_TRUE(pane->ib_user_chkbox_imgDefs.isOn());
}

TEST_F(HistoryTest, AnEntryOfAnotherVersionIsRefusedByName) {
  open();
  const Reversal unknown = reversal({{{"nvk.tls", true, false}}, FailureCode::none, {}, {}});
  ASSERT_EQ(unknown.errors.size(), 1U);
  EXPECT_EQ(unknown.errors[0].setting, "nvk.tls");
  const Reversal wrong = reversal({{{"nvk.port", int64_t{70000}, int64_t{4073}}}, FailureCode::none, {}, {}});
  ASSERT_EQ(wrong.errors.size(), 1U);
  EXPECT_EQ(wrong.errors[0].code, FailureCode::notSettable);
}

}  // namespace norvik
