#pragma once

#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include "core/theater_switch.h"
#include "shell/commit_text.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {

/// A running station and the controls of a window of theaters or bullseyes.
class TheaterWindows : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
  }

  template <class Control>
  static Control& In(QWidget& window, const char* name) {
    auto* control = window.findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *control;
  }
  static void Press(QWidget& window, const char* button) {
    QTest::mouseClick(&In<QPushButton>(window, button), Qt::LeftButton);
  }
  /// Replaces the text of a field by typing.
  static void Type(QWidget& window, const char* field, const char* text) {
    auto& line = In<QLineEdit>(window, field);
    line.selectAll();
    QTest::keyClick(&line, Qt::Key_Delete);
    QTest::keyClicks(&line, QString::fromLatin1(text));
  }
  /// Pastes a text at the cursor.
  static void Paste(QLineEdit& line, const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    QTest::keySequence(&line, QKeySequence::Paste);
  }
  static QString TextOf(QWidget& window, const char* field) { return In<QLineEdit>(window, field).text(); }
  static QString Label(QWidget& window, const char* label) { return In<QLabel>(window, label).text(); }

  static QStringList Texts(std::initializer_list<const char*> texts) {
    QStringList list;
    for (const char* text : texts) list << QString::fromLatin1(text);
    return list;
  }

  static QTreeView& List(QWidget& window) { return In<QTreeView>(window, "ListView1"); }
  /// The texts of a row, 0 being the titles.
  static QStringList Row(QWidget& window, int row) {
    const QAbstractItemModel& model = *List(window).model();
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column) {
      texts << (row == 0 ? model.headerData(column, Qt::Horizontal) : model.index(row - 1, column).data()).toString();
    }
    return texts;
  }
  static int Rows(QWidget& window) { return List(window).model()->rowCount(); }
  static int SelectedRow(QWidget& window) { return List(window).currentIndex().row() + 1; }
  static QPoint PlaceOf(QTreeView& list, int row) { return list.visualRect(list.model()->index(row - 1, 1)).center(); }
  static void ClickRow(QWidget& window, int row) {
    QTreeView& list = List(window);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, PlaceOf(list, row));
  }

  void ExpectBox(const char* title, const char* text) {
    ASSERT_EQ(desk.Boxes.size(), 1u);
    EXPECT_EQ(desk.Boxes[0].Title, title);
    EXPECT_EQ(desk.Boxes[0].Text, text);
    desk.Boxes.clear();
  }
  QByteArray PathOf(const char* name) { return folder.filePath(QString::fromLatin1(name)).toUtf8(); }
  /// Answers the next file dialog.
  void Choose(const char* name) { desk.FileAnswers.emplace_back(PathOf(name).toStdString()); }
  theaters::Theater& Current() { return station.Catalogue.Current(); }
};

}  // namespace kestrel::shell
