// Walks through the pages, locked and unlocked, and grabs the window.
#include "src/frontends/desktop/pictures.h"

#include <QCoreApplication>
#include <QDir>
#include <QPixmap>

namespace norvik::desktop {

namespace {

// "admin:Norvik clients" as "admin-norvik-clients".
QString fileName(const QString& label, const QString& state) {
  QString name = label.toLower();
  name.replace(QLatin1Char(':'), QLatin1Char('-')).replace(QLatin1Char(' '), QLatin1Char('-'));
  return name + QLatin1Char('-') + state + QLatin1String(".png");
}

bool picturePage(SettingsWindow& window, const QString& path) {
  window.refresh();
  QCoreApplication::processEvents();
  return window.grab().save(path);
}

// Shows a page even if it is locked, when nobody could choose it. The sidebar marks the page that is shown.
void showPage(NVKServerPrefs& pane, const TabViewItem& page) {
  const auto& rows = pane.ib_oview_confBar.rows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].node->page == &page) pane.ib_oview_confBar.selectRow(static_cast<int>(i));
  }
  pane.ib_tview_confView.selectItem(page);
}

}  // namespace

bool writePictures(NVKServerPrefs& pane, SettingsWindow& window, const QString& folder, QString& failed) {
  const QDir directory(folder);
  failed = folder;
  if (!directory.mkpath(QStringLiteral("."))) return false;
  window.resize(window.sizeHint());
  for (const QString& state : {QStringLiteral("locked"), QStringLiteral("unlocked")}) {
    if (state == QStringLiteral("unlocked") && !pane.authorized()) pane.buttonClicked(pane.ib_button_Auth);
    pane.updateGui(false, false);
    for (const TabViewItem& page : pane.ib_tview_confView.items()) {
      showPage(pane, page);
      failed = directory.filePath(fileName(text(page.label), state));
      if (!picturePage(window, failed)) return false;
    }
  }
  return true;
}

}  // namespace norvik::desktop
