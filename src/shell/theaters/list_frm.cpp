#include "shell/theaters/list_frm.h"

#include "shell/parts/guard.h"
#include "ui_list_frm.h"

namespace kestrel::shell {
namespace {

/// Pixels; room for about a dozen rows.
constexpr QSize SizeAtStart(480, 320);

}  // namespace

ListFrm::ListFrm(const Words& words, std::unique_ptr<NumberedList> rows, base::DebugLog& log, QWidget* frame)
    : QDialog(frame), form(std::make_unique<Ui::ListFrm>()), list(rows.release()) {
  list->setParent(this);
  form->setupUi(this);
  setObjectName(QString::fromLatin1(words.Name));
  setWindowTitle(QString::fromLatin1(words.Title));
  form->Command1_0->setToolTip(QString::fromLatin1(words.Adds));
  form->Command1_1->setToolTip(QString::fromLatin1(words.Edits));
  form->Command1_2->setToolTip(QString::fromLatin1(words.Deletes));
  form->ListView1->setFocus();
  resize(SizeAtStart);
  list->ShowIn(*form->ListView1);
  // There may be none, and then there is nothing to edit.
  for (QPushButton* button : {form->Command1_1, form->Command1_2}) {
    NumberedList::EnableWithRow(*form->ListView1, *button);
  }
  const auto run = [this, &log, name = words.Name](void (ListFrm::*act)(std::size_t), bool withRow = true) {
    return [this, &log, name, act, withRow] {
      Guarded(log, name, [&] { (this->*act)(withRow ? NumberedList::Selected(*form->ListView1) : 0); });
    };
  };
  connect(form->Command1_0, &QPushButton::clicked, this, run(&ListFrm::Details, false));
  connect(form->Command1_1, &QPushButton::clicked, this, run(&ListFrm::Details));
  connect(form->Command1_2, &QPushButton::clicked, this, run(&ListFrm::Delete));
  connect(form->ListView1, &QTreeView::doubleClicked, this, run(&ListFrm::Choose));
}

ListFrm::~ListFrm() = default;

void ListFrm::ShowRows(std::size_t current) { list->Refresh(*form->ListView1, current); }

}  // namespace kestrel::shell
