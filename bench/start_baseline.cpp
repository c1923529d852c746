// What bench/start compares the station with: a Qt program that only loads a picture and shows it. It ends by itself as
// soon as the picture is on its window.

#include <unistd.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTimer>
#include <QWidget>

namespace {

class Viewer final : public QWidget {
 public:
  explicit Viewer(const QString& file) : picture(file) { resize(1280, 800); }
  bool Loaded() const { return !picture.isNull(); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter(this).drawImage(rect(), picture);
    QTimer::singleShot(0, this, [] { _exit(0); });
  }

 private:
  QImage picture;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc != 2) return 2;
  Viewer viewer(QString::fromLocal8Bit(argv[1]));
  if (!viewer.Loaded()) return 1;
  viewer.show();
  return QApplication::exec();
}
