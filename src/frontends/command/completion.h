// Completion scripts for the shells: what all of them propose, and the script of each. A script holds the
// words themselves, so that it need not run the program at every key.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/shared/interface/setting_description.h"

namespace norvik::command {

struct NamedWords {
  std::string name;
  std::vector<std::string> words;
};

// Every word is one of a shell, without blanks and quotes.
struct CompletionWords {
  std::vector<std::string> commands, options, pages;
  std::vector<std::string> taking;  // the options whose value is the next word
  std::vector<NamedWords> values;   // of each setting
  std::vector<NamedWords> answers;  // of each question
};
CompletionWords completionWords(const std::vector<SettingDescription>& settings);

std::vector<std::string> namesOf(const std::vector<NamedWords>& rows);

// The script of each shell, which defines the completion of norvikctl where it is read.
namespace bash {
std::string script(const CompletionWords& words);
}
namespace zsh {
std::string script(const CompletionWords& words);
}
namespace fish {
std::string script(const CompletionWords& words);
}

}  // namespace norvik::command
