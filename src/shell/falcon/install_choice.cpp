#include "shell/falcon/install_choice.h"

#include <QComboBox>
#include <QLabel>

#include "base/files.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {

void PopulateInstallChoice(QComboBox& list, QLabel& label, const std::vector<falcon::FalconInstall>& installs) {
  list.clear();
  for (const falcon::FalconInstall& install : installs) {
    // Of one version several may be installed, so the folder is told too.
    const std::string folder = install.Folder.empty() ? install.InstallDir : base::PathForMessage(install.Folder);
    const std::string name = install.Kind == falcon::InstallKind::Bms ? install.Key : "Falcon " + install.Key;
    const QString text = FromBytes(name + ", " + folder);
    list.addItem(text);
    // A tip takes for markup what looks like it, so it is given markup.
    const QString tip = QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>");
    list.setItemData(list.count() - 1, tip, Qt::ToolTipRole);
  }
  for (QWidget* const widget : {static_cast<QWidget*>(&list), static_cast<QWidget*>(&label)}) {
    widget->setVisible(installs.size() > 1);
  }
}

}  // namespace kestrel::shell
