#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <functional>
#include <vector>

// What the pictures are made with: windows by their names, and a list of steps.
namespace kestrel::gallery {

inline QWidget* Top(const QString& name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == name) return window;
  }
  return nullptr;
}

inline bool Shown(const char* name) {
  const QWidget* window = Top(QLatin1String(name));
  return window != nullptr && window->isVisible();
}

/// Does one thing after another, each in a turn of its own, also within the loops of dialogs.
class Script {
 public:
  Script(QString palette, QString folder) : suffix(std::move(palette)), pictures(std::move(folder)) {
    QObject::connect(&timer, &QTimer::timeout, [this] { Turn(); });
  }
  void Start() { timer.start(40); }
  /// Runs once `ready` holds.
  void Add(std::function<bool()> ready, std::function<void()> run) {
    steps.push_back({std::move(ready), std::move(run)});
  }
  /// Triggers a menu entry; it may run a dialog, so it is not waited for.
  void Menu(const char* name) {
    Add([] { return true; },
        [name] {
          auto* action = Top(QStringLiteral("MDIForm1"))->findChild<QAction*>(QLatin1String(name));
          QTimer::singleShot(0, action, &QAction::trigger);
        });
  }
  void Press(const char* window, const char* button) {
    Add([window] { return Shown(window); },
        [window, button] {
          auto* pressed = Top(QLatin1String(window))->findChild<QAbstractButton*>(QLatin1String(button));
          QTimer::singleShot(0, pressed, &QAbstractButton::click);
        });
  }
  /// Keeps the window's picture; `page` tells one of several.
  void Grab(const char* window, const char* page = "") {
    Add([window] { return Shown(window); },
        [this, window, page] { Save(Top(QLatin1String(window))->grab(), QLatin1String(window), page); });
  }
  /// Keeps what `part` tells of the main window, in its coordinates.
  void GrabPart(const char* page, std::function<QRect()> part) {
    Add([] { return true; },
        [this, page, part = std::move(part)] {
          const QPixmap whole = Top(QStringLiteral("MDIForm1"))->grab();
          Save(whole.copy(part().intersected(whole.rect())), QLatin1String("Map"), page);
        });
  }
  void Save(const QPixmap& picture, QLatin1String window, const char* page) const {
    const QString file = pictures + u'/' + window + QLatin1String(page) + u'-' + suffix + QStringLiteral(".png");
    if (!picture.save(file)) std::fprintf(stderr, "%s not saved\n", window.data());
  }
  void Close(const char* window) {
    Add([window] { return Shown(window); }, [window] { Top(QLatin1String(window))->close(); });
    Add([window] { return !Shown(window); }, [] {});
  }
  void GrabAndClose(const char* window) {
    Grab(window);
    Close(window);
  }

 private:
  struct Step {
    std::function<bool()> Ready;
    std::function<void()> Run;
  };
  void Turn() {
    if (next < steps.size() && steps[next].Ready()) {
      turns = 0;
      // Before it runs: a step may close what runs this loop.
      const std::size_t now = next++;
      steps[now].Run();
    } else if (++turns > 500) {
      std::fprintf(stderr, "stuck at step %zu before", next);
      for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) std::fprintf(stderr, " %s", qPrintable(window->objectName()));
      }
      std::fprintf(stderr, "\n");
      std::exit(1);
    }
  }

  QString suffix;
  QString pictures;
  QTimer timer;
  std::vector<Step> steps;
  std::size_t next = 0;
  int turns = 0;
};

}  // namespace kestrel::gallery
