// What is pending in a window as the line of a shell: norvikctl's own parser reads it, and what it wishes
// makes the same pending on another pane.
#include "src/frontends/shared/edits/copied_command.h"

#include "src/frontends/command/command_line.h"
#include "src/frontends/shared/edits/edits.h"
#include "src/frontends/shared/edits/limit_step.h"
#include "tests/frontends/shared/changing_pane.h"
#include "tests/support/program.h"

namespace norvik::command {

class CopiedCommand : public ChangingPane {
 protected:
  CopiedCommand() { open(); }

  std::string copied() {
    EditedPane edited(*pane, interface);
    return commandOfPending(edited);
  }
  // The words as a shell reads them.
  static Words wordsOf(const std::string& line) {
    const ProgramResult shell = norvik::runProgram(
        {"/bin/sh", "-c", "norvikctl() { for word; do printf '%s\\n' \"$word\"; done; }; " + line});
    Words words;
    std::istringstream lines(shell.output);
    for (std::string word; std::getline(lines, word);) words.push_back(word);
    return words;
  }
  // Takes all edits back and makes what the line wishes.
  void makeAgain(const std::string& line) {
    change->takeBackAll();
    ASSERT_TRUE(change->pending().empty());
    std::string fault;
    const CommandLine parsed = parseCommandLine(wordsOf(line), fault);
    ASSERT_EQ(fault, "");
    const Wish wish = wishOf(computer.platform(), interface, parsed.arguments);
    ASSERT_TRUE(wish.errors.empty()) << wish.errors.front().sentence;
    pane->updateGui(false, false);
    EditedPane edited(*pane, interface);
    const ChangeError error = applyEdits(edited, wish.edits, BehindBoxes::refused, notes);
    EXPECT_FALSE(error) << error.sentence;
  }
  void expectSame() {
    const auto before = namesOf(change->pending());
    ASSERT_FALSE(before.empty());
    makeAgain(copied());
    EXPECT_EQ(namesOf(change->pending()), before);
  }

  std::vector<std::string> notes;
};

TEST_F(CopiedCommand, ValuesOfEveryKind) {
  typeNvkPort("5073");
  switchBox(pane->ib_admin_chkbox_rdpSound, false);
  pane->ib_admin_popup_ntfRepeat.selectItemAtIndex(1);
  pane->ib_admin_slider_imgDept.setIntegerValue(8);
  EXPECT_EQ(
      copied(),
      "norvikctl set nvk.port.custom=on nvk.port=5073 rdp.sound=off image.depth=8 'notify.repeat=30 minutes'");
  expectSame();
}

TEST_F(CopiedCommand, AServiceThatIsSwitchedOffWithItsOtherSettings) {
  switchBox(pane->ib_admin_chkbox_nvkSound, false);
  switchBox(pane->ib_admin_chkbox_nvkEnabled, false);
  expectSame();
}

TEST_F(CopiedCommand, AnActionThatIsSwitchedOff) {
  switchBox(pane->ib_admin_chkbox_actOnLogin, false);
  expectSame();
}

TEST_F(CopiedCommand, OwnImageValues) {
  switchBox(pane->ib_user_chkbox_imgDefs, false);
  pane->ib_user_slider_imgDept.setIntegerValue(7);
  expectSame();
}

TEST_F(CopiedCommand, TheStandardPortAgain) {
  typeNvkPort("5073");
  ASSERT_TRUE(apply().ok());
  switchBox(pane->ib_admin_chkbox_nvkPort, false);
  expectSame();
}

TEST_F(CopiedCommand, TheOpenFilesLimit) {
  EXPECT_EQ(copied(), "");
  pane->buttonClicked(pane->ib_admin_button_maxFAdjust);
  EXPECT_EQ(copied(), "norvikctl limits adjust");
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  EXPECT_EQ(copied(), "norvikctl set user.mouse.swap=on && norvikctl limits adjust");
}

TEST_F(CopiedCommand, WordsAreQuotedForAShell) {
  for (const std::string word : {"plain=1", "two words", "it's", "$HOME", "a\"b", "*", ""}) {
    const ProgramResult shell = norvik::runProgram({"/bin/sh", "-c", "printf '%s.' " + quotedForShell(word)});
    EXPECT_EQ(shell.output, word + ".");
  }
  EXPECT_EQ(quotedForShell("nvk.port=5000"), "nvk.port=5000");
}

}  // namespace norvik::command
