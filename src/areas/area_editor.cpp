#include "areas/area_editor.h"

#include <array>
#include <utility>

#include "areas/area_drawing.h"
#include "areas/area_list.h"
#include "base/numbers.h"

namespace kestrel::areas {
namespace {

using base::Changed;

struct NumberField {
  EditorField Text;
  double Area::*Value;
  AreaType Panel;
};
constexpr std::array<NumberField, 7> NumberFields = {{
    {&EditorFields::Text3, &Area::X, AreaType::Circle},
    {&EditorFields::Text4, &Area::Y, AreaType::Circle},
    {&EditorFields::Text5, &Area::Radius, AreaType::Circle},
    {&EditorFields::Text8, &Area::X, AreaType::Icon},
    {&EditorFields::Text7, &Area::Y, AreaType::Icon},
    {&EditorFields::Text6, &Area::X, AreaType::Text},
    {&EditorFields::Text2, &Area::Y, AreaType::Text},
}};

void ShowNumber(AreaEditor& editor, const NumberField& field) {
  editor.Fields.*field.Text = base::FormatInvariant(editor.WorkArea.*field.Value, "0.00");
}

void ReadNumber(AreaEditor& editor, const NumberField& field) {
  editor.WorkArea.*field.Value = base::InvariantNumber(editor.Fields.*field.Text);
}

/// The group, or none when the index is out of range.
template <class Catalogue>
auto GroupAt(Catalogue& catalogue, std::int32_t index) -> decltype(&catalogue.AreaGroups[0]) {
  if (index < 1 || static_cast<std::size_t>(index) > catalogue.AreaGroups.UpperBound()) return nullptr;
  return &catalogue.AreaGroups[static_cast<std::size_t>(index)];
}

Area* AreaAt(AreaCatalogue& catalogue, std::int32_t groupIndex, std::int32_t areaIndex) {
  AreaGroup* group = GroupAt(catalogue, groupIndex);
  if (!group || areaIndex < 1 || static_cast<std::size_t>(areaIndex) > group->Areas.UpperBound()) return nullptr;
  return &group->Areas[static_cast<std::size_t>(areaIndex)];
}

/// A fresh editor for a new area; false when it is refused.
bool StartNew(AreaEditor& editor, const AreaCatalogue& catalogue, std::int32_t groupIndex) {
  const AreaGroup* group = GroupAt(catalogue, groupIndex);
  if (editor.Open || !group) return false;
  editor = {.Open = true, .AreaEditMode = true, .Title = "New Area in " + group->Name, .GroupIndex = groupIndex};
  editor.Fields.Text13 = editor.WorkArea.Name;
  return true;
}

Changed End(AreaEditor& editor) {
  editor.Open = editor.AreaEditMode = false;
  return editor.FromIconMenu ? Changed::Map : Changed::Map | Changed::Areas;
}

}  // namespace

std::vector<std::size_t> HighLights(const AreaEditor& editor) {
  std::vector<std::size_t> found;
  if (!editor.Open || editor.WorkArea.Type != AreaType::Region) return found;
  const std::size_t count = editor.WorkArea.Lines.UpperBound();
  if (!editor.BulkDelete) {
    if (editor.Selected >= 1 && editor.Selected <= count) found.push_back(editor.Selected);
    return found;
  }
  for (std::size_t index = 1; index <= count && index <= editor.Checked.size(); ++index) {
    if (editor.Checked[index - 1]) found.push_back(index);
  }
  return found;
}

Changed OpenNew(AreaEditor& editor, const AreaCatalogue& catalogue, std::int32_t groupIndex, TextMeasure& texts) {
  if (!StartNew(editor, catalogue, groupIndex)) return Changed::Nothing;
  return ChooseType(editor, AreaType::Region, texts);
}

Changed PopulateFromNewIconMenu(AreaEditor& editor, const AreaCatalogue& catalogue, std::int32_t groupIndex, double x,
                                double y, TextMeasure& texts) {
  if (!StartNew(editor, catalogue, groupIndex)) return Changed::Nothing;
  editor.FromIconMenu = true;
  editor.WorkArea.X = x;
  editor.WorkArea.Y = y;
  return ChooseType(editor, AreaType::Icon, texts);
}

Changed OpenExisting(AreaEditor& editor, AreaCatalogue& catalogue, std::int32_t groupIndex, std::int32_t areaIndex,
                     TextMeasure& texts) {
  Area* stored = AreaAt(catalogue, groupIndex, areaIndex);
  if (editor.Open || !stored) return Changed::Nothing;
  editor = {.Open = true,
            .AreaEditMode = true,
            .Title = ShapeToText(stored->Type) + " in " + GroupAt(catalogue, groupIndex)->Name,
            .WorkArea = *stored,
            .IsNew = false,
            .GroupIndex = groupIndex,
            .AreaIndex = areaIndex};
  editor.WorkArea.Editing = false;
  stored->Editing = true;
  editor.RowsOfOpening = editor.WorkArea.Points.UpperBound();
  editor.Fields.Text13 = editor.WorkArea.Name;
  editor.Fields.Text1 = editor.WorkArea.Text;
  for (const NumberField& field : NumberFields) ShowNumber(editor, field);
  return ChooseType(editor, editor.WorkArea.Type, texts) | Changed::Map;
}

Changed ChooseType(AreaEditor& editor, AreaType type, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  SetBulkDelete(editor, false);
  editor.WorkArea.Type = type;
  for (const NumberField& field : NumberFields) {
    if (field.Panel == type) ShowNumber(editor, field);
  }
  return WorkAreaChanged(editor, texts);
}

Changed FieldEdited(AreaEditor& editor, EditorField field, std::string text, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  editor.Fields.*field = std::move(text);
  if (field == &EditorFields::Text13) return Changed::Nothing;
  if (field == &EditorFields::Text1) editor.WorkArea.Text = editor.Fields.Text1;
  for (const NumberField& number : NumberFields) {
    if (number.Text == field) ReadNumber(editor, number);
  }
  return WorkAreaChanged(editor, texts);
}

void FieldLeft(AreaEditor& editor, EditorField field) {
  for (const NumberField& number : NumberFields) {
    if (editor.Open && number.Text == field) ShowNumber(editor, number);
  }
}

Changed ChooseIcon(AreaEditor& editor, std::int16_t icon, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  editor.WorkArea.Icon = icon;
  return WorkAreaChanged(editor, texts);
}

Changed SetColor(AreaEditor& editor, base::Colour color, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  editor.WorkArea.Color = color;
  return WorkAreaChanged(editor, texts);
}

Changed SetTextFont(AreaEditor& editor, AreaFont font, base::Colour color, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  editor.WorkArea.TextFont = std::move(font);
  return SetColor(editor, color, texts);
}

Changed SetAltFont(AreaEditor& editor, AreaFont font, base::Colour color, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  editor.WorkArea.AltFont = std::move(font);
  return SetColor(editor, color, texts);
}

Changed ShowElevation(AreaEditor& editor, bool on, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  editor.WorkArea.ShowWaypointElevation = on ? On : Off;
  return WorkAreaChanged(editor, texts);
}

Changed Accept(AreaEditor& editor, AreaCatalogue& catalogue, AreaHistory& history, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  Area& work = editor.WorkArea;
  for (const NumberField& field : NumberFields) {
    // The radius of all types: a field that was never filled gives 0, this stands.
    if (field.Panel == work.Type || field.Value == &Area::Radius) ReadNumber(editor, field);
  }
  work.Name = editor.Fields.Text13;
  work.Visible = On;
  work.Text = editor.Fields.Text1;
  AreaBounds(work, texts);
  // Below 0 becomes what no catalogue has.
  const auto group = static_cast<std::size_t>(editor.GroupIndex);
  if (editor.IsNew) {
    AppendArea(catalogue, history, group, work);
  } else {
    ReplaceArea(catalogue, history, group, static_cast<std::size_t>(editor.AreaIndex), work);
  }
  return End(editor);
}

Changed Cancel(AreaEditor& editor, AreaCatalogue& catalogue) {
  if (!editor.Open) return Changed::Nothing;
  Area* stored = editor.IsNew ? nullptr : AreaAt(catalogue, editor.GroupIndex, editor.AreaIndex);
  if (stored) stored->Editing = false;
  return End(editor);
}

Changed WorkAreaChanged(AreaEditor& editor, TextMeasure& texts) {
  AreaBounds(editor.WorkArea, texts);
  return Changed::Plots;
}

void ShowPosition(AreaEditor& editor) {
  for (const NumberField& field : NumberFields) {
    if (field.Panel == editor.WorkArea.Type && field.Value != &Area::Radius) ShowNumber(editor, field);
  }
}

}  // namespace kestrel::areas
