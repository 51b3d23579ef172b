// Which language a person is spoken to in: the first that the person wants and that there is a catalogue of,
// or English. Reads the environment; the catalogues are built into the programs.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace norvik {

// The languages that there are catalogues of: "de", "fr".
std::span<const std::string_view> shippedLanguages();

// What the environment asks for, the most wanted first: "de_AT", "de", "fr"; "en" for English. LANGUAGE is a
// list and counts most, then LC_ALL, LC_MESSAGES and LANG. A locale "C" or "POSIX" is a wish for English
// whatever LANGUAGE says. No locale has to be installed. `value` gives a variable's value, empty for none.
std::vector<std::string> wantedLanguages(const std::function<std::string(const char* name)>& value);
// The same of this process.
std::vector<std::string> wantedLanguages();

// Speaks the first of these languages that there is, or English. To be called once, when a program starts.
// Returns which one it is: "de", or "en".
std::string_view chooseLanguage(const std::vector<std::string>& wanted);

// The language that is spoken: "de", or "en" before any was chosen.
std::string_view spokenLanguage();
// Whether it is written from right to left.
bool isRightToLeft();

}  // namespace norvik
