#pragma once

#include <QImage>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/picture.h"
#include "link/tables.h"

// What the benches of the map share: a picture, aircraft over it and a watch.
namespace kestrel::bench {

inline constexpr int Width = 1920;
inline constexpr int Height = 1080;
inline constexpr int Players = 64;
inline constexpr int AIAircraft = 500;
inline constexpr int TrailDots = 6;

/// All aircraft on straight ways over the visible part, turned back at its edge; heights and speeds change all the
/// time.
class Flight {
 public:
  Flight() {
    for (int index = 0; index < Players; ++index) {
      link::PlotRecord& plot = tables.Clients.Append({});
      plot.Id = plot.ClientId = static_cast<std::int16_t>(index + 1);
      plot.PlotVisible = true;
      plot.Label = "Falcon" + std::to_string(index + 1);
      plot.Name = "Pilot " + std::to_string(index + 1);
      plot.Color = index % 2 == 0 ? 0x0000C8FF : 0x00FFC800;
      players.push_back(NewWay());
    }
    for (int index = 0; index < AIAircraft; ++index) {
      link::AIPlotRecord& plot = tables.AIPlots.Append({});
      plot.Name = "Viper" + std::to_string(index + 1);
      plot.Name.resize(10, ' ');
      plot.Hostile = static_cast<std::uint8_t>(index % 2);
      others.push_back(NewWay());
    }
    for (int step = 0; step < TrailDots; ++step) Step();
  }

  void Step() {
    for (int index = 0; index < Players; ++index) {
      link::PlotRecord& plot = tables.Clients[static_cast<std::size_t>(index + 1)];
      Way& way = players[static_cast<std::size_t>(index)];
      if (plot.X != 0) {
        plot.History.Append({plot.X, plot.Y});
        plot.PosText = "0500.0000500.000";
      }
      Move(way);
      plot.X = way.X;
      plot.Y = way.Y;
      plot.Altitude = static_cast<std::int16_t>(100 + numbers() % 300);
      plot.Speed = static_cast<std::int16_t>(200 + numbers() % 400);
      if (plot.History.UpperBound() > TrailDots) plot.History.Remove(1);
    }
    AgeTrail();
    for (int index = 0; index < AIAircraft; ++index) {
      link::AIPlotRecord& plot = tables.AIPlots[static_cast<std::size_t>(index + 1)];
      Way& way = others[static_cast<std::size_t>(index)];
      Move(way);
      plot.X = static_cast<float>(way.X);
      plot.Y = static_cast<float>(way.Y);
      plot.Altitude = static_cast<std::int16_t>(10 * (numbers() % 45));
    }
  }

  link::Tables tables;

 private:
  struct Way {
    double X, Y, StepX, StepY;
  };

  Way NewWay() {
    std::uniform_real_distribution<double> across(1, Width - 1);
    std::uniform_real_distribution<double> down(1, Height - 1);
    std::uniform_real_distribution<double> step(-4, 4);
    return {across(numbers), down(numbers), step(numbers), step(numbers)};
  }

  static void Move(Way& way) {
    if (way.X + way.StepX < 1 || way.X + way.StepX > Width - 1) way.StepX = -way.StepX;
    if (way.Y + way.StepY < 1 || way.Y + way.StepY > Height - 1) way.StepY = -way.StepY;
    way.X += way.StepX;
    way.Y += way.StepY;
  }

  void AgeTrail() {
    base::Table<link::AIHistoryPoint> kept;
    for (link::AIHistoryPoint& point : tables.AIHistory.Live()) {
      if (++point.Age <= TrailDots) kept.Append(point);
    }
    for (const link::AIPlotRecord& plot : tables.AIPlots.Live()) {
      if (plot.X != 0) kept.Append({plot.X, plot.Y, 1, plot.Hostile != 0 ? 255U : 16711680U});
    }
    tables.AIHistory = std::move(kept);
  }

  std::mt19937 numbers{20260101};
  std::vector<Way> players;
  std::vector<Way> others;
};

inline base::Picture Ground(QImage& pixels) {
  pixels = QImage(2048, 2048, QImage::Format_RGB32);
  for (int y = 0; y < pixels.height(); ++y) {
    for (int x = 0; x < pixels.width(); ++x) pixels.setPixel(x, y, qRgb(x / 16, 90 + y / 32, (x ^ y) & 63));
  }
  return {pixels.width(), pixels.height(), static_cast<int>(pixels.bytesPerLine()), pixels.constBits(), nullptr};
}

class Stopwatch {
 public:
  void Time(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  /// Milliseconds.
  double Median() const {
    std::vector<double> sorted = times;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
  }

 private:
  std::vector<double> times;
};

}  // namespace kestrel::bench
