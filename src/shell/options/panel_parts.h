#pragma once

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QString>
#include <QVBoxLayout>

// What the panels of the options are laid out with, upon a grid of 8 pixels.
namespace kestrel::shell {

inline constexpr int PanelMargin = 8;
inline constexpr int PanelGap = 8;
inline constexpr int RowGap = 4;

/// A text that stands in the program.
inline QString Words(const char* text) { return QString::fromLatin1(text); }

/// A group with its heading, its rows below each other.
inline QVBoxLayout* NewGroup(const char* heading, QBoxLayout& place, QWidget* parent) {
  auto* group = new QGroupBox(QString::fromLatin1(heading), parent);
  auto* rows = new QVBoxLayout(group);
  rows->setContentsMargins(PanelGap, RowGap, PanelGap, PanelGap);
  rows->setSpacing(RowGap);
  place.addWidget(group);
  return rows;
}

inline QHBoxLayout* NewRow(QBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(PanelGap);
  rows.addLayout(row);
  return row;
}

/// A label that names `control` and takes the keyboard there.
inline QLabel* NewLabel(const char* name, const QString& text, QWidget* control, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(control);
  return label;
}

}  // namespace kestrel::shell
