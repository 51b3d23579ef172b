// The panel about collisions, and alert panels.
#include "src/frontends/prefpane/pane_decisions.h"

#include "src/frontends/prefpane/panels.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::prefpane {

namespace texts = window_texts;

std::optional<std::vector<Side>> PanelDecisions::resolve(const std::vector<Collision>& collisions) {
  return chooseSides(collisions);
}

// Writing over a damaged file is never the default.
DamagedAnswer PanelDecisions::decideDamaged(const FileFinding& file) {
  const bool hasCopy = !file.copyTime.empty();
  const std::string words = asSentence(file.sentence) + "\n\n" + translated(texts::kReplaceText);
  const int answer =
      panels_.NSRunAlertPanel(texts::kDamagedTitle.data(), words.c_str(),
                              hasCopy ? texts::kRestoreCopy.data() : texts::kCancel.data(),
                              texts::kReplaceFile.data(), hasCopy ? texts::kCancel.data() : nullptr);
  if (answer == NSAlertAlternateReturn) return DamagedAnswer::replace;
  return answer == NSAlertDefaultReturn && hasCopy ? DamagedAnswer::restore : DamagedAnswer::cancel;
}

}  // namespace norvik::prefpane
