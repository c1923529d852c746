#pragma once

#include <QFrame>
#include <QImage>
#include <QTimer>
#include <QWidget>

#include "core/program.h"
#include "map/geometry.h"
#include "shell/map/map_picture.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace kestrel::shell {

/// Over the map: its last picture in grey while the link is lost (hatched) or silent, and at its upper middle what is
/// said of the link, with the buttons for a lost one. The mouse goes through to the map, but for those. It also looks
/// at the link from time to time, while there is one or one is lost.
class LostLink final : public QWidget {
  Q_OBJECT
 public:
  /// How often the link is looked at, milliseconds.
  static constexpr int LookMs = 500;

  /// `running` and `shown` outlive it.
  LostLink(core::Program& running, MapPicture& shown);

  /// Keeps the picture that the map shows. To be called when the link is lost, before the tables are emptied.
  void KeepPicture();
  /// Something has arrived, or the link has changed: shows it as it is.
  void Follow();
  /// True while a picture of the map is held.
  bool HoldsPicture() const { return !picture.isNull(); }

 Q_SIGNALS:
  /// What is said of a link without data; empty when there is nothing to say any more.
  void Silent(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Look();
  void Show();
  void ShowWords();
  void HideWords();
  /// The map has been drawn anew below the picture that is kept.
  void FollowMap();
  void Fit();
  template <class Act>
  QPushButton* Button(const char* name, const char* caption, const char* meaning, Act act);

  core::Program& program;
  MapPicture& map;
  QTimer look;
  QImage picture;            ///< in grey, as the map was
  QImage ground;             ///< in grey, the map as it is now, when it has been drawn since
  QRectF place;              ///< of the picture, pixels
  map::MapPoint corners[2];  ///< its upper left and lower right
  std::int16_t theater = 0;  ///< whose it is
  QString silent;            ///< told last
  QFrame* words;
  QLabel* lblLink;
  QLabel* lblLinkDetail;
  QWidget* means;  ///< the row of the three
  QPushButton* cmdReconnect;
  QPushButton* cmdStop;
  QCheckBox* chkByItself;
};

}  // namespace kestrel::shell
