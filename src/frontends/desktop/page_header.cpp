// The icon at the left, as high as the two lines beside it.
#include "src/frontends/desktop/page_header.h"

#include <QEvent>
#include <QGridLayout>

#include "src/frontends/desktop/accessible_role.h"
#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/contrast.h"
#include "src/frontends/desktop/line_icon.h"
#include "src/frontends/desktop/secondary_label.h"
#include "src/frontends/shared/interface/setting_description.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::desktop {

namespace {

constexpr double kTitleSize = 1.4;
constexpr double kHeaderIconLines = 2;
constexpr double kIconShare = 0.7;  // of the way from the window's colour to that of its text

// In a grey of the window's text, as its lines are thicker than those of letters.
class HeaderIcon : public QWidget {
 public:
  HeaderIcon(const LineDrawing& drawing, QWidget* parent) : QWidget(parent), drawing_(drawing) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }
  QSize sizeHint() const override {
    const int side = static_cast<int>(fontMetrics().height() * kHeaderIconLines);
    return {side, side};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const QColor color = withContrast(palette().color(QPalette::Window),
                                      palette().color(QPalette::WindowText), kIconShare, kTextContrast);
    drawLineIcon(painter, rect(), drawing_, color);
  }

 private:
  const LineDrawing& drawing_;
};

}  // namespace

Heading::Heading(const QString& words, QWidget* parent) : QLabel(parent) {
  setAccessibleRole(*this, QAccessible::Heading);  // first: the event about the words asks for the role
  setTextFormat(Qt::PlainText);
  setText(words);
  QFont bold;
  bold.setBold(true);
  setFont(bold);
}

PageHeader::PageHeader(const TabDescription& tab, QWidget* parent)
    : QWidget(parent), title_(new Heading(translatedText(pageName(tab).title), this)) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(0);
  grid->setColumnStretch(1, 1);
  if (const LineDrawing* drawing = pageIcon(tab.icon))
    grid->addWidget(new HeaderIcon(*drawing, this), 0, 0, 2, 1, Qt::AlignTop);
  title_->setObjectName(QStringLiteral("pageTitle"));
  grid->addWidget(title_, 0, 1);
  auto* purpose = new SecondaryLabel(text(translated(tab.purpose)), this);
  purpose->setObjectName(QStringLiteral("pagePurpose"));
  purpose->setWordWrap(true);
  grid->addWidget(purpose, 1, 1);
  fitTitle();
}

void PageHeader::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) fitTitle();
}

// A size of its own is not changed with that of the window, so it is set again.
void PageHeader::fitTitle() {
  QFont large = font();
  large.setBold(true);
  if (large.pixelSize() > 0) {
    large.setPixelSize(qRound(large.pixelSize() * kTitleSize));
  } else {
    large.setPointSizeF(large.pointSizeF() * kTitleSize);
  }
  title_->setFont(large);
}

}  // namespace norvik::desktop
