#include "falcon/class_table.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "falcon/class_table_layout.h"

namespace kestrel::falcon {
namespace {

constexpr std::size_t SmallestStride = 60, LargestStride = 256;

/// The records of a table and how many there are.
struct Records {
  std::string_view Bytes;
  std::size_t Count = 0;
};

std::optional<Records> Divided(std::string_view bytes, std::int64_t count) {
  if (count < 1 || bytes.empty() || bytes.size() % static_cast<std::uint64_t>(count) != 0) return std::nullopt;
  return Records{bytes, static_cast<std::size_t>(count)};
}

/// The count has 16 bits and stands before the records, behind them where the first one is 0, or has 32 bits.
std::optional<Records> FindRecords(std::string_view bytes) {
  if (bytes.size() < 4) return std::nullopt;
  const std::int16_t count = base::BinaryReader(bytes).I16();
  if (count == 0) {
    const auto atEnd =
        Divided(bytes.substr(2, bytes.size() - 4), base::BinaryReader(bytes.substr(bytes.size() - 2)).I16());
    if (atEnd) return atEnd;
  }
  const auto usual = Divided(bytes.substr(2), count);
  return usual ? usual : Divided(bytes.substr(4), base::BinaryReader(bytes).U32());
}

/// Why there are no records to be found.
std::string WhyNotDivided(std::string_view bytes) {
  if (bytes.size() < 2) return "it is empty";
  const std::int16_t count = base::BinaryReader(bytes).I16();
  if (count < 1) return "it tells of no records";
  const std::size_t whole = (bytes.size() - 2) / UsualClassTable.Stride;
  if (whole < static_cast<std::size_t>(count)) {
    return "record " + Told(whole) + " of " + Told(static_cast<std::uint64_t>(count)) + " is cut";
  }
  return "it goes on behind its last record";
}

EntityClass ReadClass(std::string_view record, const ClassTableLayout& layout) {
  EntityClass thing;
  base::BinaryReader info(record.substr(layout.Info));
  thing.Domain = info.U8();
  thing.Class = info.U8();
  thing.Type = info.U8();
  thing.SubType = info.U8();
  thing.Specific = info.U8();
  thing.Owner = info.U8();
  base::BinaryReader models(record.substr(layout.Models()));
  for (std::int16_t& model : thing.Models) model = models.I16();
  thing.Data = static_cast<DataKind>(record[layout.Data]);
  thing.DataIndex = base::BinaryReader(record.substr(layout.DataIndex)).I16();
  return thing;
}

}  // namespace

std::vector<EntityClass> ReadClassTable(const DataFile& file) {
  const std::optional<Records> records = FindRecords(file.Bytes);
  if (!records) RefuseFile(file.Name, WhyNotDivided(file.Bytes));
  const std::size_t stride = records->Bytes.size() / records->Count;
  std::optional<ClassTableLayout> layout;
  if (stride == UsualClassTable.Stride) {
    layout = UsualClassTable;
  } else if (stride >= SmallestStride && stride <= LargestStride) {
    layout = FindClassTableLayout(records->Bytes, stride);
  }
  if (!layout) RefuseFile(file.Name, "nothing in its records of " + Told(stride) + " bytes tells where a class stands");
  std::vector<EntityClass> classes;
  classes.reserve(records->Count);
  for (std::size_t n = 0; n < records->Count; ++n) {
    classes.push_back(ReadClass(records->Bytes.substr(n * stride, stride), *layout));
  }
  return classes;
}

}  // namespace kestrel::falcon
