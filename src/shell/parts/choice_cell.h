#pragma once

class QTreeView;

namespace kestrel::shell {

/// Shows the cells of `column` as combo boxes where the data of `choicesRole`, a QStringList, holds two texts or more.
/// A click or F2 opens the box; what is chosen is given to the model by Qt::EditRole, as its number from 0.
void ShowChoices(QTreeView& view, int column, int choicesRole);

}  // namespace kestrel::shell
