// One redraw of what moves on the map, 1920 by 1080 with 64 players and 500 AI aircraft that all have moved since the
// last, as a multiple of the bare copy of the same surface. Beside it what the same picture costs drawn plainly with
// QPainter and as a QGraphicsScene. Each figure is the median of interleaved rounds.

#include <QApplication>
#include <QGraphicsEllipseItem>
#include <QGraphicsScene>
#include <QPainter>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "base/code_page.h"
#include "base/numbers.h"
#include "link/link_options.h"
#include "map/geometry.h"
#include "map/label_layer.h"
#include "map/renderer.h"
#include "map/ties.h"
#include "shell/map/qt_surface.h"
#include "traffic.h"

namespace kestrel {
namespace {

using namespace bench;

constexpr int WarmUp = 20;
constexpr int Rounds = 100;

QColor Colour(base::Colour colour) { return {base::RedOf(colour), base::GreenOf(colour), base::BlueOf(colour)}; }

/// The plain way: everything restored, each text laid out anew, each dot an ellipse.
class PainterSurface final : public map::Surface {
 public:
  explicit PainterSurface(const QImage& ground) : snapshot(ground.copy()), image(ground.copy()) {}

  void Begin() {
    painter.begin(&image);
    painter.setRenderHint(QPainter::Antialiasing);
  }
  void End() { painter.end(); }

  void CopyPicture(const base::Picture&, const map::SourceRect&) override {}
  void Line(double x1, double y1, double x2, double y2, map::Pen pen) override {
    painter.setPen(Colour(pen.Color));
    painter.drawLine(QPointF(x1 / 15, y1 / 15), QPointF(x2 / 15, y2 / 15));
  }
  void Circle(double x, double y, double radius, map::Pen pen) override {
    painter.setPen(Colour(pen.Color));
    painter.drawEllipse(QPointF(x / 15, y / 15), radius / 15, radius / 15);
  }
  void Arc(double x, double y, double radius, double from, double to, map::Pen pen) override {
    painter.setPen(Colour(pen.Color));
    const double side = 2 * radius / 15;
    painter.drawArc(QRectF(x / 15 - side / 2, y / 15 - side / 2, side, side), static_cast<int>(from * 16),
                    static_cast<int>((to - from) * 16));
  }
  void Box(double x1, double y1, double x2, double y2, map::Pen pen) override {
    painter.setPen(Colour(pen.Color));
    painter.drawRect(QRectF(QPointF(x1 / 15, y1 / 15), QPointF(x2 / 15, y2 / 15)));
  }
  void Polygon(std::span<const map::SurfacePoint> corners, map::Pen pen) override {
    QPolygonF points;
    for (const map::SurfacePoint& corner : corners) points.append(QPointF(corner.X / 15, corner.Y / 15));
    painter.setPen(Colour(pen.Color));
    painter.drawPolygon(points);
  }
  void Dot(double x, double y, base::Colour color) override {
    painter.setPen(Qt::NoPen);
    painter.setBrush(Colour(color));
    painter.drawEllipse(QPointF(x / 15, y / 15), 1.5, 1.5);
    painter.setBrush(Qt::NoBrush);
  }
  map::TextSize Measure(std::string_view text, const map::TextFont& font) override {
    const QFontMetricsF metrics(shell::MapFont(font), &image);
    return {metrics.horizontalAdvance(Text(text)) * 15, metrics.height() * 15};
  }
  void Print(std::string_view text, double x, double y, const map::TextFont& font, base::Colour color) override {
    painter.setFont(shell::MapFont(font));
    painter.setPen(Colour(color));
    painter.drawText(QPointF(x / 15, y / 15 + QFontMetricsF(painter.font(), &image).ascent()), Text(text));
  }
  void Capture() override {}
  void Restore() override { painter.drawImage(0, 0, snapshot); }

 private:
  static QString Text(std::string_view bytes) { return QString::fromStdU16String(base::ToUnicode(bytes)); }

  QImage snapshot;
  QImage image;
  QPainter painter;
};

/// The same things as items of a scene, moved and retitled each time, rendered to an image.
class SceneOfItems {
 public:
  SceneOfItems(const QImage& ground, const Flight& flight) : image(ground.copy()) {
    scene.setSceneRect(0, 0, Width, Height);
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    scene.addPixmap(QPixmap::fromImage(ground));
    for (const link::PlotRecord& plot : flight.tables.Clients.Live()) Add(5, Colour(plot.Color), true);
    for (const link::AIPlotRecord& plot : flight.tables.AIPlots.Live()) {
      Add(2, plot.Hostile != 0 ? Qt::red : Qt::blue, false);
    }
  }

  void Redraw(const map::ViewState& view, const Flight& flight) {
    std::size_t next = 0;
    for (const link::PlotRecord& plot : flight.tables.Clients.Live()) {
      Plot& items = plots[next++];
      const map::SurfacePoint at = map::SurfaceFromMap(view, {plot.X, plot.Y});
      Place(items, at,
            {std::to_string(plot.ClientId), plot.Label, plot.Name, std::to_string(plot.Altitude),
             std::to_string(plot.Speed)});
      for (std::size_t dot = 0; dot < items.Dots.size(); ++dot) {
        const std::size_t index = plot.History.UpperBound() - dot;
        const map::SurfacePoint old = map::SurfaceFromMap(view, {plot.History[index].X, plot.History[index].Y});
        items.Dots[dot]->setPos(old.X / 15, old.Y / 15);
      }
    }
    for (const link::AIPlotRecord& plot : flight.tables.AIPlots.Live()) {
      Place(plots[next++], map::SurfaceFromDown(view, {plot.X, plot.Y}),
            {base::FormatInvariant(plot.Altitude, "000"), plot.Name});
    }
    std::size_t dot = 0;
    for (const link::AIHistoryPoint& point : flight.tables.AIHistory.Live()) {
      const map::SurfacePoint at = map::SurfaceFromDown(view, {point.X, point.Y});
      plots[Players + dot % AIAircraft].Dots[dot / AIAircraft]->setPos(at.X / 15 - 4, at.Y / 15 - 4);
      ++dot;
    }
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    scene.render(&painter, QRectF(0, 0, Width, Height), QRectF(0, 0, Width, Height));
  }

 private:
  struct Plot {
    QGraphicsEllipseItem* Symbol;
    QGraphicsLineItem* Vector;
    std::vector<QGraphicsSimpleTextItem*> Lines;
    std::vector<QGraphicsEllipseItem*> Dots;
  };

  void Add(int lines, QColor colour, bool vector) {
    Plot items{scene.addEllipse(-4, -4, 8, 8, QPen(colour)), nullptr, {}, {}};
    if (vector) items.Vector = scene.addLine(0, 0, 30, -20, QPen(colour));
    for (int line = 0; line < lines; ++line) {
      items.Lines.push_back(scene.addSimpleText({}, shell::MapFont({.Name = "MS Sans Serif"})));
      items.Lines.back()->setBrush(colour);
    }
    for (int dot = 0; dot < TrailDots; ++dot) {
      items.Dots.push_back(scene.addEllipse(-1.5, -1.5, 3, 3, Qt::NoPen, colour));
    }
    plots.push_back(items);
  }

  static void Place(Plot& items, map::SurfacePoint at, const std::vector<std::string>& texts) {
    const QPointF place(at.X / 15, at.Y / 15);
    items.Symbol->setPos(place);
    if (items.Vector != nullptr) items.Vector->setPos(place);
    double top = place.y() - 7.0 * static_cast<double>(texts.size());
    for (std::size_t line = 0; line < texts.size(); ++line) {
      items.Lines[line]->setText(QString::fromStdU16String(base::ToUnicode(texts[line])));
      items.Lines[line]->setPos(place.x() - 14 - items.Lines[line]->boundingRect().width(), top);
      top += 14;
    }
  }

  QGraphicsScene scene;
  QImage image;
  std::vector<Plot> plots;
};

void Report(const char* what, const Stopwatch& watch, const Stopwatch& copy) {
  std::printf("%-36s %8.3f ms  %6.2f x the bare copy\n", what, watch.Median(), watch.Median() / copy.Median());
}

/// The aircraft of a flight are told from the bullseye as a server does, so that each step is a new snapshot.
void TellFromBullseye(Flight& flight) {
  for (link::AIPlotRecord& plot : flight.tables.AIPlots.Live()) {
    plot.Bearing = plot.X;
    plot.Range = plot.Y;
  }
}

/// Players and AI aircraft in pairs.
map::Ties EightTies(const Flight& flight) {
  map::Ties ties;
  for (std::size_t pair = 1; pair <= map::MostTies; ++pair) {
    ties.All.push_back({.First = {.Real = true, .Id = flight.tables.Clients[pair].Id},
                        .Second = {.Real = false, .Name = flight.tables.AIPlots[40 * pair].Name}});
  }
  return ties;
}

void Run() {
  Flight flight;
  QImage groundPixels;
  const base::Picture ground = Ground(groundPixels);
  map::ViewState view;
  map::ResetView(view, Width, 2048, 500, 500);
  map::ResizeSurface(view, Width * map::UnitsPerPixel, Height * map::UnitsPerPixel);
  view.ViewCenterY = Height / 2 * map::UnitsPerPixel;
  view.Size = Height;  // the aircraft fly over the visible part
  const map::Options display;
  const link::Options linkOptions;
  const map::Scene scene{.MapPicture = ground,
                         .View = view,
                         .TheaterCorner = {},
                         .Display = display,
                         .LinkOptions = linkOptions,
                         .Plots = flight.tables,
                         .Labels = {}};

  flight.tables.RebuildIndex();
  map::Ties ties = EightTies(flight);
  map::Extras ring;
  ring.THREATRING = true;
  map::Scene tied = scene;
  tied.Tied = &ties;

  map::LabelLayer labels;
  map::Scene apart = scene;
  apart.Apart = &labels;

  shell::QtSurface surface;
  surface.Resize(QSize(Width, Height), 1);
  map::DrawMap(scene, surface);
  PainterSurface plain(surface.Image());
  SceneOfItems items(surface.Image(), flight);
  const std::size_t bytes = static_cast<std::size_t>(surface.Image().sizeInBytes());
  std::vector<std::uint8_t> copySource(bytes, 1);
  std::vector<std::uint8_t> copyTarget(bytes, 2);

  Stopwatch bareCopy, redraw, redrawAndDirty, withTies, withRing, besides, keptApart, naive, graphicsScene;
  for (int round = -WarmUp; round < Rounds; ++round) {
    flight.Step();
    if (round == 0)
      bareCopy = redraw = redrawAndDirty = withTies = withRing = besides = keptApart = naive = graphicsScene = {};
    bareCopy.Time([&] { std::memcpy(copyTarget.data(), copySource.data(), bytes); });
    copySource[0] = copyTarget[bytes - 1];
    redraw.Time([&] { map::RedrawPlots(scene, surface); });
    flight.Step();
    redrawAndDirty.Time([&] {
      map::RedrawPlots(scene, surface);
      surface.TakeDirty();
    });
    for (const bool threats : {false, true}) {
      flight.Step();
      TellFromBullseye(flight);
      (threats ? withRing : withTies).Time([&] {
        map::FollowTies(tied, threats ? ring : map::Extras(), 0, ties);
        map::RedrawPlots(tied, surface);
      });
    }
    map::RedrawPlots(scene, surface);  // the next round restores no line of theirs
    // Each restores what it has painted itself.
    for (const bool kept : {false, true}) {
      map::RedrawPlots(kept ? apart : scene, surface);
      flight.Step();
      (kept ? keptApart : besides).Time([&] { map::RedrawPlots(kept ? apart : scene, surface); });
    }
    map::RedrawPlots(scene, surface);
    if (round % 5 != 0) continue;
    naive.Time([&] {
      plain.Begin();
      map::RedrawPlots(scene, plain);
      plain.End();
    });
    graphicsScene.Time([&] { items.Redraw(view, flight); });
  }

  std::printf("redraw of %d players and %d AI aircraft at %d by %d\n", Players, AIAircraft, Width, Height);
  Report("bare copy", bareCopy, bareCopy);
  Report("RedrawPlots (goal: at most 3)", redraw, bareCopy);
  Report("RedrawPlots and what has changed", redrawAndDirty, bareCopy);
  Report("RedrawPlots with eight ties", withTies, bareCopy);
  Report("... and lines to the nearest threats", withRing, bareCopy);
  Report("RedrawPlots with labels kept apart", keptApart, bareCopy);
  std::printf("%-36s %6.2f x RedrawPlots without (goal: at most 1.5)\n", "...", keptApart.Median() / besides.Median());
  Report("plain: text drawn anew, ellipses", naive, bareCopy);
  Report("QGraphicsScene of the same items", graphicsScene, bareCopy);
}

}  // namespace
}  // namespace kestrel

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  kestrel::Run();
}
