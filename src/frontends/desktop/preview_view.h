// The picture of what a page's image settings do. It takes no focus: a screen reader finds it as a picture
// whose name says what it shows.
#pragma once

#include <QImage>
#include <QWidget>

#include "src/frontends/shared/preview/sample_screen.h"

namespace norvik::desktop {

class PreviewView : public QWidget {
 public:
  explicit PreviewView(QWidget* parent);

  // Computed when it is painted, and only where it differs.
  void showSettings(const SampleSettings& settings, const QString& name);
  const SampleSettings& settings() const { return settings_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void compute();

  SampleSettings settings_;
  QImage image_;  // null until it is painted
  int scale_ = 0;
};

}  // namespace norvik::desktop
