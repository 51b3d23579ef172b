// What a person wishes, beside a pane that is being edited, as in a window: the wish is read, and the living
// pane is edited by it.
#include "src/frontends/shared/edits/edits.h"

#include "src/frontends/shared/edits/defaults.h"
#include "tests/frontends/shared/changing_pane.h"

namespace norvik {

class EditsBesideAPane : public ChangingPane {
 protected:
  EditsBesideAPane() { open(); }

  Wish wish(const std::vector<std::string>& words) { return wishOf(computer.platform(), interface, words); }
  ChangeError make(const Wish& wish, BehindBoxes behindBoxes = BehindBoxes::refused) {
    pane->updateGui(false, false);
    EditedPane edited(*pane, interface);
    return applyEdits(edited, wish.edits, behindBoxes, notes);
  }

  std::vector<std::string> notes;
};

TEST_F(EditsBesideAPane, WordsBecomeEditsOfTheLivingPane) {
  const Wish wished = wish({"nvk.port=5073", "rdp.enabled=off"});
  ASSERT_TRUE(wished.errors.empty());
  EXPECT_EQ(__main_pane, pane.get());
  EXPECT_FALSE(make(wished));
  EXPECT_EQ(pane->new_admin_nvkPort(), 5073);
  EXPECT_FALSE(pane->ib_admin_chkbox_rdpEnabled.isOn());
  EXPECT_TRUE(apply().ok());
  EXPECT_EQ(storedNvkPort(), 5073);
}

TEST_F(EditsBesideAPane, ReadingAWishChangesNothingOfThePane) {
  typeNvkPort("6000");
  wish({"nvk.port=5073"});
  defaultValues(computer.platform(), interface);
  EXPECT_EQ(pane->new_admin_nvkPort(), 6000);
  EXPECT_TRUE(pane->authorized());
  EXPECT_EQ(namesOf(change->pending()),
            (std::vector<std::string>{"nvk.port.custom off on", "nvk.port 4073 6000"}));
  EXPECT_EQ(lines, std::vector<std::string>());
}

TEST_F(EditsBesideAPane, WhatIsWrongIsSaidByName) {
  const Wish wished = wish({"nvk.prot=5073", "rdp.port=0"});
  ASSERT_EQ(wished.errors.size(), 2U);
  EXPECT_EQ(wished.errors[0].code, FailureCode::usage);
  EXPECT_EQ(wished.errors[0].setting, "nvk.prot");
  EXPECT_EQ(wished.errors[1].code, FailureCode::wrongValue);
}

TEST_F(EditsBesideAPane, AProfileBecomesEditsOfTheLivingPane) {
  const ProfileSettings profile{{"user.image.defaults", kOffState}, {"user.image.depth", 8}};
  const Wish wished = wishOf(computer.platform(), interface, profile, Unnamed::stay);
  ASSERT_TRUE(wished.errors.empty());
  EXPECT_FALSE(make(wished, BehindBoxes::edited));
  EXPECT_EQ(namesOf(change->pending()),
            (std::vector<std::string>{"user.image.defaults on off", "user.image.depth 6 8"}));
}

TEST_F(EditsBesideAPane, WhatCannotBeSetAsThingsAreIsRefused) {
  const Wish wished = wishOf(computer.platform(), interface, {{"user.image.depth", 8}}, Unnamed::stay);
  EXPECT_EQ(make(wished).code, FailureCode::notSettable);
  EXPECT_TRUE(change->pending().empty());
}

}  // namespace norvik
