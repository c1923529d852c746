#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include "project_paths.h"

// The program folder that a test gives its station, and what the station has written there.
namespace kestrel::e2e {

inline QString S(const char* text) { return QString::fromLatin1(text); }

/// The whole file, empty when there is none.
inline QString ReadText(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

inline void WriteText(const QString& path, const QString& text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
  ASSERT_EQ(file.write(text.toLatin1()), text.size()) << qPrintable(path);
}

inline void CopyFolder(const QString& from, const QString& to) {
  QDir().mkpath(to);
  for (const QFileInfo& entry : QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
    const QString target = to + u'/' + entry.fileName();
    if (entry.isDir()) {
      CopyFolder(entry.filePath(), target);
    } else {
      ASSERT_TRUE(QFile::copy(entry.filePath(), target)) << qPrintable(entry.filePath());
    }
  }
}

/// The built program folder with the settings that ship, whoever has used it since it was built; no updater starts.
inline void CopyStation(const QString& to) {
  CopyFolder(S(KESTREL_BINARY_DIR "/station"), to);
  for (const char* shipped : {"/KESTREL.ini", "/FriendlyNames.ini"}) {
    WriteText(to + S(shipped), ReadText(S(KESTREL_SOURCE_DIR "/data") + S(shipped)));
  }
  WriteText(to + S("/common.ini"), S("[GENERAL]\r\nAUTOUPDATE=0\r\n"));
  QFile::remove(to + S("/Theaters/SampleStrait_ViewShort.dat"));
}

}  // namespace kestrel::e2e
