// Every text of every record.
#include "src/frontends/shared/language/translated_interface.h"

#include <string>
#include <utility>
#include <vector>

#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

void translate(std::string& text) {
  text = translated(text);
}

// The English words stay.
void addSynonyms(ControlDescription& control, const std::string& englishLabel) {
  std::vector<std::string> words;
  for (const std::string& word : control.synonyms) {
    std::string other = translated(word);
    if (other != word) words.push_back(std::move(other));
  }
  control.synonyms.insert(control.synonyms.end(), words.begin(), words.end());
  if (control.label != englishLabel) control.synonyms.push_back(englishLabel);
}

void translate(ControlDescription& control) {
  const std::string label = control.label;
  for (std::string* text : {&control.label, &control.help, &control.minimumLabel, &control.maximumLabel,
                            &control.title, &control.copyTitle})
    translate(*text);
  for (ValueWords& entry : control.valueWords) translate(entry.words);
  addSynonyms(control, label);
}

void translate(SectionDescription& section) {
  translate(section.title);
  translate(section.note);
  for (RowDescription& row : section.rows) {
    translate(row.label);
    for (ControlDescription& control : row.controls) translate(control);
  }
}

}  // namespace

InterfaceDescription translatedInterface(InterfaceDescription interface) {
  translate(interface.title);
  translate(interface.changedHelp);
  for (ControlDescription& control : interface.frame) translate(control);
  for (TabDescription& tab : interface.tabs) {
    translate(tab.purpose);
    for (SectionDescription& section : tab.sections) translate(section);
  }
  return interface;
}

}  // namespace norvik
