#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "link/session_fixture.h"

// Random sessions against a second, slow and straightforward way of doing the same.
namespace kestrel::link {
namespace {

using test::AIRecord;
using test::ClientData;
using test::Describe;
using test::Message;
using test::PositionData;

/// The feed by the simplest means: linear searches, whole records swapped, text through the general number road.
struct Reference {
  Tables World;
  std::int32_t Interval = 0;
  std::uint32_t Last = 0;

  std::size_t Find(int id) const {
    for (std::size_t i = 1; i <= World.Clients.UpperBound(); ++i) {
      if (World.Clients[i].Id == id) return i;
    }
    return 0;
  }
  void Set(PlotRecord& client, int id, const std::string& name, const std::string& info, const std::string& status) {
    client.Id = client.ClientId = static_cast<std::int16_t>(id);
    client.Label = "Airplane " + std::to_string(id);
    client.Name = name;
    client.Info = info;
    client.Status = status;
  }
  void New(int id, const std::string& name) {
    PlotRecord client;
    Set(client, id, name, "i", "O");
    client.ShowLabel = client.PlotVisible = true;
    World.Clients.Append(client);
  }
  void Update(int id, const std::string& name) {
    if (const std::size_t i = Find(id)) Set(World.Clients[i], id, name, "j", "X");
  }
  void Delete(int id) {
    if (const std::size_t i = Find(id)) World.Clients.Remove(i);
  }
  void Move(int id, double north, double east, double feet) {
    PlotRecord& client = World.Clients[Find(id)];
    const PlotPoint before = {client.X, client.Y};
    client.History.Append(before);
    client.PosText = base::FormatInvariant(before.X, "0000.000") + base::FormatInvariant(before.Y, "0000.000");
    client.X = east / 3279.98;
    client.Y = north / 3279.98;
    client.Altitude = static_cast<std::int16_t>(std::floor(feet / 100));
    client.Speed = 0;
    if (Interval != 0 && (before.X != 0 || before.Y != 0)) {
      const double miles = std::sqrt(std::pow(client.X - before.X, 2) + std::pow(client.Y - before.Y, 2)) / 1.852;
      client.Speed = static_cast<std::int16_t>(std::min(32767.0, std::nearbyint(miles * 3600 / (Interval / 1000.0))));
    }
  }
  void Snapshot(const std::vector<AIPlotRecord>& plots, double bullX, double bullY) {
    base::Table<AIHistoryPoint> trail;
    for (AIHistoryPoint dot : World.AIHistory.Live()) {
      if (++dot.Age < 7) trail.Append(dot);
    }
    for (const AIPlotRecord& plot : World.AIPlots.Live()) {
      trail.Append({plot.X, plot.Y, 1, plot.Hostile ? 255u : 16711680u});
    }
    World.AIHistory = trail;
    World.AIPlots.Clear();
    for (AIPlotRecord plot : plots) {
      const double bearing = plot.Bearing * 3.14159265358979 / 180;
      plot.X = static_cast<float>(bullX + std::sin(bearing) * plot.Range * 1.852);
      plot.Y = static_cast<float>(bullY - std::cos(bearing) * plot.Range * 1.852);
      std::string text(base::Trim(plot.Name));
      if (!text.empty()) text.pop_back();
      plot.Hostile = 1;
      for (const std::string& entry : World.FriendlyList.Live()) {
        if (entry.find(text) != std::string::npos) plot.Hostile = 0;
      }
      World.AIPlots.Append(plot);
    }
    if (!World.AIPlots.Empty()) Sort(1, static_cast<int>(World.AIPlots.UpperBound()));
  }
  void Sort(int low, int high) {
    auto& table = World.AIPlots;
    const auto at = [&table](int i) -> AIPlotRecord& { return table[static_cast<std::size_t>(i)]; };
    const std::string pivot = at((low + high) / 2).Name;
    int i = low;
    int j = high;
    do {
      while (at(i).Name < pivot) ++i;
      while (at(j).Name > pivot) --j;
      if (i <= j) std::swap(at(i++), at(j--));
    } while (i <= j);
    if (low < j) Sort(low, j);
    if (i < high) Sort(i, high);
  }
};

/// Compares what comes through sine and cosine, to a part of a map unit, and takes it out of both worlds.
template <class Place>
void ExpectNear(base::Table<Place>& one, base::Table<Place>& other) {
  ASSERT_EQ(one.UpperBound(), other.UpperBound());
  for (std::size_t n = 0; n <= one.UpperBound(); ++n) {
    EXPECT_NEAR(one[n].X, other[n].X, 1e-3) << n;
    EXPECT_NEAR(one[n].Y, other[n].Y, 1e-3) << n;
    one[n].X = one[n].Y = other[n].X = other[n].Y = 0;
  }
}

void ExpectSame(Tables one, Tables other) {
  ExpectNear(one.AIPlots, other.AIPlots);
  ExpectNear(one.AIHistory, other.AIHistory);
  EXPECT_EQ(Describe(one), Describe(other));
}

class RandomWorld : public SessionTest {
 protected:
  /// One random message, done in `reference` as well.
  std::string Next(std::mt19937& random, Reference& reference) {
    const auto pick = [&random](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    const int id = pick(12) - 3;
    const std::string idText = std::to_string(id);
    const std::string name = "P" + std::to_string(pick(100));
    switch (pick(9)) {
      case 0:
        reference.New(id, name);
        return Message("NEWCLT", ClientData(idText, " " + name, "i", "O"));
      case 1:
        reference.Update(id, name);
        return Message("PLSUPD", ClientData(idText, name + " ", "j", "X"));
      case 2:
        reference.Delete(id);
        return Message("DELCLT", idText);
      case 3: {
        clock.Ticks += 1 + static_cast<std::uint32_t>(pick(9000));
        reference.Interval = reference.Last < 1 ? 0 : static_cast<std::int32_t>(clock.Ticks - reference.Last);
        reference.Last = clock.Ticks;
        return Message("SYNCRO");
      }
      case 4: {
        std::vector<AIPlotRecord> plots;
        std::string data;
        for (int count = pick(40); count > 0; --count) {
          const int bearing = pick(360), range = pick(1000), altitude = pick(100);
          const std::string call =
              pick(8) == 0 ? "" : std::string(1, "ABc"[pick(3)]) + "lpha" + std::to_string(pick(20));
          data +=
              AIRecord(call, std::to_string(bearing), std::to_string(range), test::Field(std::to_string(altitude), 2));
          AIPlotRecord plot;
          plot.Name = call;
          plot.Name.resize(10, ' ');
          plot.Bearing = bearing;
          plot.Range = range;
          plot.Altitude = static_cast<std::int16_t>(altitude * 10);
          plots.push_back(plot);
        }
        reference.Snapshot(plots, state.Bull.X, state.Bull.Y);
        return Message("AILOCA", data);
      }
      case 5:
        return Message("NEWCLT", "bad");
      case 6:
        return Message("INDATA", idText +
                                     "\x1e"
                                     "1e999");
      default: {
        const int north = pick(3400000), east = pick(3400000), feet = pick(50000) - 500;
        reference.Move(id, north / 4.0, east / 4.0, feet);
        const auto text = [](double value) { return base::FormatInvariant(value, "0.00"); };
        std::string north12 = text(north / 4.0);
        if (pick(2)) std::replace(north12.begin(), north12.end(), '.', ',');
        return Message("INDATA", PositionData(idText, north12, text(east / 4.0), std::to_string(feet)));
      }
    }
  }
};

TEST_F(RandomWorld, IsTheSameAsTheStraightforwardOne) {
  const auto seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  for (int world = 0; world < 60; ++world) {
    Connect();
    Reference reference;
    tables.FriendlyList.Clear();
    for (const char* entry : {"Alpha1", "xBlpha", "clph"}) {
      if (random() % 2) tables.FriendlyList.Append(entry);
    }
    reference.World.FriendlyList = tables.FriendlyList;
    state.Bull = {static_cast<double>(random() % 1000), static_cast<double>(random() % 1000)};
    for (int step = 0; step < 60; ++step) {
      // All of an arrival is read at one tick, so it holds one SYNCRO at the most.
      std::string arrival;
      const std::uint32_t before = clock.Ticks;
      do arrival += Next(random, reference);
      while (clock.Ticks == before && random() % 4 != 0);
      const std::size_t cut = random() % (arrival.size() + 1);
      socket.Arrive(arrival.substr(0, cut));
      socket.Arrive(arrival.substr(cut));
      ExpectSame(tables, reference.World);
      ASSERT_FALSE(HasFailure()) << "world " << world << " step " << step;
      ASSERT_EQ(state.Sync.SyncInterval, reference.Interval);
    }
    session.Disconnect();
  }
}

}  // namespace
}  // namespace kestrel::link
