// The toolkit's translations are a package of their own.
#include "src/frontends/desktop/toolkit_language.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/shared/language/choice.h"

namespace norvik::desktop {

void useChosenLanguage() {
  const QString language = text(spokenLanguage());
  auto* words = new QTranslator(qApp);
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (words->load(QStringLiteral("qtbase_") + language, folder)) QCoreApplication::installTranslator(words);
  QLocale::setDefault(QLocale(language));
  // After the words, from which the toolkit takes a direction too.
  QApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
}

}  // namespace norvik::desktop
