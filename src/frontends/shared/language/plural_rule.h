// Which form of a counted text a number takes, by the rule that a catalogue names: an expression in "n" with
// the operators of C, as gettext writes it. Computes values; knows no catalogue.
#pragma once

#include <cstddef>
#include <string_view>

namespace norvik {

// The form for that number by a rule such as "n != 1" or "n%10==1 ? 0 : 1". 0 for a rule that is no
// expression.
std::size_t pluralForm(std::string_view rule, std::size_t number);

}  // namespace norvik
