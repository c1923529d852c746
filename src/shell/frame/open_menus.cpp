#include "shell/frame/open_menus.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <algorithm>
#include <string_view>

#include "core/shortcuts.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// The key that runs an entry now, as a menu shows it; empty for none.
QString KeyOfEntry(const core::Station& station, std::string_view entry) {
  for (std::size_t at = 0; at < core::OwnShortcuts.size(); ++at) {
    const core::Shortcut& command = core::OwnShortcuts[at];
    if (command.Act != core::ShortcutAct::Menu || command.Option != entry || station.OwnKeys[at] == 0) continue;
    return u'\t' + FromBytes(core::KeyName(station.OwnKeys[at]));
  }
  return {};
}

}  // namespace

void DressOpenMenus(std::span<const MenuEntry> entries, const core::Station& station, QWidget& frame) {
  for (const MenuEntry& entry : entries) {
    auto* menu = frame.findChild<QMenu*>(QString::fromLatin1(entry.Parent));
    auto* action = frame.findChild<QAction*>(QString::fromLatin1(entry.Name));
    if (menu == nullptr || action == nullptr) continue;
    if (entry.Tip != nullptr) {
      action->setToolTip(QString::fromLatin1(entry.Tip));
      menu->setToolTipsVisible(true);
    }
    const bool grey = entry.Work == MenuWork::Nothing;
    const bool runs = entry.Work == MenuWork::Runs;
    if (!grey && !runs && entry.Letters == nullptr) continue;
    QObject::connect(menu, &QMenu::aboutToShow, action, [&entry, &station, action, grey] {
      const QString caption = QString::fromLatin1(entry.Letters != nullptr ? entry.Letters : entry.Caption);
      action->setText(caption + KeyOfEntry(station, entry.Name));
      if (grey) action->setEnabled(false);
    });
    QObject::connect(menu, &QMenu::aboutToHide, action, [&entry, action, grey] {
      action->setText(QString::fromLatin1(entry.Caption));
      if (grey) action->setEnabled(true);
    });
  }
}

void OpenByF10(QMenuBar& bar) {
  auto* key = new QShortcut(Qt::Key_F10, bar.window());
  QObject::connect(key, &QShortcut::activated, &bar, [&bar] {
    const QList<QAction*> menus = bar.actions();
    const auto first = std::find_if(menus.begin(), menus.end(), [](const QAction* menu) { return menu->isEnabled(); });
    if (first != menus.end()) bar.setActiveAction(*first);
  });
}

bool MayChoose(const QAction& entry) {
  if (!entry.isEnabled()) return false;
  const QList<QObject*> places = entry.associatedObjects();
  return std::all_of(places.begin(), places.end(), [](const QObject* place) {
    const auto* menu = qobject_cast<const QMenu*>(place);
    return menu == nullptr || MayChoose(*menu->menuAction());
  });
}

}  // namespace kestrel::shell
