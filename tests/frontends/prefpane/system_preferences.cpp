// Mouse, keyboard and pixels.
#include "tests/frontends/prefpane/system_preferences.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QThread>

namespace norvik::prefpane {

namespace {

constexpr int kFirstRow = 96;  // pixels from the top of the window to the middle of the first row
constexpr int kRowHeight = 22;
constexpr QSize kAlone(592, 414);     // the window while no pane is open
constexpr QSize kWithPane(592, 572);  // and once the pane is in it
constexpr QPoint kListEdge(160, 86);  // black, the upper edge of the list of pages
constexpr QPoint kBoxEdge(160, 561);  // white, the lower edge of the box around the pane

constexpr std::pair<MessageKind, QRgb> kMessageColors[] = {
    {MessageKind::done, 0xff0a4219},
    {MessageKind::note, 0xff114078},
    {MessageKind::warning, 0xff513500},
    {MessageKind::failure, 0xff7a0a14},
};

QString number(int value) {
  return QString::number(value);
}

}  // namespace

void SystemPreferences::open() {
  panel.start(QStringLiteral(NORVIK_IN_SANDBOX),
              {path(QString()), QStringLiteral(NORVIK_BIN_DIR "/Norvik.prefPane"),
               QStringLiteral("SystemPreferences")});
  ASSERT_TRUE(panel.waitForStarted());
  ASSERT_TRUE(eventually([this] {
    window_ = x({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                 QStringLiteral("^System Preferences$")})
                  .section(QLatin1Char('\n'), -1);
    return !window_.isEmpty() && size() == kAlone;
  }));
}

void SystemPreferences::openPane() {
  ASSERT_TRUE(eventually([this] { return size() == kAlone; }));
  ASSERT_TRUE(eventually([this] {
    // The first click on another program's window only brings it forward; a late one would hit the pane.
    click(kIcon);
    QDeadlineTimer heard(1000);
    while (size() == kAlone && !heard.hasExpired()) QThread::msleep(20);
    return size() != kAlone;
  }));
  // The window grows step by step, with the pane moving in it.
  ASSERT_TRUE(eventually([this] {
    const QImage image = look();
    return image.size() == kWithPane && image.pixelColor(kListEdge) == QColor(Qt::black) &&
           image.pixelColor(kBoxEdge) == QColor(Qt::white);
  }));
}

bool SystemPreferences::close() {
  keys({QStringLiteral("alt+F4")});
  return ends();
}

QSize SystemPreferences::size() {
  const QString shape = x({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window_});
  const auto value = [&shape](const char* name) {
    return shape.section(QString::fromUtf8(name), 1).section(QLatin1Char('\n'), 0, 0).toInt();
  };
  return {value("WIDTH="), value("HEIGHT=")};
}

void SystemPreferences::click(const QPoint& at, int times) {
  const int y = at.y() < 0 ? size().height() + at.y() : at.y();
  clickIn(window_, {at.x(), y}, times);
}

void SystemPreferences::clickIn(const QString& window, const QPoint& at, int times) {
  QStringList words{QStringLiteral("mousemove"), QStringLiteral("--window"), window, number(at.x()),
                    number(at.y())};
  for (int i = 0; i < times; ++i) {
    words +=
        {QStringLiteral("sleep"), QStringLiteral("0.05"), QStringLiteral("mousedown"), QStringLiteral("1"),
         QStringLiteral("sleep"), QStringLiteral("0.05"), QStringLiteral("mouseup"),   QStringLiteral("1")};
  }
  x(words);
}

void SystemPreferences::clickRow(int row, int down) {
  click({70, kFirstRow + row * kRowHeight + down});
}

QImage SystemPreferences::look() {
  return QGuiApplication::primaryScreen()->grabWindow(window_.toULongLong()).toImage();
}

QImage SystemPreferences::lookOfPage() {
  QImage page;
  int equal = 0;
  EXPECT_TRUE(eventually([&] {
    const QImage next = look().copy(kPage);
    equal = next == page && awaitsEvents() ? equal + 1 : 0;
    page = next;
    return equal == 3;
  }));
  return page;
}

QImage SystemPreferences::lookAfter(const std::function<void()>& deed) {
  const QImage before = lookOfPage();
  deed();
  QImage after;
  EXPECT_TRUE(eventually([&] {
    after = lookOfPage();
    return after != before;
  }));
  return after;
}

bool SystemPreferences::awaitsEvents() {
  QFile file(QStringLiteral("/proc/%1/stat").arg(panel.processId()));
  // The state follows the name, which is in parentheses.
  return file.open(QIODevice::ReadOnly) && file.readAll().contains(") S ");
}

QPoint SystemPreferences::field() {
  constexpr QSize kInside(20, 8);  // of an empty part of a field
  const QImage page = lookOfPage().convertToFormat(QImage::Format_RGB32);
  QImage white(kInside, QImage::Format_RGB32);
  white.fill(Qt::white);
  for (int y = 0; y + kInside.height() <= page.height(); ++y) {
    for (int x = 0; x + kInside.width() <= page.width(); ++x) {
      const QRect part(QPoint(x, y), kInside);
      if (page.pixel(x, y) == white.pixel(0, 0) && page.copy(part) == white)
        return kPage.topLeft() + part.center();
    }
  }
  return {};
}

std::optional<MessageKind> SystemPreferences::messageKind() {
  constexpr QPoint kBar(26, 80);  // of the kind's colour, at the left edge
  const QColor color = look().pixelColor(kBar);
  for (const auto& [kind, shown] : kMessageColors) {
    if (color == QColor(shown)) return kind;
  }
  return std::nullopt;
}

int SystemPreferences::darkest(int row, int down) {
  const QImage words = look().copy(QRect(38, kFirstRow + row * kRowHeight - 8 + down, 100, 16));
  int least = 255;
  for (int y = 0; y < words.height(); ++y) {
    for (int x = 0; x < words.width(); ++x) least = std::min(least, qGray(words.pixel(x, y)));
  }
  return least;
}

bool SystemPreferences::eventually(const std::function<bool()>& condition) {
  constexpr int kTremble = 10;  // once in so many looks
  int looks = 0;
  return desktop::eventually([&] {
    if (++looks % kTremble == 0)
      x({QStringLiteral("mousemove_relative"), QStringLiteral("1"), QStringLiteral("0")});
    return condition();
  });
}

QString SystemPreferences::panelWindow() {
  const QString active = x({QStringLiteral("getactivewindow")});
  return active != window_ ? active : QString();
}

}  // namespace norvik::prefpane
