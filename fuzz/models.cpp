// Models from a stranger: a directory, the text of one of them or a shape is read or refused.
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "falcon/bml_expander.h"
#include "falcon/bml_shape.h"
#include "falcon/classic_shape.h"
#include "falcon/dx_shape.h"
#include "falcon/model_directory.h"
#include "falcon/parent_file.h"
#include "foreign_bytes.h"

namespace {

using namespace kestrel;

void Check(const std::optional<falcon::ModelBox>& box) {
  if (!box) return;
  const double sum = box->Least.X + box->Least.Y + box->Least.Z + box->Most.X + box->Most.Y + box->Most.Z;
  if (!std::isfinite(sum) || box->Least.X > box->Most.X || box->Least.Z > box->Most.Z) std::abort();
}

void Check(const falcon::ModelShape& shape, std::size_t mostEdges) {
  if (shape.Edges.size() > mostEdges) std::abort();
  for (const falcon::ModelEdge& edge : shape.Edges) {
    if (!std::isfinite(edge.From.X + edge.From.Y + edge.From.Z + edge.To.X + edge.To.Y + edge.To.Z)) std::abort();
  }
}

constexpr std::size_t MaxContent = 1 << 16;

/// What a file tells of its size costs no time here.
std::string ExpandALittle(falcon::BmlPacking packing, std::string_view packed, std::size_t size) {
  if (size > MaxContent) throw base::RuntimeFailure("it is large");
  return falcon::SystemBmlExpander()(packing, packed, size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const falcon::DataFile file{"models", std::string(reinterpret_cast<const char*>(data), size)};
  fuzz::Try([&] {
    const falcon::ModelDirectory directory = falcon::ReadModelDirectory(file);
    for (const falcon::DirectoryModel& model : directory.Models) {
      Check(model.Box);
      for (const falcon::DetailReference& detail : model.Details) {
        if (detail.Number >= directory.Places.size()) std::abort();
      }
    }
  });
  fuzz::Try([&] {
    const std::vector<falcon::ModelPoint> dynamic(3);
    // No more than its bytes can tell once.
    Check(falcon::ReadClassicShape(file, dynamic), size / 4 + dynamic.size());
  });
  // A strip has three lines for each corner of two bytes.
  fuzz::Try([&] { Check(falcon::ReadDxShape(file), size * 3 / 2); });
  fuzz::Try([&] { Check(falcon::ReadBmlShape(file, {}), size / 2); });
  fuzz::Try([&] { Check(falcon::ReadBmlShape(file, ExpandALittle), MaxContent / 2); });
  fuzz::Try([&] {
    const falcon::ParentFile parent = falcon::ReadParentFile(file);
    Check(parent.Box);
    if (!std::isfinite(parent.Radius)) std::abort();
  });
  return 0;
}
