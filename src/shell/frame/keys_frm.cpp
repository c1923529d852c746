#include "shell/frame/keys_frm.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "base/failure.h"
#include "base/files.h"
#include "core/tell.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"
#include "ui_keys_frm.h"

namespace kestrel::shell {
namespace {

/// Room between a text and the next column, pixels.
constexpr int ColumnGap = 24;
/// The most lines that the window has room for at first.
constexpr int MostLines = 30;

}  // namespace

KeysFrm::KeysFrm(core::Program& running, QWidget* frame)
    : QDialog(frame), program(running), rows(core::KeyRows(running.State)) {
  Ui::KeysFrm ui;
  ui.setupUi(this);
  QTableWidget& table = *ui.tblKeys;
  table.setRowCount(static_cast<int>(rows.size()));
  table.verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  table.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  int line = 0;
  for (const core::KeyRow& row : rows) {
    int column = 0;
    for (const std::string& text : {row.Where, row.Key, row.What}) {
      table.setItem(line, column++, new QTableWidgetItem(FromBytes(text)));
    }
    ++line;
  }
  table.resizeColumnsToContents();
  int width = 0;
  for (int column = 0; column < table.columnCount(); ++column) {
    table.setColumnWidth(column, table.columnWidth(column) + ColumnGap);
    width += table.columnWidth(column);
  }
  table.setMinimumWidth(width + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 4);
  const int lines = std::min(table.rowCount(), MostLines) + 4;
  resize(sizeHint().width(), std::min(lines * (fontMetrics().height() + 4), screen()->availableSize().height() / 2));
  connect(ui.cmdCopy, &QPushButton::clicked, this, &KeysFrm::Copy);
  connect(ui.cmdPrint, &QPushButton::clicked, this, &KeysFrm::Print);
  ui.cmdClose->setFocus();
}

void KeysFrm::Copy() const { QGuiApplication::clipboard()->setText(FromBytes(core::KeyText(rows))); }

void KeysFrm::Print() {
  Guarded(program.Log, "KeysFrm", [this] {
    try {
      program.Desk.Open(base::TextOfPath(core::WriteKeyPage(program.State)), {}, {});
    } catch (const base::RuntimeFailure& failure) {
      core::TellUnsaved(program, {"page of keys", failure.what()});
    }
  });
}

}  // namespace kestrel::shell
