// The texts of the pane module and the adapters, which know no language: what the pane's controls show, what
// its alerts say, values, and why rights were not granted, in English. A front end shows them through here.
// Computes values.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace norvik {

// What a control of the pane shows, or a part of an alert, in the language of the person: a fixed text, an
// address in its sentence, or a text that is under way and grows by a dot a second. Anything else as it is.
std::string paneText(std::string_view text);

// Every title that the pane gives a button which has this one, as it is shown: "Start" and "Stop" for either.
// The title alone for a button that keeps it. For a toolkit whose buttons do not grow.
std::vector<std::string> paneTitles(std::string_view title);

// Every fixed text of the pane module that a person reads. The first ones are beginnings of sentences that an
// address ends: "Norvik clients can connect to this computer using the following address:\n\n{1}".
std::span<const std::string_view> paneTexts();

}  // namespace norvik
