#include "areas/area_drawing.h"

#include <algorithm>
#include <utility>

#include "base/numbers.h"

namespace kestrel::areas {
namespace {

using base::Changed;
using base::FormatInvariant;

/// Where the next segment would start at the end of the last one.
bool ChainMeetsLastLine(const AreaEditor& editor) {
  const base::Table<AreaLine>& lines = editor.WorkArea.Lines;
  if (lines.Empty()) return false;
  const AreaLine& last = lines[lines.UpperBound()];
  return last.X2 == editor.X1 && last.Y2 == editor.Y1;
}

void AddLine(AreaEditor& editor) {
  editor.WorkArea.Lines.Append({editor.X1, editor.Y1, editor.X2, editor.Y2});
  editor.Selected = editor.WorkArea.Lines.UpperBound();
  if (editor.BulkDelete) editor.Checked.resize(editor.Selected);
}

/// Takes out the selected element; false without one.
template <class T>
bool TakeSelected(base::Table<T>& table, std::size_t& selected) {
  if (selected < 1 || selected > table.UpperBound()) return false;
  table.Remove(selected);
  selected = std::min(selected, table.UpperBound());
  return true;
}

void KeepUnchecked(AreaEditor& editor) {
  base::Table<AreaLine> kept;
  for (std::size_t row = 1; row <= editor.WorkArea.Lines.UpperBound(); ++row) {
    const bool checked = row <= editor.Checked.size() && editor.Checked[row - 1];
    if (!checked) kept.Append(editor.WorkArea.Lines[row]);
  }
  editor.WorkArea.Lines = std::move(kept);
  editor.Checked.assign(editor.WorkArea.Lines.UpperBound(), false);
  editor.Selected = 0;
}

}  // namespace

std::string Prompt(const AreaEditor& editor) {
  if (editor.BulkDelete) return "";
  switch (editor.WorkArea.Type) {
    case AreaType::Region:
      if (editor.FirstPointAdded) return "First point added, click for second point...";
      return "Click on the map to add points...";
    case AreaType::Circle:
      return "Click on the map to define the center...";
    case AreaType::Icon:
      return "Click on the map to define the point...";
    case AreaType::Text:
      return "Click on the map to define the upper left point...";
    case AreaType::FlightPlan:
      return "Click on the map to add points...";
  }
  return "";
}

Changed MapClick(AreaEditor& editor, double px, double py, TextMeasure& texts) {
  if (!editor.Open || !editor.AreaEditMode) return Changed::Nothing;
  const bool region = editor.WorkArea.Type == AreaType::Region;
  if (region && !editor.FirstPointPending) {
    editor.X2 = px;
    editor.Y2 = py;
    editor.FirstPointPending = !editor.SingleClick;
    editor.FirstPointAdded = false;
    const Changed changed = GetXYFromMap(editor, texts);
    if (editor.SingleClick) {
      editor.X1 = px;
      editor.Y1 = py;
    }
    return changed;
  }
  editor.X1 = px;
  editor.Y1 = py;
  if (region) {
    editor.FirstPointPending = false;
    editor.FirstPointAdded = true;
    // Nothing is added yet, but the line to the pointer starts here.
    return Changed::Plots;
  }
  editor.Z = 0;
  editor.PointType = PointType::Nav;
  return GetXYFromMap(editor, texts);
}

Changed GetXYFromMap(AreaEditor& editor, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  switch (editor.WorkArea.Type) {
    case AreaType::Region:
      AddLine(editor);
      break;
    case AreaType::Circle:
    case AreaType::Icon:
    case AreaType::Text:
      editor.WorkArea.X = editor.X1;
      editor.WorkArea.Y = editor.Y1;
      ShowPosition(editor);
      break;
    case AreaType::FlightPlan:
      editor.WorkArea.Points.Append({editor.X1, editor.Y1, editor.Z, editor.PointType});
      editor.SelectedPoint = editor.WorkArea.Points.UpperBound();
      break;
  }
  return WorkAreaChanged(editor, texts);
}

void SetSingleClick(AreaEditor& editor, bool on) {
  editor.SingleClick = on;
  if (on) return;
  editor.FirstPointPending = true;
  editor.FirstPointAdded = false;
}

Changed TakeBack(AreaEditor& editor, TextMeasure& texts) {
  if (!editor.Open || !editor.AreaEditMode) return Changed::Nothing;
  if (editor.WorkArea.Type == AreaType::FlightPlan && !editor.WorkArea.Points.Empty()) {
    editor.SelectedPoint = editor.WorkArea.Points.UpperBound();
    TakeSelected(editor.WorkArea.Points, editor.SelectedPoint);
    editor.RowsOfOpening = std::min(editor.RowsOfOpening, editor.WorkArea.Points.UpperBound());
    return WorkAreaChanged(editor, texts);
  }
  if (editor.WorkArea.Type != AreaType::Region) return Changed::Nothing;
  base::Table<AreaLine>& lines = editor.WorkArea.Lines;
  const bool drawing = !editor.FirstPointPending;
  if (drawing && (editor.FirstPointAdded || !ChainMeetsLastLine(editor))) {
    editor.FirstPointPending = true;
    editor.FirstPointAdded = false;
    return Changed::Plots;
  }
  if (lines.Empty()) return Changed::Nothing;
  const AreaLine last = lines[lines.UpperBound()];
  editor.Selected = lines.UpperBound();
  TakeSelected(lines, editor.Selected);
  if (drawing) {
    editor.X1 = last.X1;
    editor.Y1 = last.Y1;
    editor.FirstPointAdded = !ChainMeetsLastLine(editor);
  }
  return WorkAreaChanged(editor, texts);
}

std::array<std::string, 5> LineRow(const AreaEditor& editor, std::size_t row) {
  if (row < 1 || row > editor.WorkArea.Lines.UpperBound()) return {};
  const AreaLine& line = editor.WorkArea.Lines[row];
  return {std::to_string(row), FormatInvariant(line.X1, "0.00"), FormatInvariant(line.Y1, "0.00"),
          FormatInvariant(line.X2, "0.00"), FormatInvariant(line.Y2, "0.00")};
}

std::array<std::string, 5> PointRow(const AreaEditor& editor, std::size_t row) {
  if (row < 1 || row > editor.WorkArea.Points.UpperBound()) return {};
  const FlightPlanPoint& point = editor.WorkArea.Points[row];
  return {std::to_string(row), FormatInvariant(point.X, "0.00"), FormatInvariant(point.Y, "0.00"),
          FormatInvariant(point.Z, row <= editor.RowsOfOpening ? "0.00" : "0"), PointTypeToText(point.Type)};
}

std::string PointTypeToText(PointType type) {
  switch (type) {
    case PointType::Nav:
      return "Nav Point";
    case PointType::IP:
      return "IP Point";
    case PointType::Target:
      return "Target Point";
  }
  return "";
}

Changed SelectLine(AreaEditor& editor, std::size_t row) {
  editor.Selected = row <= editor.WorkArea.Lines.UpperBound() ? row : 0;
  return editor.Open ? Changed::Plots : Changed::Nothing;
}

Changed SelectPoint(AreaEditor& editor, std::size_t row) {
  editor.SelectedPoint = row <= editor.WorkArea.Points.UpperBound() ? row : 0;
  return Changed::Nothing;
}

Changed PointDetails(AreaEditor& editor, std::size_t index, const AreaLine& line, TextMeasure& texts) {
  if (!editor.Open || index > editor.WorkArea.Lines.UpperBound()) return Changed::Nothing;
  if (index != 0) {
    editor.WorkArea.Lines[index] = line;
    return WorkAreaChanged(editor, texts);
  }
  editor.X1 = line.X1;
  editor.Y1 = line.Y1;
  editor.X2 = line.X2;
  editor.Y2 = line.Y2;
  return GetXYFromMap(editor, texts);
}

Changed FPPointDetails(AreaEditor& editor, std::size_t index, const FlightPlanPoint& point, TextMeasure& texts) {
  if (!editor.Open || index > editor.WorkArea.Points.UpperBound()) return Changed::Nothing;
  if (index != 0) {
    editor.WorkArea.Points[index] = point;
    editor.RowsOfOpening = 0;
    return WorkAreaChanged(editor, texts);
  }
  editor.X1 = point.X;
  editor.Y1 = point.Y;
  editor.Z = point.Z;
  editor.PointType = point.Type;
  return GetXYFromMap(editor, texts);
}

Changed DeleteLine(AreaEditor& editor, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  if (editor.BulkDelete) {
    KeepUnchecked(editor);
  } else if (!TakeSelected(editor.WorkArea.Lines, editor.Selected)) {
    return Changed::Nothing;
  }
  return WorkAreaChanged(editor, texts);
}

Changed DeletePoint(AreaEditor& editor, TextMeasure& texts) {
  if (!editor.Open || !TakeSelected(editor.WorkArea.Points, editor.SelectedPoint)) return Changed::Nothing;
  editor.RowsOfOpening = 0;
  return WorkAreaChanged(editor, texts);
}

Changed ResetLines(AreaEditor& editor, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  editor.WorkArea.Lines.Clear();
  editor.Checked.clear();
  editor.Selected = 0;
  return WorkAreaChanged(editor, texts);
}

Changed ResetPoints(AreaEditor& editor, TextMeasure& texts) {
  if (!editor.Open) return Changed::Nothing;
  editor.WorkArea.Points.Clear();
  editor.SelectedPoint = editor.RowsOfOpening = 0;
  return WorkAreaChanged(editor, texts);
}

Changed SetBulkDelete(AreaEditor& editor, bool on) {
  if (!editor.Open) return Changed::Nothing;
  editor.BulkDelete = on;
  editor.AreaEditMode = !on;
  editor.Checked.assign(on ? editor.WorkArea.Lines.UpperBound() : 0, false);
  return Changed::Plots;
}

Changed CheckLine(AreaEditor& editor, std::size_t row, bool on) {
  if (!editor.Open || row < 1 || row > editor.Checked.size()) return Changed::Nothing;
  editor.Checked[row - 1] = on;
  return Changed::Plots;
}

Changed CheckAllLines(AreaEditor& editor, bool on) {
  if (!editor.Open) return Changed::Nothing;
  editor.Checked.assign(editor.Checked.size(), on);
  return Changed::Plots;
}

}  // namespace kestrel::areas
