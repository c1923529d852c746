#include "map/snapshot_tracks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace kestrel::map {
namespace {

using Table = base::Table<link::AIPlotRecord>;

struct Word {
  const char* Name;
  double Bearing, Range;
};

Table Snapshot(std::initializer_list<Word> words) {
  Table table;
  for (const Word& word : words) {
    link::AIPlotRecord& plot = table.Append({});
    plot.Name = word.Name;
    plot.Bearing = word.Bearing;
    plot.Range = word.Range;
  }
  return table;
}

TEST(SnapshotTracks, ATrackGoesFromTheSnapshotBeforeToThePresentOne) {
  SnapshotTracks tracks;
  // 090/10 is 10 east, 000/10 is 10 north: from the one to the other is northwest. 180/20 to 180/10 is north.
  tracks.Take(Snapshot({{"Mig21", 90, 10}, {"Su27", 180, 20}}));
  EXPECT_FALSE(tracks.TrackOf("Mig21")) << "one snapshot is none";
  tracks.Take(Snapshot({{"Mig21", 0, 10}, {"Su27", 180, 10}}));
  EXPECT_NEAR(tracks.TrackOf("Mig21").value(), 315, 1e-9);
  const double north = tracks.TrackOf("Su27").value();
  EXPECT_NEAR(std::min(north, 360 - north), 0, 1e-9);
  // 000/10 to 090/10 is southeast.
  tracks.Take(Snapshot({{"Mig21", 90, 10}}));
  EXPECT_NEAR(tracks.TrackOf("Mig21").value(), 135, 1e-9);
  EXPECT_FALSE(tracks.TrackOf("Su27")) << "it is gone";
}

TEST(SnapshotTracks, ANameThatStandsTwiceInEitherHasNone) {
  SnapshotTracks tracks;
  tracks.Take(Snapshot({{"A", 90, 10}, {"A", 91, 10}, {"B", 90, 10}, {"C", 90, 10}}));
  tracks.Take(Snapshot({{"A", 90, 20}, {"B", 90, 20}, {"B", 90, 30}, {"C", 90, 20}}));
  EXPECT_FALSE(tracks.TrackOf("A"));
  EXPECT_FALSE(tracks.TrackOf("B"));
  EXPECT_NEAR(tracks.TrackOf("C").value(), 90, 1e-9);
}

TEST(SnapshotTracks, OrderOfTheTableDoesNotCount) {
  SnapshotTracks tracks;
  tracks.Take(Snapshot({{"C", 90, 10}, {"A", 180, 10}, {"B", 270, 10}}));
  tracks.Take(Snapshot({{"B", 270, 20}, {"C", 90, 20}, {"A", 180, 20}}));
  EXPECT_NEAR(tracks.TrackOf("A").value(), 180, 1e-9);
  EXPECT_NEAR(tracks.TrackOf("B").value(), 270, 1e-9);
  EXPECT_NEAR(tracks.TrackOf("C").value(), 90, 1e-9);
}

TEST(SnapshotTracks, TheSameTableAgainIsNoNewSnapshot) {
  SnapshotTracks tracks;
  tracks.Take(Snapshot({{"A", 90, 10}, {"B", 90, 10}}));
  const Table second = Snapshot({{"A", 90, 20}, {"B", 90, 10}});
  for (int look = 0; look < 3; ++look) tracks.Take(second);
  EXPECT_TRUE(tracks.TrackOf("A"));
  EXPECT_FALSE(tracks.TrackOf("B")) << "it has not moved";
  EXPECT_FALSE(tracks.TrackOf("Nobody"));
}

TEST(SnapshotTracks, AJumpLeavesNobodyATrackUntilTheNextSnapshot) {
  SnapshotTracks tracks;
  tracks.Take(Snapshot({{"A", 90, 10}}));
  tracks.Take(Snapshot({{"A", 90, 99}}), false);
  EXPECT_FALSE(tracks.TrackOf("A"));
  tracks.Take(Snapshot({{"A", 90, 98}}));
  EXPECT_NEAR(tracks.TrackOf("A").value(), 270, 1e-9);
}

TEST(SnapshotTracks, WordsThatAreNoPlaceAndEndlessNamesGiveNone) {
  SnapshotTracks tracks;
  const std::string endless(10000, 'x');
  const double none = std::numeric_limits<double>::quiet_NaN();
  const double far = std::numeric_limits<double>::infinity();
  tracks.Take(Snapshot({{"A", none, 10}, {"B", 90, far}, {endless.c_str(), 90, 10}, {"", 0, 5}}));
  tracks.Take(Snapshot({{"A", 90, 20}, {"B", 90, 20}, {endless.c_str(), 90, 20}, {"", 0, 6}}));
  EXPECT_FALSE(tracks.TrackOf("A"));
  EXPECT_FALSE(tracks.TrackOf("B"));
  EXPECT_NEAR(tracks.TrackOf(endless).value(), 90, 1e-9);
  EXPECT_TRUE(tracks.TrackOf("").has_value());
}

}  // namespace
}  // namespace kestrel::map
