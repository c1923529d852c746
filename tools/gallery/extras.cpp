#include "gallery/extras.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <optional>
#include <utility>

#include "base/text.h"
#include "core/acmi_export.h"
#include "core/eye_colours.h"
#include "map/geometry.h"
#include "map/ties.h"
#include "shell/frame/frame.h"
#include "shell/tape/export_tape_frm.h"

namespace kestrel::gallery {
namespace {

/// Of a picture of a part of the map, pixels.
constexpr QSize PartSize(480, 320);

shell::MDIForm1& Frame() { return *static_cast<shell::MDIForm1*>(Top(QStringLiteral("MDIForm1"))); }
core::Station& Station() { return Frame().Program().State; }
shell::MapPicture& Map() { return Frame().Map().Picture(); }

QPoint PixelOf(map::MapPoint at) {
  const map::SurfacePoint place = map::SurfaceFromMap(Station().View, at);
  return QPointF(place.X / map::UnitsPerPixel, place.Y / map::UnitsPerPixel).toPoint();
}
/// Of the player with this index.
QPoint Player(std::size_t index) {
  const link::PlotRecord& client = Station().Plots.Clients[index];
  return PixelOf({client.X, client.Y});
}
QPoint Aircraft(const char* name) {
  for (const link::AIPlotRecord& plot : Station().Plots.AIPlots.Live()) {
    if (base::Trim(plot.Name) == name) return PixelOf({plot.X, Station().View.Size - plot.Y});
  }
  std::fprintf(stderr, "no aircraft %s\n", name);
  return {};
}

/// What lies around a place of the map, in the main window.
std::function<QRect()> Around(std::function<QPoint()> place) {
  return [place = std::move(place)] {
    QRect part(QPoint(), PartSize);
    part.moveCenter(Map().mapTo(&Frame(), place()));
    return part;
  };
}

void Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers keys) {
  QMouseEvent event(type, QPointF(at), Map().mapToGlobal(QPointF(at)), button,
                    type == QEvent::MouseButtonPress ? button : Qt::NoButton, keys);
  QApplication::sendEvent(&Map(), &event);
}
void PressWithCtrl(QPoint at) {
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    Mouse(type, at, Qt::LeftButton, Qt::ControlModifier);
  }
}

/// Changes the settings and shows what that makes.
void Set(Script& script, std::function<base::Changed()> change) {
  script.Add([] { return true; }, [change = std::move(change)] { Frame().Program().Shown.Refresh(change()); });
  // One turn, for what is drawn with the next paint.
  script.Add([] { return true; }, [] {});
}

}  // namespace

void AddAircraft(Script& script) {
  using base::Changed;
  // They would cover what is to be seen.
  static std::optional<radio::Frequencies> airfields;
  Set(script, [] {
    airfields = std::exchange(Station().Frequencies, {});
    return Changed::Map;
  });
  Set(script, [] {
    PressWithCtrl(Player(1));
    PressWithCtrl(Aircraft("Bandit1"));
    PressWithCtrl(Aircraft("Viper1"));
    PressWithCtrl(Aircraft("Kobra1"));
    return Changed::Plots;
  });
  script.GrabPart("Ties", Around([] { return (Player(1) + Aircraft("Bandit1")) / 2 + QPoint(0, -60); }));
  Set(script, [] {
    map::ClearTies(Station().Ties);
    Station().Extras.THREATRING = true;
    Station().Extras.THREATRANGE = 60;
    return Changed::Plots;
  });
  script.GrabPart("Threats", Around([] { return (Player(1) + Aircraft("Kobra1")) / 2; }));
  const auto labels = Around([] { return (Aircraft("Cowboy1") + Aircraft("Viper1")) / 2; });
  Set(script, [] {
    Station().Extras.THREATRING = false;
    return Changed::Plots;
  });
  script.GrabPart("Labels1", labels);
  Set(script, [] {
    Station().Extras.LABELSAPART = true;
    return Changed::Plots;
  });
  script.GrabPart("Labels2", labels);
  Set(script, [] { return core::UseEyeColours(Station()); });
  script.GrabPart("Colors", Around([] { return (Player(1) + Aircraft("Kobra1")) / 2; }));
  Set(script, [] { return core::PutColoursBack(Station()); });
  Set(script, [] {
    Station().Extras.PLOTCARD = true;
    Mouse(QEvent::MouseMove, Player(1), Qt::NoButton, Qt::NoModifier);
    return Changed::Nothing;
  });
  script.Add([] { return Map().findChild<QWidget*>(QStringLiteral("HoverCard"))->isVisible(); }, [] {});
  script.GrabPart("Card", Around([] { return Player(1); }));
  script.Menu("mnuFind");
  script.Add([] { return Map().findChild<QWidget*>(QStringLiteral("FindField"))->isVisible(); },
             [] { Map().findChild<QLineEdit*>(QStringLiteral("txtFind"))->setText(QStringLiteral("er")); });
  script.GrabPart("Find", [] { return QRect(Map().mapTo(&Frame(), QPoint()), PartSize); });
  Set(script, [] {
    Map().findChild<QWidget*>(QStringLiteral("FindField"))->hide();
    Station().Extras.PLOTCARD = false;
    Station().Extras.MAPBRIGHTNESS = 45;
    Station().Extras.GRIDDEGREES = true;
    return Changed::Map;
  });
  script.GrabPart("Dimmed", [] { return QRect(Map().mapTo(&Frame(), QPoint(0, Map().height() - 320)), PartSize); });
  Set(script, [] {
    Station().Extras = {};
    Station().Frequencies = std::move(*airfields);
    return Changed::Map | Changed::Options;
  });
}

void AddLostLink(Script& script, QProcess& server) {
  script.Add([] { return true; }, [&server] { server.kill(); });
  script.Add([] { return Map().findChild<QWidget*>(QStringLiteral("LinkWords"))->isVisible(); }, [] {});
  script.GrabPart(
      "Lost", [] { return QRect(Map().mapTo(&Frame(), QPoint((Map().width() - PartSize.width()) / 2, 0)), PartSize); });
}

void AddExport(Script& script, const std::filesystem::path& station) {
  script.Add([] { return true; },
             [&script, station] {
               core::AcmiExport work(station / "TAPES" / "Demo.tap", station / "Demo.txt.acmi",
                                     Station().Catalogue.Current());
               for (int step = 0; step < 40 && work.Step(); ++step) continue;
               shell::ExportTapeFrm window(Frame().Program(), work, &Frame());
               window.show();
               QApplication::processEvents();
               script.Save(window.grab(), QLatin1String("ExportTapeFrm"), "");
             });
}

void AddReplay(Script& script) {
  script.GrabPart("Replay",
                  [] { return QRect(Map().mapTo(&Frame(), QPoint(Map().width() - PartSize.width(), 0)), PartSize); });
}

}  // namespace kestrel::gallery
