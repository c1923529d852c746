#pragma once

#include <QString>

class QWidget;

// Foreign text (of the server, of files, of the system) is shown as it is written: the toolkit would take a text that
// looks like markup for such, and open the files that it names.
namespace kestrel::shell {

/// Makes a label show its text as it is written, unless it has been told to do otherwise; a tool tip and the text of a
/// message box are labels too. The style calls it for every widget before its text is laid out, so that there is
/// nothing to do where foreign text is shown.
void ShowAsWritten(QWidget& widget);

/// `text` for where "&" marks an access key and a tab a shortcut: menu entries, buttons, headings of groups, tabs.
QString AsCaption(QString text);

/// `text` for the title of a window, in which "[*]" marks a change.
QString AsTitle(QString text);

}  // namespace kestrel::shell
