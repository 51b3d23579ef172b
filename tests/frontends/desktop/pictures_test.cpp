// The pictures of every page, in both lock states, light and dark, on plain screens and on fine ones.
#include <QImage>
#include <QSet>

#include "tests/frontends/desktop/program.h"

namespace norvik::desktop {
namespace {

class Pictures : public Program {
 protected:
  // Writes them in one theme and scale; returns the folder.
  QDir take(const QString& name, const QStringList& words, const char* scale) {
    QProcessEnvironment variables = panel.processEnvironment();
    variables.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromUtf8(scale));
    variables.remove(QStringLiteral("DISPLAY"));
    panel.setProcessEnvironment(variables);
    const QString folder = path(name);
    EXPECT_EQ(run(words + QStringList{QStringLiteral("--picture"), folder}), 0);
    return QDir(folder);
  }

  static double lightness(const QImage& picture) {
    return picture.scaled(1, 1, {}, Qt::SmoothTransformation).pixelColor(0, 0).lightnessF();
  }
};

TEST_F(Pictures, ShowEveryPageInEveryThemeAndScale) {
  const QDir light = take(QStringLiteral("light"), {}, "1");
  const QDir fine = take(QStringLiteral("fine"), {}, "2");
  const QDir dark = take(QStringLiteral("dark"), {QStringLiteral("--dark")}, "1");
  const QDir darkFine = take(QStringLiteral("dark-fine"), {QStringLiteral("--dark")}, "2");
  const QStringList names = light.entryList({QStringLiteral("*.png")});
  EXPECT_EQ(names.size(), 18) << "nine pages, locked and unlocked";
  QSet<QByteArray> different;
  for (const QString& name : names) {
    SCOPED_TRACE(name.toStdString());
    const QImage picture(light.filePath(name));
    ASSERT_FALSE(picture.isNull());
    different += QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
    EXPECT_EQ(QImage(fine.filePath(name)).size(), 2 * picture.size());
    EXPECT_EQ(QImage(darkFine.filePath(name)).size(), 2 * picture.size());
    EXPECT_GT(lightness(picture), 0.8);
    EXPECT_LT(lightness(QImage(dark.filePath(name))), 0.3);
  }
  EXPECT_EQ(different.size(), names.size());
}

TEST_F(Pictures, AFolderThatCannotBeMadeIsAFailure) {
  EXPECT_EQ(run({QStringLiteral("--picture"), path(QStringLiteral(".norvik/clock/inside"))}), 73);
}

}  // namespace
}  // namespace norvik::desktop
