#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/colour.h"
#include "map/view_state.h"

namespace kestrel::map {

struct Scene;
class Surface;

/// Points of a trail that are always drawn with what moves; of a trail that is not shown whole no others are drawn.
inline constexpr std::size_t RecentPoints = 6;

/// The old points of the trails that are shown whole (ShowAllHistory), as they lie on what a surface has captured: of
/// an evening they are millions, and each message adds one to each trail. It knows how far it has laid down each trail,
/// so that a redraw lays down what has become old and no more. One for each surface.
///
/// So an old point lies below symbol, label and recent points of every plot, and not above those of the plots before
/// its own as it would without the layer. Old points of two trails lie as they would: those of the later client above.
class TrailLayer {
 public:
  /// What stands has been painted anew, by this scene: nothing is laid down any more.
  void Begin(const Scene& scene);
  /// True while all that has been laid down is shown by the scene, where it lies and as it lies.
  bool Fits(const Scene& scene) const;
  /// Lays down the old points that are missing; the layer fits. False when none were: nothing has been drawn.
  bool LayDown(const Scene& scene, Surface& surface);
  /// How many points of the trail of Clients(index) have been laid down: those from 1 to this.
  std::size_t Laid(std::size_t index) const { return index < trails.size() ? trails[index].Points : 0; }

 private:
  struct Trail {
    std::size_t Points = 0;
    base::Colour Color = 0;
  };

  ViewState view;             ///< in which they lie
  std::uint64_t edition = 0;  ///< of the tables
  std::vector<Trail> trails;  ///< by the client's index
};

}  // namespace kestrel::map
