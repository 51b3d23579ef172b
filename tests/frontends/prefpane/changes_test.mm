// A change from the edit to what the line above the pages says: refused values, the list of changes, what
// others change meanwhile, damaged files, saves that fail, the lock, leaving.
#include <algorithm>

#include "src/frontends/prefpane/text.h"
#include "src/server/mac/control/tool_commands.h"

#import "tests/frontends/prefpane/in_panel.h"
#import "tests/frontends/prefpane/pane_under_test.h"
#import "tests/frontends/prefpane/simulated_pane.h"

namespace norvik::prefpane {
namespace {

constexpr const char* kPortField = "ib_admin_edbox_nvkPort";

class PaneChangesTest : public SimulatedPane {
 protected:
  void typePort(const std::string& words) { type(kPortField, words); }
  std::string port() { return utf8([(NSTextField*)view(kPortField) stringValue]); }
  bool holdsText(const std::string& words) { return stored().find(words) != std::string::npos; }
  bool hasKeyboard(const std::string& outlet) {
    NSView* field = view(outlet);
    id editor = [window firstResponder];
    return editor == field ||
           ([editor isKindOfClass:[NSText class]] && [(NSText*)editor delegate] == (id)field);
  }
  // The title of the button with the number of changes; empty where it is hidden.
  std::string counter() {
    for (const char* title : {"1 change", "2 changes", "3 changes"}) {
      if (buttonWith(title) != nil) return title;
    }
    return "";
  }
  // The rows of the sidebar that are marked.
  std::vector<std::string> marked() {
    NSOutlineView* sidebar = (NSOutlineView*)find(
        [window contentView], [](NSView* one) { return [one isKindOfClass:[NSOutlineView class]]; });
    std::vector<std::string> rows;
    for (NSInteger row = 0; row < [sidebar numberOfRows]; ++row) {
      NSString* title = [[sidebar dataSource] outlineView:sidebar
                                objectValueForTableColumn:nil
                                                   byItem:[sidebar itemAtRow:row]];
      if ([title hasSuffix:@"\u2022"]) rows.push_back(utf8(title));
    }
    return rows;
  }
  // The note under the port's field.
  std::string note() {
    NSView* field = view(kPortField);
    NSTextField* words = (NSTextField*)find([field superview], [field](NSView* one) {
      return [one isKindOfClass:[NSTextField class]] && NSMinY([one frame]) >= NSMaxY([field frame]) &&
             NSMinY([one frame]) < NSMaxY([field frame]) + 20;
    });
    return utf8([words stringValue]);
  }
};

// ---- Refused values

TEST_F(PaneChangesTest, ARefusedPortDoesNotReachThePaneAndIsShown) {
  openEverything();
  const std::string before = stored();
  for (const char* words : {"70000", "0", "abc", "3390"}) {
    SCOPED_TRACE(words);
    typePort(words);
    choosePage("Mouse");
    press("ib_button_Apply");
    EXPECT_EQ(stored(), before);
    EXPECT_FALSE(launched("\"apply\""));
    EXPECT_EQ(shownPage(), "Norvik clients");
    EXPECT_TRUE(hasKeyboard(kPortField));
    EXPECT_FALSE(note().empty());
    EXPECT_TRUE(read().starts_with("Failed: Nothing was applied.")) << read();
    EXPECT_NE(read().find(note()), std::string::npos) << note();
  }
  picture("refused");
}

TEST_F(PaneChangesTest, WhiteSpaceAroundAPortIsAccepted) {
  openEverything();
  typePort(" 4500 ");
  press("ib_button_Apply");
  EXPECT_TRUE(holdsText("4500"));
  EXPECT_EQ(outcome().kind, MessageKind::done) << read();
}

// ---- Saved, and saves that fail

TEST_F(PaneChangesTest, AnApplyThatWorkedIsSaidUntilTheNextEdit) {
  openEverything();
  EXPECT_EQ(read(), "");
  typePort("4500");
  press("ib_button_Apply");
  EXPECT_TRUE(holdsText("4500"));
  EXPECT_TRUE(read().starts_with("Done: Saved the server settings. Told the server.")) << read();
  picture("message");
  press("ib_admin_chkbox_nvkClipb");
  EXPECT_EQ(read(), "");
}

TEST_F(PaneChangesTest, AFullDiskIsSaidAndRetryWorksWhenThereIsSpace) {
  openEverything();
  const std::string before = stored();
  typePort("4500");
  const std::string temporary = pane().getTempFilePath(kServerConfigTempName);
  computer.fileFaults.set(FileOperation::write, temporary, true);
  press("ib_button_Apply");
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(outcome().kind, MessageKind::failure) << read();
  EXPECT_EQ(port(), "4500") << "the edit stays";
  EXPECT_TRUE(pane().ib_button_Apply.isEnabled());
  computer.fileFaults.set(FileOperation::write, temporary, false);
  pressButton(MessageAction::retry);
  EXPECT_TRUE(holdsText("4500"));
  EXPECT_EQ(outcome().kind, MessageKind::done) << read();
}

TEST_F(PaneChangesTest, AToolThatFailsIsSaidWithItsWords) {
  openEverything();
  typePort("4500");
  computer.tools.setFailure("/usr/sbin/nvkservice", "apply", 3, "the daemon does not answer");
  press("ib_button_Apply");
  EXPECT_EQ(outcome().kind, MessageKind::failure);
  InPanel details("Close");
  pressButton(MessageAction::showDetails);
  EXPECT_EQ(details.seen, 1);
  EXPECT_NE(details.words.find("the daemon does not answer"), std::string::npos) << details.words;
}

TEST_F(PaneChangesTest, SomebodyElsesLockIsSaidAndTheEditStays) {
  openEverything();
  typePort("4500");
  computer.locks.holdElsewhere(std::nullopt);
  press("ib_button_Apply");
  EXPECT_EQ(outcome().kind, MessageKind::failure);
  EXPECT_EQ(port(), "4500");
  computer.locks.holdElsewhere(std::chrono::milliseconds(0));
  pressButton(MessageAction::retry);
  EXPECT_TRUE(holdsText("4500"));
}

TEST_F(PaneChangesTest, ALongMessageCanBeReadWhole) {
  openEverything();
  WindowMessage message{MessageKind::warning, {}, {}, {}};
  for (int i = 0; i < 60; ++i) message.sentence += "word " + std::to_string(i) + " ";
  messages().show(MessageSubject::outcome, message);
  InPanel details("Close");
  pressButton(MessageAction::showDetails);
  EXPECT_NE(details.words.find("word 59"), std::string::npos) << details.words;
}

TEST_F(PaneChangesTest, AMessageBehindAnotherIsReachedAndClosed) {
  openEverything();
  messages().show(MessageSubject::files, {MessageKind::warning, "The first.", {}, {}});
  messages().show(MessageSubject::outcome, {MessageKind::failure, "The second.", {}, {}});
  EXPECT_EQ(read(), "Failed: The second.");
  [buttonWith("1/2") performClick:nil];
  EXPECT_EQ(read(), "Warning: The first.");
  [buttonWith("\u00d7") performClick:nil];
  EXPECT_EQ(read(), "Failed: The second.");
  [buttonWith("\u00d7") performClick:nil];
  EXPECT_EQ(read(), "");
}

TEST(PaneMessages, OfSuccessPassOnceTheyCanBeRead) {
  MessageArea area(500, 0.02);
  area.setSeen(false);
  area.show(MessageSubject::outcome, {MessageKind::done, "Done.", {}, {}});
  area.show(MessageSubject::files, {MessageKind::warning, "Damaged.", {}, {}});
  area.clear(MessageSubject::files);
  bool later = false;
  Delay after([&later] { later = true; });
  const auto runUntil = [](const std::function<bool()>& condition) {
    for (int i = 0; i < 500 && !condition(); ++i)
      [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                               beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.01]];
  };
  after.start(0.1);
  runUntil([&] { return later; });
  EXPECT_TRUE(area.isShown()) << "nobody has seen it";
  area.setSeen(true);
  runUntil([&] { return !area.isShown(); });
  EXPECT_FALSE(area.isShown());
}

// ---- The list of changes

TEST_F(PaneChangesTest, AreCountedBesideApplyAndMarkedInTheSidebar) {
  openEverything();
  EXPECT_EQ(counter(), "");
  typePort("4500");
  EXPECT_EQ(counter(), "1 change");
  press("ib_admin_chkbox_nvkSound");
  press("ib_user_chkbox_mseSwap");
  EXPECT_EQ(counter(), "3 changes");
  EXPECT_EQ(marked(), (std::vector<std::string>{"Mouse  \u2022", "Norvik clients  \u2022"}));
  press("ib_button_Apply");
  EXPECT_EQ(counter(), "");
  EXPECT_TRUE(marked().empty());
}

TEST_F(PaneChangesTest, AreListedWithWhatApplyDoes) {
  openEverything();
  typePort("4500");
  std::vector<std::string> row;
  InPanel list([&](NSView* contents) {
    picture("list");
    NSTableView* table =
        (NSTableView*)find(contents, [](NSView* one) { return [one isKindOfClass:[NSTableView class]]; });
    EXPECT_EQ([table numberOfRows], 1);
    for (NSTableColumn* column :
         {[[table tableColumns] objectAtIndex:0], [[table tableColumns] objectAtIndex:1],
          [[table tableColumns] objectAtIndex:2], [[table tableColumns] objectAtIndex:3]})
      row.push_back(utf8([[table dataSource] tableView:table objectValueForTableColumn:column row:0]));
    pressIn(contents, "Close");
  });
  [buttonWith("1 change") performClick:nil];
  EXPECT_EQ(row, (std::vector<std::string>{"Port number", "Norvik clients", "4074", "4500"}));
  for (const char* words : {"/etc/norvik/svr.cfg", "/usr/sbin/nvkservice apply", "the server",
                            "Connections to this computer end."})
    EXPECT_NE(list.words.find(words), std::string::npos) << list.words;
  EXPECT_EQ(counter(), "1 change") << "looking changes nothing";
}

TEST_F(PaneChangesTest, TheListLeadsToASetting) {
  openEverything();
  typePort("4500");
  choosePage("Mouse");
  InPanel list("Go to Setting");
  [buttonWith("1 change") performClick:nil];
  EXPECT_EQ(shownPage(), "Norvik clients");
  EXPECT_TRUE(hasKeyboard(kPortField));
}

TEST_F(PaneChangesTest, TheListTakesOneBackThenAllAndApplies) {
  openEverything();
  press("ib_user_chkbox_mseSwap");
  typePort("4500");
  press("ib_admin_chkbox_nvkSound");
  InPanel takeBack([](NSView* contents) {
    pressIn(contents, "Take Back");  // the first one is chosen
    pressIn(contents, "Apply");
  });
  [buttonWith("3 changes") performClick:nil];
  EXPECT_EQ(pane().m_user_mseSwap, 0) << "taken back";
  EXPECT_FALSE(pane().ib_user_chkbox_mseSwap.isOn());
  EXPECT_TRUE(holdsText("4500"));
  press("ib_user_chkbox_mseSwap");
  InPanel all([](NSView* contents) {
    pressIn(contents, "Take Back All");
    EXPECT_FALSE([buttonIn(contents, @"Apply") isEnabled]);
    EXPECT_FALSE([buttonIn(contents, @"Take Back") isEnabled]);
    pressIn(contents, "Close");
  });
  [buttonWith("1 change") performClick:nil];
  EXPECT_EQ(counter(), "");
  EXPECT_FALSE(pane().ib_user_chkbox_mseSwap.isOn());
}

// ---- Others

TEST_F(PaneChangesTest, WithNothingPendingTheControlsFollowWhatOthersSave) {
  openEverything();
  saveElsewhere(4600, true);
  noticeFiles();
  EXPECT_EQ(port(), "4600");
  EXPECT_TRUE(read().starts_with("Note: Somebody else has changed")) << read();
  EXPECT_EQ(counter(), "");
}

TEST_F(PaneChangesTest, WhatDoesNotCollideIsTakenOverAndTheEditsStay) {
  openEverything();
  typePort("4500");
  saveElsewhere(4074, true);
  noticeFiles();
  EXPECT_EQ(port(), "4500");
  EXPECT_EQ(pane().m_admin_nvkSound, 1);
  EXPECT_EQ(counter(), "1 change");
  press("ib_button_Apply");
  EXPECT_TRUE(holdsText("4500"));
  EXPECT_EQ(pane().m_admin_nvkSound, 1) << "theirs is not overwritten";
}

TEST_F(PaneChangesTest, WhatCollidesIsAskedAboutBeforeTheSave) {
  openEverything();
  typePort("4500");
  saveElsewhere(4600, false);
  {
    InPanel cancel("Cancel");
    press("ib_button_Apply");
    EXPECT_EQ(cancel.seen, 1);
    EXPECT_NE(cancel.words.find("4074"), std::string::npos) << "the value before";
  }
  EXPECT_TRUE(holdsText("4600")) << "cancelled";
  EXPECT_EQ(port(), "4500");
  InPanel mine("Continue");
  press("ib_button_Apply");
  EXPECT_EQ(mine.seen, 1);
  EXPECT_TRUE(holdsText("4500"));
}

TEST_F(PaneChangesTest, ACollisionIsSaidAtOnceAndTheirsCanBeTaken) {
  openEverything();
  typePort("4500");
  saveElsewhere(4600, true);
  noticeFiles();
  EXPECT_EQ(messages().message(MessageSubject::others).kind, MessageKind::warning);
  InPanel theirs([this](NSView* contents) {
    picture("collision");
    EXPECT_EQ([buttonIn(contents, @"4500") state], NSOnState) << "the person's own at first";
    pressIn(contents, "4600");
    EXPECT_EQ([buttonIn(contents, @"4500") state], NSOffState);
    pressIn(contents, "Continue");
  });
  pressButton(MessageAction::chooseValues);
  EXPECT_EQ(theirs.seen, 1);
  EXPECT_EQ(port(), "4600");
  EXPECT_EQ(counter(), "");
  EXPECT_EQ(read(), "");
}

TEST_F(PaneChangesTest, OwnSavesAreNoChangesOfOthers) {
  openEverything();
  typePort("4500");
  press("ib_button_Apply");
  noticeFiles();
  EXPECT_TRUE(messages().message(MessageSubject::others).isEmpty());
}

// ---- Damaged files

TEST_F(PaneChangesTest, ADamagedFileIsSaidBeforeAnythingElse) {
  computer.fileSystem.put("/etc/norvik/svr.cfg", "<plist><dict>");
  open();
  EXPECT_TRUE(read().starts_with("Warning: The server's settings file, /etc/norvik/svr.cfg, is damaged"))
      << read();
  press("ib_user_chkbox_mseSwap");
  EXPECT_TRUE(read().starts_with("Warning: The server's settings file")) << "it stays";
}

TEST_F(PaneChangesTest, ACopyOfADamagedFileIsRestored) {
  openEverything();
  typePort("4500");
  press("ib_button_Apply");
  const std::string good = stored();
  computer.fileSystem.put("/etc/norvik/svr.cfg", good.substr(0, 300));
  noticeFiles();
  EXPECT_TRUE(read().starts_with("Warning:")) << read();
  picture("damaged");
  pressButton(MessageAction::restoreCopy);
  EXPECT_EQ(stored(), good);
  EXPECT_EQ(pane().m_admin_nvkPort, 4500);
  EXPECT_NE(read().find("was put back"), std::string::npos) << read();
  EXPECT_TRUE(messages().message(MessageSubject::files).isEmpty());
}

TEST_F(PaneChangesTest, ADamagedFileIsNotWrittenOverUntilAPersonSaysSo) {
  openEverything();
  computer.fileSystem.put("/etc/norvik/svr.cfg", "<plist><dict>");
  noticeFiles();
  press("ib_admin_chkbox_nvkSound");
  {
    InPanel cancel("Cancel");
    press("ib_button_Apply");
    EXPECT_EQ(cancel.seen, 1);
    EXPECT_NE(cancel.words.find("Damaged Settings File"), std::string::npos);
  }
  EXPECT_EQ(stored(), "<plist><dict>");
  InPanel replace("Replace File");
  press("ib_button_Apply");
  EXPECT_EQ(replace.seen, 1);
  EXPECT_TRUE(holdsText("SoundOutputEnabled"));
  EXPECT_TRUE(messages().message(MessageSubject::files).isEmpty());
}

// ---- The lock

TEST_F(PaneChangesTest, ADeniedUnlockIsSaidAndCanBeTriedAgain) {
  computer.authorization.setInteractiveGranted(false);
  open();
  press("ib_button_Auth");
  EXPECT_TRUE(read().starts_with("Failed: The lock was not opened")) << read();
  computer.authorization.setInteractiveGranted(true);
  pressButton(MessageAction::retry);
  EXPECT_TRUE(pane().authorized());
  EXPECT_EQ(read(), "");
}

TEST_F(PaneChangesTest, ADeniedUnlockSaysWhy) {
  computer.authorization.setInteractiveGranted(false);
  computer.authorization.setRefusal(AuthorizationRefusal::noService);
  open();
  press("ib_button_Auth");
  EXPECT_TRUE(read().starts_with("Failed: The lock was not opened")) << read();
  EXPECT_NE(read().find(sentenceOf(AuthorizationRefusal::noService)), std::string::npos) << read();
}

TEST_F(PaneChangesTest, WhatLockingAppliedIsSaid) {
  openEverything();
  typePort("4500");
  InPanel apply("Apply now");
  press("ib_button_Auth");
  EXPECT_EQ(apply.seen, 1);
  EXPECT_TRUE(holdsText("4500"));
  EXPECT_NE(read().find("Saved the server settings."), std::string::npos) << read();
}

// ---- Leaving, by the pane's own question

TEST_F(PaneChangesTest, WhatLeavingAppliedIsSaidWhenThePaneIsShownNext) {
  openEverything();
  typePort("4500");
  InPanel apply("Apply Now");
  session->willUnselect();
  session->didUnselect();
  EXPECT_EQ(apply.seen, 1);
  EXPECT_TRUE(holdsText("4500"));
  EXPECT_FALSE(read().empty());
  session->willSelect();
  session->didSelect();
  EXPECT_NE(read().find("Saved the server settings."), std::string::npos) << read();
}

TEST_F(PaneChangesTest, LeavingKeepsTheEditsThatCouldNotBeSaved) {
  openEverything();
  typePort("4500");
  computer.fileFaults.set(FileOperation::write, pane().getTempFilePath(kServerConfigTempName), true);
  InPanel apply("Apply Now");
  session->didUnselect();
  EXPECT_FALSE(holdsText("4500"));
  session->didSelect();
  EXPECT_EQ(outcome().kind, MessageKind::failure) << read();
  EXPECT_EQ(port(), "4500");
}

TEST_F(PaneChangesTest, LeavingSavesNoValueThatCannotBe) {
  openEverything();
  typePort("70000");
  press("ib_admin_chkbox_nvkSound");
  InPanel apply("Apply Now");
  session->didUnselect();
  EXPECT_FALSE(holdsText("70000"));
  EXPECT_EQ(pane().m_admin_nvkSound, 1) << "the others are saved";
  EXPECT_EQ(outcome().kind, MessageKind::failure) << read();
  session->didSelect();
  EXPECT_EQ(port(), "70000") << "still there to be mended";
}

TEST_F(PaneChangesTest, LeavingWithDiscardSaysNothing) {
  openEverything();
  typePort("4500");
  InPanel discard("Discard Changes");
  session->didUnselect();
  EXPECT_EQ(discard.seen, 1);
  EXPECT_TRUE(holdsText("4074"));
  session->didSelect();
  EXPECT_EQ(read(), "");
  EXPECT_EQ(counter(), "");
}

}  // namespace
}  // namespace norvik::prefpane
