#include "e2e/screen.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcessEnvironment>
#include <QThread>
#include <csignal>

namespace kestrel::e2e {

bool WaitFor(const std::function<bool()>& condition, int seconds) {
  const QDeadlineTimer limit(seconds * 1000);
  for (;;) {
    QCoreApplication::processEvents();
    if (condition()) return true;
    if (limit.hasExpired()) return false;
    QThread::msleep(20);
  }
}

Child::Child(const QString& program, const QStringList& arguments, const QStringList& environment) {
  QProcessEnvironment values = QProcessEnvironment::systemEnvironment();
  for (const QString& entry : environment) values.insert(entry.section(u'=', 0, 0), entry.section(u'=', 1));
  process.setProcessEnvironment(values);
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments);
  process.waitForStarted(10000);
}

Child::~Child() {
  if (process.state() == QProcess::NotRunning) return;
  process.terminate();
  if (!process.waitForFinished(5000)) {
    process.kill();
    process.waitForFinished(5000);
  }
}

QString Child::Output() {
  process.waitForReadyRead(0);
  output += QString::fromLatin1(process.readAll());
  return output;
}

void Child::Pause() const { kill(static_cast<pid_t>(process.processId()), SIGSTOP); }

void Child::Resume() const { kill(static_cast<pid_t>(process.processId()), SIGCONT); }

bool Child::Ends(int seconds) {
  return WaitFor([this] { return process.state() == QProcess::NotRunning; }, seconds);
}

Screen::Screen() {
  server = std::make_unique<Child>(
      QStringLiteral("Xvfb"),
      QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                  QStringLiteral("1400x900x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
  WaitFor([this] {
    for (const QString& line : server->Output().split(u'\n'))
      if (bool number = false; line.trimmed().toInt(&number) >= 0 && number) display = u':' + line.trimmed();
    return !display.isEmpty();
  });
  manager = std::make_unique<Child>(QStringLiteral("openbox"), QStringList{}, Environment());
}

QStringList Screen::Environment() const {
  return {QStringLiteral("DISPLAY=") + display, QStringLiteral("QT_QPA_PLATFORM=xcb")};
}

QString Screen::Tool(const QString& program, const QStringList& arguments) const {
  Child tool(program, arguments, Environment());
  tool.Ends();
  return tool.Output().trimmed();
}

bool Screen::HasWindow(const QString& titlePattern) const {
  return !Tool(QStringLiteral("xdotool"),
               {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"), titlePattern})
              .isEmpty();
}

QString Screen::Window(const QString& titlePattern, int seconds) const {
  QString found;
  WaitFor(
      [&] {
        found = Tool(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                                 QStringLiteral("--name"), titlePattern})
                    .section(u'\n', 0, 0);
        return !found.isEmpty();
      },
      seconds);
  return found;
}

void Screen::Activate(const QString& window) const {
  Tool(QStringLiteral("xdotool"), {QStringLiteral("windowactivate"), QStringLiteral("--sync"), window});
}

bool Screen::IsActive(const QString& window) const {
  return Tool(QStringLiteral("xdotool"), {QStringLiteral("getactivewindow")}) == window;
}

void Screen::Press(const QStringList& keys) const {
  Tool(QStringLiteral("xdotool"),
       QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("150")} + keys);
}

void Screen::Key(const QString& what, const QString& key) const { Tool(QStringLiteral("xdotool"), {what, key}); }

void Screen::Shut() {
  manager.reset();
  server.reset();
}

void Screen::Type(const QString& text) const {
  Tool(QStringLiteral("xdotool"), {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("50"), text});
}

QRect Screen::Geometry(const QString& window) const {
  QRect place;
  const QString lines =
      Tool(QStringLiteral("xdotool"), {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window});
  for (const QString& line : lines.split(u'\n')) {
    const int value = line.section(u'=', 1).toInt();
    if (line.startsWith(QStringLiteral("X="))) place.moveLeft(value);
    if (line.startsWith(QStringLiteral("Y="))) place.moveTop(value);
    if (line.startsWith(QStringLiteral("WIDTH="))) place.setWidth(value);
    if (line.startsWith(QStringLiteral("HEIGHT="))) place.setHeight(value);
  }
  return place;
}

void Screen::Click(QPoint place) const {
  Tool(QStringLiteral("xdotool"), {QStringLiteral("mousemove"), QStringLiteral("--sync"), QString::number(place.x()),
                                   QString::number(place.y()), QStringLiteral("click"), QStringLiteral("1")});
}

void Screen::Point(QPoint place) const {
  for (const QPoint& step : {place - QPoint(3, 0), place}) {
    Tool(QStringLiteral("xdotool"),
         {QStringLiteral("mousemove"), QStringLiteral("--sync"), QString::number(step.x()), QString::number(step.y())});
  }
}

QStringList Screen::Windows() const {
  return Tool(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                          QStringLiteral("--class"), QStringLiteral("kestrel")})
      .split(u'\n', Qt::SkipEmptyParts);
}

void Screen::Drag(QPoint from, QPoint to) const {
  Point(from);
  Tool(QStringLiteral("xdotool"), {QStringLiteral("mousedown"), QStringLiteral("1")});
  Point((from + to) / 2);
  Point(to);
  Tool(QStringLiteral("xdotool"), {QStringLiteral("mouseup"), QStringLiteral("1")});
}

QImage Screen::Picture() const {
  const QString file = folder.filePath(QStringLiteral("screen.png"));
  Tool(QStringLiteral("scrot"), {QStringLiteral("--overwrite"), file});
  return QImage(file);
}

}  // namespace kestrel::e2e
