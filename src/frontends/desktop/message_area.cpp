// The lines, one under another.
#include "src/frontends/desktop/message_area.h"

#include <QVBoxLayout>

namespace norvik::desktop {

namespace {
constexpr const char* kNames[] = {"message_trial", "message_files", "message_inForce", "message_others",
                                  "message_outcome"};
}  // namespace

MessageArea::MessageArea(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("messages"));
  // No higher than it needs to be beside the pages, which stretch; in a narrow window that is more than its
  // hint.
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    lines_[i] = new MessageLine(QString::fromLatin1(kNames[i]), this);
    column->addWidget(lines_[i]);
  }
}

void MessageArea::edited() {
  for (MessageLine* line : lines_) line->clearPassing();
}

}  // namespace norvik::desktop
