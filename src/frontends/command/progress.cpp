// Writes what was added to the text, or a new line for another text.
#include "src/frontends/command/progress.h"

#include "src/frontends/shared/language/pane_texts.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::command {

void Progress::display(Control& control) {
  if (out_ == nullptr || __main_pane == nullptr || &control != &__main_pane->ib_admin_label_svrState) return;
  const std::string text = paneText(control.stringValue());
  if (shown_.empty() || !text.starts_with(shown_)) {
    finishLine();
    *out_ << text;
  } else {
    *out_ << text.substr(shown_.size());
  }
  out_->flush();
  shown_ = text;
}

void Progress::finishLine() {
  if (!shown_.empty()) *out_ << std::endl;
  shown_.clear();
}

}  // namespace norvik::command
