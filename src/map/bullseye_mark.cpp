#include "map/renderer.h"

namespace kestrel::map {

void DrawBullseye(const Scene& scene, Surface& surface) {
  if (!scene.View.BullseyeVisible) return;
  // The rings do not grow with the zoom.
  for (const double pixels : {3, 6, 9}) {
    surface.Circle(scene.View.BullsX, scene.View.BullsY, pixels * UnitsPerPixel,
                   {.Color = scene.Display.BULLSEYE_COLOR});
  }
}

}  // namespace kestrel::map
