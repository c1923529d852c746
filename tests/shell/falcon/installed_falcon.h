#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <memory>
#include <string>

#include "base/files.h"
#include "doubles/fake_install_keys.h"
#include "falcon/small_install.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {

/// A running station on a system where installations have registered themselves.
class InstalledFalcon : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    // With the panel of the frequencies open.
    QByteArray ini = Read("KESTREL.ini");
    Write("KESTREL.ini", ini.replace("[OPTIONS]\r\n", "[OPTIONS]\r\nFREQFORMX=600\r\nFREQFORMMIN=0\r\n"));
    keys.DriveC = disk.Path();
    program.Registered = [this] {
      falcon::InstallSources sources;
      sources.push_back(std::make_unique<doubles::FakeInstallKeys>(keys));
      return sources;
    };
    Start();
  }

  /// A BMS in the folder of its version.
  test::SmallInstall AddBms(const std::string& version, const std::string& callsign = {},
                            const std::string& theater = {}) {
    const std::string key = "SOFTWARE\\Benchmark Sims\\Falcon BMS " + version;
    keys.AddText(key, "baseDir", "C:\\" + version);
    if (!callsign.empty()) keys.Keys[key]["PilotCallsign"] = {true, callsign + '\0'};
    if (!theater.empty()) keys.AddText(key, "curTheater", theater);
    return test::SmallInstall(disk / version);
  }
  /// An older Falcon with one theater.
  void AddFalcon(const std::string& theater) {
    keys.AddText("SOFTWARE\\Microprose\\Falcon\\4.0", "baseDir", "C:\\Falcon4");
    std::filesystem::create_directories(disk / "Falcon4");
    test::WriteBytes(disk / "Falcon4/theater.lst", "one.tdf\n");
    test::WriteBytes(disk / "Falcon4/one.tdf", "name " + theater + "\n");
  }

  template <class Control>
  static Control& In(QWidget& window, const char* name) {
    auto* control = window.findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *control;
  }
  static void Press(QWidget& window, const char* button) {
    auto& pressed = In<QAbstractButton>(window, button);
    // A radio button is pressed on its mark: the rest of it may be empty.
    QTest::mouseClick(&pressed, Qt::LeftButton, {}, QPoint(8, pressed.height() / 2));
  }
  static QStringList Items(QWidget& window, const char* list = "Combo1") {
    QStringList texts;
    const auto& combo = In<QComboBox>(window, list);
    for (int at = 0; at < combo.count(); ++at) texts << combo.itemText(at);
    return texts;
  }
  static QString Current(QWidget& window, const char* list = "Combo1") {
    return In<QComboBox>(window, list).currentText();
  }
  static QString Label(QWidget& window, const char* name) { return In<QLabel>(window, name).text(); }
  static QStringList Words(std::initializer_list<const char*> words) {
    QStringList list;
    for (const char* word : words) list << QString::fromLatin1(word);
    return list;
  }
  void ExpectBox(const char* title, const char* text) {
    ASSERT_EQ(desk.Boxes.size(), 1U);
    EXPECT_EQ(desk.Boxes[0].Title, title);
    EXPECT_EQ(desk.Boxes[0].Text, text);
    desk.Boxes.clear();
  }

  test::TempFolder disk;
  doubles::FakeInstallKeys keys;
};

}  // namespace kestrel::shell
