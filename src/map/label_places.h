#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "map/box_grid.h"
#include "map/surface.h"

// Where labels stand when they are kept apart: none covers another or a symbol as long as there is room.
//
// A label has eight places around its plot: left of it, where it stands by itself, right of it, above it, below it, and
// at the four corners between these, in this order. It stands at the first that is free, and from redraw to redraw it
// stays where it is while that is free. Another zoom begins anew.
//
// Where nothing is free the labels of a two-ship become one of a single line, like "Viper1-2, 250", or
// "Viper1-2, 250/240" at two altitudes, which stands around the leader's plot. A two-ship are two players or two AI
// aircraft in one colour, within JoinDistance, whose names (a player's callsign, or his name where he has none) are
// the same but for the last digit: 1 and 2, 3 and 4, 5 and 6, 7 and 8. They come apart when they are farther from each
// other than PartDistance, or when both labels have room again, which each two-ship tries at every eighth redraw.
// Where even that covers something, the label stands at its first place, and looks for a better one at every eighth
// redraw: nothing is left out.
namespace kestrel::map {

/// Surface units: 80 and 100 pixels.
inline constexpr double JoinDistance = 1200;
inline constexpr double PartDistance = 1500;

/// Half the side of the box of a symbol, surface units.
inline constexpr double SymbolRadius = 60;

/// How many places there are around a plot.
inline constexpr std::uint8_t LabelPlaceCount = 8;

/// The label of one aircraft.
struct Label {
  // What is asked.
  SurfacePoint At;             ///< the plot
  double Width = 0;            ///< surface units
  double Height = 0;           ///< surface units
  double Gap = 0;              ///< from the plot to the right end of the label at the first place
  double Rise = 0;             ///< from the plot up to its top there
  std::string_view Name = {};  ///< that tells two-ships; stays as it is until it is drawn
  std::int16_t Altitude = 0;   ///< hundreds of feet
  base::Colour Color = 0;
  bool Real = false;
  bool TellsName = true;      ///< a joined label does as well
  bool TellsAltitude = true;  ///< a joined label does as well
  bool Fixed = false;         ///< has the first place whatever it covers

  // Where it stands.
  static constexpr std::size_t Alone = static_cast<std::size_t>(-1);
  Box Area = {};
  std::uint8_t Place = 0;
  std::size_t Partner = Alone;  ///< the other one of its two-ship, with which it is joined
  bool Leads = false;           ///< of a joined label: Area is its own. The other one has none
  bool Crowded = false;         ///< there was no free place

  bool HasArea() const { return Partner == Alone || Leads; }
  /// How its lines stand in Area: 0 at the left, 1 at the right.
  double Alignment() const;
  /// It stands left or right of the plot, at its height.
  bool IsBeside() const;
};

class LabelPlaces {
 public:
  /// Nothing is there yet. Surface units; `resolution`: the zoom.
  void Begin(double surfaceWidth, double surfaceHeight, double resolution);
  void AddSymbol(SurfacePoint at);
  /// A player's is to be added before those of AI aircraft: what comes first is served first.
  void AddLabel(const Label& label) { labels.push_back(label); }
  /// Gives each label its place; joined ones are measured on `surface`.
  void Arrange(Surface& surface, const TextFont& font);
  const std::vector<Label>& Labels() const { return labels; }
  /// Forgets where labels stood.
  void Forget() { former.Clear(0); }

 private:
  /// What is known of a label from the last redraw, or about to be remembered for the next.
  struct Known {
    std::uint64_t Key = 0;    ///< 0: none
    std::uint32_t Index = 0;  ///< in labels
    std::uint32_t Count = 0;  ///< of labels with the same name
    std::uint8_t Place = 0;
    bool Joined = false;
    bool Crowded = false;
  };
  /// By key, in memory that is kept.
  class KnownTable {
   public:
    /// Empties it and makes room.
    void Clear(std::size_t count);
    /// Null when there is none.
    Known* Find(std::uint64_t key);
    /// There is none of this key yet, and there is room.
    Known& Add(std::uint64_t key);

   private:
    std::vector<Known> slots;
  };
  /// What stands beside each label.
  struct Work {
    std::uint64_t Key = 0;       ///< of this very aircraft
    std::uint64_t Stem = 0;      ///< of its name without the last digit
    int Digit = 0;               ///< the last of its name, 0 for none
    const Known* Was = nullptr;  ///< null: new
    std::size_t Number = 0;      ///< in the grid, while Placed
    bool Placed = false;
  };

  void NameAll();
  void PlaceFixed();
  void KeepHeld(Surface& surface, const TextFont& font);
  void PlaceNew();
  void PlaceRest(Surface& surface, const TextFont& font);
  void TryApart();
  void Remember();

  bool IsFreeAt(const Box& area, std::uint8_t place) const;
  /// The first free place; LabelPlaceCount when there is none. `room`: so much more must be free around it.
  std::uint8_t FreePlace(const Label& label, double room = 0) const;
  void Put(std::size_t index, std::uint8_t place);
  /// Its area is free for others.
  void Unplace(std::size_t index);
  /// The other one of its two-ship within `distance`, Label::Alone when there is none.
  std::size_t PartnerOf(std::size_t index, double distance);
  /// As it would stand around the leader.
  Label JoinedLabel(std::size_t leader, std::size_t wing, Surface& surface, const TextFont& font);
  void Join(std::size_t leader, std::size_t wing, const Label& joined, std::uint8_t place, bool crowded);
  /// True when it has a partner: both are placed then.
  bool JoinSomewhere(std::size_t index, double distance, Surface& surface, const TextFont& font);

  double zoom = 0;
  std::uint32_t turn = 0;
  BoxGrid grid;
  std::vector<Label> labels;
  std::vector<Work> works;
  KnownTable former;
  KnownTable present;
  std::string text;
};

/// What the joined label of two aircraft says; empty when it would say nothing.
void AppendJoinedText(const Label& leader, const Label& wing, std::string& text);

}  // namespace kestrel::map
