// Values in sentences, catalogues, and which of them is chosen.
#include "src/frontends/shared/language/language.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "resources/resources.h"
#include "src/frontends/shared/language/choice.h"
#include "src/frontends/shared/language/pane_texts.h"
#include "src/frontends/shared/language/plural_rule.h"
#include "src/frontends/shared/language/translated_interface.h"
#include "tests/support/files.h"
#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

TEST(Language, AValueIsPutInWhereItsNumberIs) {
  EXPECT_EQ(sentence("Port {1} is taken by {2}.", {"4073", "sshd"}), "Port 4073 is taken by sshd.");
  EXPECT_EQ(sentence("{2} has {1}.", {"the port", "sshd"}), "sshd has the port.");
}

TEST(Language, AValueWithBracesStaysAsItIs) {
  EXPECT_EQ(sentence("{1} and {2}", {"{2}", "{1}"}), "{2} and {1}");
}

TEST(Language, WhatIsNoPlaceOfAValueStays) {
  EXPECT_EQ(sentence("{} {0} {3} {x} {1", {"a"}), "{} {0} {3} {x} {1");
}

TEST(Language, ANumberChoosesTheForm) {
  EXPECT_EQ(counted("{1} change", "{1} changes", 1), "1 change");
  EXPECT_EQ(counted("{1} change", "{1} changes", 0), "0 changes");
  EXPECT_EQ(counted("{1} change on {2}", "{1} changes on {2}", 3, {"Image"}), "3 changes on Image");
}

TEST(Language, ThingsAreListedInWords) {
  EXPECT_EQ(allOf({}), "");
  EXPECT_EQ(allOf({"a"}), "a");
  EXPECT_EQ(allOf({"a", "b", "c"}), "a, b and c");
  EXPECT_EQ(oneOf({"{2}", "{1}", "c"}), "{2}, {1} or c");
}

// Speaks the language of a catalogue for as long as it lives.
class Spoken : public testing::Test {
 protected:
  ~Spoken() override { speak(std::nullopt); }
  const std::string bytes = contentOf(NORVIK_PSEUDO_LANGUAGE);
};

TEST_F(Spoken, TextsSentencesAndCountsComeFromTheCatalogue) {
  const auto catalogue = Catalogue::read(bytes);
  ASSERT_TRUE(catalogue);
  speak(catalogue);
  EXPECT_TRUE(translated("Apply").starts_with("[Ápplý "));
  EXPECT_TRUE(
      sentence("Port {1} is taken by {2}.", {"4073", "sshd"}).starts_with("[Póřť 4073 íš ťákéñ bý sshd."));
  EXPECT_TRUE(counted("{1} change", "{1} changes", 1).starts_with("[1 çháñğé "));
  EXPECT_TRUE(counted("{1} change", "{1} changes", 2).starts_with("[2 çháñğéš "));
  EXPECT_EQ(translated("Nobody has written this."), "Nobody has written this.");
  EXPECT_EQ(translated(""), "") << "the key of the header";
  speak(std::nullopt);
  EXPECT_EQ(translated("Apply"), "Apply");
}

TEST_F(Spoken, TheTextsOfThePane) {
  speak(Catalogue::read(bytes));
  EXPECT_TRUE(paneText("Started").starts_with("[Šťářťéď "));
  const std::string growing = paneText("Starting......");
  EXPECT_EQ(growing, paneText("Starting...") + "...");
  const std::string address = paneText(
      "Norvik clients can connect to this computer using the following address:\n\nmac.example.com:5000");
  EXPECT_TRUE(address.ends_with("\n\nmac.example.com:5000")) << address;
  EXPECT_TRUE(address.starts_with("[")) << address;
  EXPECT_EQ(paneText("4073"), "4073");
}

TEST_F(Spoken, TheDescriptionKeepsWhatIsTypedAndCompared) {
  speak(Catalogue::read(bytes));
  const InterfaceDescription shipped = shippedInterface();
  const InterfaceDescription shown = translatedInterface(shipped);
  ASSERT_EQ(shown.tabs.size(), shipped.tabs.size());
  EXPECT_EQ(shown.tabs.front().label, shipped.tabs.front().label);
  const auto before = shipped.controls();
  const auto after = shown.controls();
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_TRUE(after[i]->label.starts_with("[")) << after[i]->label;
    EXPECT_EQ(after[i]->items, before[i]->items);
    EXPECT_EQ(after[i]->choice, before[i]->choice);
    EXPECT_EQ(after[i]->setting, before[i]->setting);
    for (const std::string& word : before[i]->synonyms)
      EXPECT_EQ(std::ranges::count(after[i]->synonyms, word), 1) << "one may search in English too";
    EXPECT_EQ(std::ranges::count(after[i]->synonyms, before[i]->label), 1);
  }
}

TEST(Catalogues, BytesThatAreNoneAreRefused) {
  const std::string bytes = contentOf(NORVIK_PSEUDO_LANGUAGE);
  ASSERT_TRUE(Catalogue::read(bytes));
  EXPECT_FALSE(Catalogue::read(""));
  EXPECT_FALSE(Catalogue::read("no catalogue at all, but long enough"));
  // Cut anywhere before the zero byte at its end, its tables would point behind the end.
  for (std::size_t size = 0; size + 1 < bytes.size(); size += 997)
    EXPECT_FALSE(Catalogue::read(bytes.substr(0, size)));
  std::string many = bytes;
  many[11] = '\x7f';
  EXPECT_FALSE(Catalogue::read(many)) << "more texts than there are bytes";
}

TEST(Catalogues, EachShippedOneIsThereAndCounts) {
  for (const std::string_view language : shippedLanguages()) {
    const auto bytes = resourceFile(language, "mo");
    ASSERT_TRUE(bytes) << language;
    EXPECT_TRUE(Catalogue::read(*bytes)) << language;
  }
}

TEST(PluralRules, OfOurLanguages) {
  EXPECT_EQ(pluralForm("n != 1", 1), 0U);
  EXPECT_EQ(pluralForm("n != 1", 0), 1U);
  EXPECT_EQ(pluralForm("n > 1", 0), 0U);
  EXPECT_EQ(pluralForm("0", 5), 0U);
  constexpr std::string_view kArabic =
      "n==0 ? 0 : n==1 ? 1 : n==2 ? 2 : n%100>=3 && n%100<=10 ? 3 : n%100>=11 ? 4 : 5";
  const std::map<std::size_t, std::size_t> forms{{0, 0},  {1, 1},   {2, 2},   {3, 3},   {10, 3}, {11, 4},
                                                 {99, 4}, {100, 5}, {102, 5}, {103, 3}, {111, 4}};
  for (const auto& [number, form] : forms) EXPECT_EQ(pluralForm(kArabic, number), form) << number;
}

TEST(PluralRules, OneThatIsNoExpressionIsTheFirstForm) {
  for (const char* rule : {"", "n ?", "(n", "n +", "n ! 1", "n % 0 == 0 x", "n ? 1"}) {
    EXPECT_EQ(pluralForm(rule, 7), 0U) << rule;
  }
  EXPECT_EQ(pluralForm(std::string(1000, '('), 7), 0U);
  EXPECT_EQ(pluralForm("7 % 0 + 1 / 0", 7), 0U);
}

std::vector<std::string> wanted(const std::map<std::string, std::string>& variables) {
  return wantedLanguages([&variables](const char* name) {
    const auto found = variables.find(name);
    return found != variables.end() ? found->second : "";
  });
}
using Languages = std::vector<std::string>;

TEST(LanguageChoice, FollowsTheEnvironment) {
  EXPECT_EQ(wanted({}), Languages());
  EXPECT_EQ(wanted({{"LANG", "de_AT.UTF-8"}}), (Languages{"de_AT", "de"}));
  EXPECT_EQ(wanted({{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}), (Languages{"fr_FR", "fr"}));
  EXPECT_EQ(wanted({{"LC_ALL", "es_ES@euro"}, {"LC_MESSAGES", "fr_FR"}}), (Languages{"es_ES", "es"}));
  EXPECT_EQ(wanted({{"LANGUAGE", "pt_BR:de"}, {"LANG", "fr_FR"}}),
            (Languages{"pt_BR", "pt", "de", "fr_FR", "fr"}));
  EXPECT_EQ(wanted({{"LANGUAGE", "de"}, {"LANG", "C.UTF-8"}}), Languages{"de"}) << "a system without locales";
  EXPECT_EQ(wanted({{"LANGUAGE", "de"}}), Languages{"de"});
  EXPECT_EQ(wanted({{"LANGUAGE", "de"}, {"LC_ALL", "C"}, {"LANG", "fr_FR"}}), Languages{"en"});
  EXPECT_EQ(wanted({{"LANG", "POSIX"}, {"LANGUAGE", "de"}}), Languages{"en"});
}

TEST(LanguageChoice, TheFirstThatThereIs) {
  EXPECT_EQ(chooseLanguage({"pt_BR", "pt", "fr", "de"}), "fr");
  EXPECT_EQ(spokenLanguage(), "fr");
  EXPECT_FALSE(isRightToLeft());
  EXPECT_EQ(chooseLanguage({"ar_EG", "ar"}), "ar");
  EXPECT_TRUE(isRightToLeft());
  EXPECT_EQ(chooseLanguage({"en_GB", "en", "de"}), "en") << "who wants English first gets it";
  EXPECT_EQ(translated("Apply"), "Apply");
  EXPECT_EQ(chooseLanguage({}), "en");
}

}  // namespace
}  // namespace norvik
