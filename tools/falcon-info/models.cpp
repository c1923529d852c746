#include "falcon-info/models.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "base/failure.h"
#include "base/files.h"
#include "falcon-info/companions.h"
#include "falcon/bml_expander.h"
#include "falcon/bml_shape.h"
#include "falcon/model_directory.h"
#include "falcon/model_store.h"
#include "falcon/parent_file.h"
#include "falcon/shape_file.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

using falcon::ModelBox;
using falcon::ModelPoint;
using falcon::ModelShape;

Json PointReport(const ModelPoint& point) {
  Json list = Json::EmptyList();
  for (const double way : {point.X, point.Y, point.Z}) list.Append(way);
  return list;
}

Json BoxReport(const std::optional<ModelBox>& box) {
  if (!box) return {};
  Json json;
  json["least"] = PointReport(box->Least);
  json["most"] = PointReport(box->Most);
  return json;
}

/// What the lines of a shape fit in; nothing without any.
std::optional<ModelBox> BoxOf(const ModelShape& shape) {
  if (shape.Edges.empty()) return std::nullopt;
  ModelBox box{shape.Edges[0].From, shape.Edges[0].From};
  const auto take = [&box](const ModelPoint& point) {
    for (double ModelPoint::*const way : {&ModelPoint::X, &ModelPoint::Y, &ModelPoint::Z}) {
      box.Least.*way = std::min(box.Least.*way, point.*way);
      box.Most.*way = std::max(box.Most.*way, point.*way);
    }
  };
  for (const falcon::ModelEdge& edge : shape.Edges) {
    take(edge.From);
    take(edge.To);
  }
  return box;
}

Json ShapeReport(const ModelShape& shape) {
  Json json;
  json["triangles"] = shape.Triangles;
  json["lines"] = shape.Edges.size();
  json["lines_box"] = BoxReport(BoxOf(shape));
  return json;
}

Json DetailReport(const falcon::ModelDirectory& directory, const falcon::DetailReference& detail) {
  const falcon::DetailPlace& place = directory.Places[detail.Number];
  Json json;
  json["number"] = detail.Number;
  json["range"] = detail.Range;
  json["offset"] = place.Offset;
  json["size"] = place.Size;
  return json;
}

Json DirectoryModelReport(const falcon::ModelDirectory& directory, std::size_t number) {
  Json json;
  json["number"] = number;
  if (number >= directory.Models.size()) {
    json["model"] = nullptr;
    return json;
  }
  const falcon::DirectoryModel& model = directory.Models[number];
  json["radius"] = model.Radius;
  json["box"] = BoxReport(model.Box);
  json["dynamic_points"] = model.Dynamic.size();
  json["details"] = ListOf(model.Details, [&](const auto& detail) { return DetailReport(directory, detail); });
  return json;
}

falcon::ModelDirectory ReadDirectory(const fs::path& file) {
  return falcon::ReadModelDirectory(falcon::ReadDataFile(file, falcon::MaxModelDirectoryBytes));
}

void TellDirectory(const falcon::ModelDirectory& directory, Json& into) {
  const auto& models = directory.Models;
  into["version"] = directory.Version;
  into["colours"] = directory.ColourCount;
  into["palettes"] = directory.PaletteCount;
  into["textures"] = directory.TextureCount;
  into["shapes"] = directory.Places.size();
  into["models"] = models.size();
  into["models_with_box"] =
      std::count_if(models.begin(), models.end(), [](const auto& one) { return one.Box.has_value(); });
  into["models_with_shape"] =
      std::count_if(models.begin(), models.end(), [](const auto& one) { return !one.Details.empty(); });
}

/// The other file of the pair, of which each can be either kind's.
fs::path Beside(const fs::path& file, const char* ending) {
  fs::path found = base::FindFile(file.parent_path(), base::NameForMessage(file.stem()) + ending);
  return base::FileExists(found) ? found : fs::path();
}

/// All shapes of a directory, as far as they can be read.
void TellAllShapes(const fs::path& file, const falcon::ModelDirectory& directory, Json& into) {
  std::size_t read = 0, failed = 0, triangles = 0, lines = 0;
  std::string first;
  for (std::size_t number = 0; number < directory.Models.size(); ++number) {
    if (directory.Models[number].Details.empty()) continue;
    try {
      const ModelShape shape = falcon::ReadDirectoryShape(file, directory, number);
      ++read;
      triangles += shape.Triangles;
      lines += shape.Edges.size();
    } catch (const base::RuntimeFailure& failure) {
      if (failed++ == 0) first = failure.what();
    }
  }
  into["models_read"] = read;
  into["models_failed"] = failed;
  into["first_failure"] = first.empty() ? Json() : Json(first);
  into["triangles"] = triangles;
  into["lines"] = lines;
}

ModelShape ReadBml(const fs::path& file) {
  return falcon::ReadBmlShape(falcon::ReadDataFile(file, falcon::MaxBmlBytes), falcon::SystemBmlExpander());
}

}  // namespace

Json ModelDirectoryReport(Context& context, const fs::path& file) {
  const falcon::ModelDirectory directory = ReadDirectory(file);
  Json json = ReportOf(file, "model directory");
  TellDirectory(directory, json);
  if (!context.Asked.Models.empty()) {
    json["asked"] =
        ListOf(context.Asked.Models, [&](std::size_t number) { return DirectoryModelReport(directory, number); });
  }
  return json;
}

Json ShapesReport(Context& context, const fs::path& file) {
  const fs::path place = Beside(file, EndingOf(file) == ".dxl" ? ".DXH" : ".HDR");
  if (place.empty()) throw base::RuntimeFailure("the directory of its models is not beside it");
  const falcon::ModelDirectory directory = ReadDirectory(place);
  Json json = ReportOf(file, "shapes");
  json["directory_file"] = Json::OfPath(place);
  TellDirectory(directory, json);
  if (context.Asked.Models.empty()) {
    TellAllShapes(file, directory, json);
    return json;
  }
  json["asked"] = ListOf(context.Asked.Models, [&](std::size_t number) {
    Json model = DirectoryModelReport(directory, number);
    model["shape"] =
        Attempt(context, file, [&] { return ShapeReport(falcon::ReadDirectoryShape(file, directory, number)); });
    return model;
  });
  return json;
}

void TellModels(Context& context, const std::vector<fs::path>& folders, Json& into) {
  if (context.Asked.Models.empty()) return;
  falcon::ModelStore store(folders, falcon::SystemBmlExpander());
  into["models"] = ListOf(context.Asked.Models, [&](std::size_t number) {
    return Attempt(context, fs::path(), [&] {
      const falcon::ModelReading reading =
          store.Read(static_cast<std::int32_t>(std::min<std::size_t>(number, INT32_MAX)));
      Json json;
      json["number"] = number;
      json["shape"] = reading.Shape ? ShapeReport(*reading.Shape) : Json();
      json["box"] = BoxReport(reading.Box);
      json["trouble"] = reading.Trouble.empty() ? Json() : Json(reading.Trouble);
      return json;
    });
  });
}

Json BmlReport(Context&, const fs::path& file) {
  Json json = ReportOf(file, "shape");
  json["shape"] = ShapeReport(ReadBml(file));
  return json;
}

Json ParentReport(Context& context, const fs::path& file) {
  const falcon::ParentFile parent = falcon::ReadParentFile(falcon::ReadDataFile(file, falcon::MaxParentFileBytes));
  Json json = ReportOf(file, "model");
  json["radius"] = parent.Radius;
  json["box"] = BoxReport(parent.Box);
  json["details"] = ListOf(parent.Details, [&](const falcon::ParentFile::Detail& detail) {
    Json one;
    one["name"] = detail.File;
    one["range"] = detail.Range;
    one["shape"] =
        Attempt(context, fs::path(), [&] { return ShapeReport(ReadBml(Below(file.parent_path(), detail.File))); });
    return one;
  });
  return json;
}

}  // namespace kestrel::falconinfo
