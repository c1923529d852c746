// The guide and what it leads to, as pages that any browser shows: guide-pages FOLDER PAGE.md...

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>
#include <QTextStream>

#include "guide-pages/pages.h"

namespace {

QString Read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool Write(const QString& path, const QString& text) {
  QSaveFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 && file.commit();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QStringList given = QGuiApplication::arguments().mid(1);
  QTextStream errors(stderr);
  if (given.size() < 2) {
    errors << "guide-pages FOLDER PAGE.md...\n";
    return 1;
  }
  QStringList names;
  for (const QString& page : given.mid(1)) names << QFileInfo(page).fileName();
  QDir().mkpath(given[0]);
  for (const QString& page : given.mid(1)) {
    const QString markdown = Read(page);
    const QString to = given[0] + u'/' + QFileInfo(page).completeBaseName() + QStringLiteral(".html");
    if (!markdown.isEmpty() && Write(to, kestrel::pages::ToHtml(markdown, names))) continue;
    errors << "guide-pages: " << page << " cannot be read or " << to << " cannot be written\n";
    return 1;
  }
  return 0;
}
