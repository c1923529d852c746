#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "e2e/station_on_screen.h"
#include "falcon/made_installation.h"

namespace kestrel::e2e {

/// The built station beside made installations of the simulator. Its home is a folder of the test, so that no prefix of
/// the machine is found.
class FalconOnScreen : public StationOnScreen {
 protected:
  /// Adds settings in front of a section's own, so that they are the first of their names there.
  void Set(const char* section, const QString& lines) {
    const QString header = u'[' + QString::fromLatin1(section) + S("]\r\n");
    QString settings = ReadText(Settings());
    if (!settings.contains(header)) settings += S("\r\n") + header;
    WriteText(Settings(), settings.replace(header, header + lines));
  }
  void StartFalconStation(const QStringList& more = {}) {
    const QString home = place.filePath(S("home"));
    QDir().mkpath(home);
    QStringList environment = screen.Environment() + more;
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
      environment << QString::fromLatin1(name) + u'=' + home;
    }
    station = std::make_unique<Child>(folder + S("/kestrel"), QStringList{}, environment);
    frame = screen.Window(S("^KESTREL v"));
    ASSERT_FALSE(frame.isEmpty()) << qPrintable(station->Output());
  }

  /// An entry of the menu Tools, Falcon Tools, from 0 on.
  void FalconTool(int entry) {
    QStringList keys = {S("Left"), S("Left"), S("Right")};
    for (int step = 0; step < entry; ++step) keys << S("Down");
    Menu(keys << S("Return"));
  }
  /// Waits for a window and gives it the keyboard.
  void Dialog(const char* title) {
    const QString window = screen.Window(QString::fromLatin1(title));
    ASSERT_FALSE(window.isEmpty()) << title;
    screen.Activate(window);
  }
  /// Answers the dialog that asks for a campaign file.
  void ChooseCampaign(const std::filesystem::path& file) {
    Dialog("^Open Campaign File");
    screen.Type(QString::fromStdString(file.string()));
    screen.Press({S("Return")});
  }

  const std::filesystem::path disk = place.path().toStdString();
};

}  // namespace kestrel::e2e
