#include "shell/areas/select_area_group_frm.h"

#include "areas/area_tree.h"
#include "shell/parts/unicode_text.h"
#include "ui_select_area_group_frm.h"

namespace kestrel::shell {
namespace {

/// Groups of one name stand in different folders.
QString TipOf(const areas::AreaCatalogue& catalogue, const areas::AreaGroup& group) {
  QString text = FromBytes(group.Name);
  if (areas::HasFolder(catalogue, group)) {
    const auto folder = static_cast<std::size_t>(group.FolderIndex);
    text += QStringLiteral(", in ") + FromBytes(catalogue.AreaFolders[folder].Name);
  }
  // A tip takes for markup what looks like it, so it is given markup.
  return QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>");
}

}  // namespace

SelectAreaGroupfrm::SelectAreaGroupfrm(const areas::AreaCatalogue& catalogue, QWidget* owner)
    : QDialog(owner), form(std::make_unique<Ui::SelectAreaGroupfrm>()) {
  form->setupUi(this);
  for (const areas::AreaGroup& group : catalogue.AreaGroups.Live()) {
    form->Combo1->addItem(FromBytes(group.Name));
    form->Combo1->setItemData(form->Combo1->count() - 1, TipOf(catalogue, group), Qt::ToolTipRole);
  }
  form->Combo1->setCurrentIndex(-1);
  form->Combo1->setFocus();
}

SelectAreaGroupfrm::~SelectAreaGroupfrm() = default;

void SelectAreaGroupfrm::accept() {
  target = static_cast<std::size_t>(form->Combo1->currentIndex() + 1);
  QDialog::accept();
}

}  // namespace kestrel::shell
