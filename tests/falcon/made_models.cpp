// The models, as shapes of each form.

#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "falcon/bml_writer.h"
#include "falcon/dx_writer.h"
#include "falcon/made_files.h"
#include "falcon/made_packers.h"
#include "falcon/made_world.h"
#include "falcon/model_writer.h"
#include "falcon/shape_writer.h"

namespace kestrel::made {
namespace {

/// Feet up to which the whole shape is seen; beyond it there is a poorer one.
constexpr float NearRange = 2000, FarRange = 30000;

/// What is left of a model far away: its first face.
Model Poorer(const Model& model) { return {model.Points, {model.Faces.front()}, model.Box}; }

/// The corners of its triangles, three by three.
std::vector<int> Corners(const Model& model) {
  std::vector<int> corners;
  for (const std::vector<int>& face : model.Faces) {
    for (std::size_t n = 2; n < face.size(); ++n) corners.insert(corners.end(), {face[0], face[n - 1], face[n]});
  }
  return corners;
}

std::string ClassicShape(const Model& model) {
  std::vector<test::NodePlan> faces;
  for (const std::vector<int>& face : model.Faces) faces.push_back(test::Polygon(face));
  return test::ShapeBytes(test::Root(model.Points, std::move(faces)));
}

std::string DxShape(const Model& model) {
  test::DxWriter dx;
  dx.Points = model.Points;
  dx.Node(0, "").Surface(4, Corners(model)).Node(9, "");
  return dx.File();
}

/// `packing`: 0 none, 1 LZ4, 2 LZMA.
std::string BmlShape(const Model& model, unsigned packing) {
  std::vector<test::BmlWriter::Place> places;
  for (const int corner : Corners(model)) {
    const auto& [forward, right, down] = model.Points[static_cast<std::size_t>(corner)];
    places.push_back({right, -down, forward});
  }
  test::BmlWriter bml;
  bml.Triangles(places);
  const std::string content = bml.Content();
  if (packing == 0) return bml.File();
  return bml.Packed(packing, packing == 1 ? PackLz4(content) : PackLzma(content), content.size());
}

float RadiusOf(const Model& model) {
  float radius = 0;
  for (const auto& [x, y, z] : model.Points) radius = std::max(radius, std::sqrt(x * x + y * y + z * z));
  return radius;
}

void AddFolders(Files& files, const std::string& folder) {
  for (std::size_t n = 0; n < Models.size(); ++n) {
    const Model& model = Models[n];
    const std::string own = folder + "/Models/" + std::to_string(n + 1);
    std::string text = "Dimensions = " + std::to_string(RadiusOf(model));
    for (const float side : model.Box) text += " " + std::to_string(side);
    text += "\nTextureSets = 1\nSwitches = -1\nDofs = -1\nAddLOD = Model_0.bml 2000\nAddLOD = Model_1.bml 30000\n";
    files[own + "/Parent.dat"] = text;
    // Each packed in another way.
    files[own + "/Model_0.bml"] = BmlShape(model, static_cast<unsigned>(n + 1) % 3);
    files[own + "/Model_1.bml"] = BmlShape(Poorer(model), 0);
  }
}

}  // namespace

void AddModels(Files& files, const std::string& folder, Generation which) {
  if (which >= Generation::Bms437) {
    AddFolders(files, folder);
    return;
  }
  test::DirectoryPlan plan;
  if (which == Generation::Bms435) {
    plan.Version = 0x03087001;
    plan.TextureBytes = 48;
    plan.PlaceBytes = 28;
  }
  plan.Models.resize(1);  // none has the number 0
  std::string shapes;
  const auto add = [&](const Model& model) {
    const std::string shape = which == Generation::Falcon40 ? ClassicShape(model) : DxShape(model);
    plan.Places.push_back({shapes.size(), shape.size()});
    shapes += shape;
    return static_cast<std::uint32_t>(plan.Places.size() - 1);
  };
  for (const Model& model : Models) {
    const std::uint32_t poor = add(Poorer(model));
    plan.Models.push_back(
        {.Radius = RadiusOf(model), .Box = model.Box, .Details = {{add(model), NearRange}, {poor, FarRange}}});
  }
  files[folder + "/KoreaObj.HDR"] = test::DirectoryBytes(plan);
  files[folder + "/KoreaObj.LOD"] = shapes;
}

}  // namespace kestrel::made
