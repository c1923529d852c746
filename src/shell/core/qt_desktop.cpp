#include "shell/core/qt_desktop.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QColorDialog>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QUrl>
#ifdef Q_OS_WIN
#include <windows.h>
// Needs the former.
#include <shellapi.h>
#endif

#include <vector>

#include "shell/core/font_dialog.h"
#include "shell/parts/colour_button.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

QMessageBox::Icon IconOf(base::MessageIcon icon) {
  switch (icon) {
    case base::MessageIcon::Information:
      return QMessageBox::Information;
    case base::MessageIcon::Question:
      return QMessageBox::Question;
    case base::MessageIcon::Exclamation:
      return QMessageBox::Warning;
    case base::MessageIcon::Critical:
      return QMessageBox::Critical;
    case base::MessageIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

struct BoxButton {
  QMessageBox::StandardButton Standard;
  const char* Name;
  base::Answer Meaning;
};
constexpr BoxButton OkButton{QMessageBox::Ok, "cmdOk", base::Answer::Ok};
constexpr BoxButton YesButton{QMessageBox::Yes, "cmdYes", base::Answer::Yes};
constexpr BoxButton NoButton{QMessageBox::No, "cmdNo", base::Answer::No};
constexpr BoxButton CancelButton{QMessageBox::Cancel, "cmdCancel", base::Answer::Cancel};

/// The last one is what closing the box means.
std::vector<BoxButton> ButtonsOf(base::MessageButtons buttons) {
  switch (buttons) {
    case base::MessageButtons::YesNo:
      return {YesButton, NoButton};
    case base::MessageButtons::YesNoCancel:
      return {YesButton, NoButton, CancelButton};
    case base::MessageButtons::Ok:
      break;
  }
  return {OkButton};
}

/// The box is as wide as its text, and its title may be longer: it is often bold, and an icon and three buttons stand
/// beside it.
void MakeRoomForTitle(QMessageBox& box) {
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  QFont bold = box.font();
  bold.setBold(true);
  const int room = QFontMetrics(bold).horizontalAdvance(box.windowTitle()) +
                   4 * box.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &box);
  const int widest = box.screen()->availableGeometry().width();
  grid->addItem(new QSpacerItem(qMin(room, widest), 0), grid->rowCount(), 0, 1, grid->columnCount());
}

/// "Images |*.bmp;*.jpg" as the toolkit's "Images (*.bmp *.jpg)". A label that names its pattern itself stays as it is.
QStringList NameFilters(std::string_view filter) {
  const QStringList parts = FromBytes(filter).split(u'|');
  QStringList filters;
  for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
    QString patterns = parts[at + 1];
    patterns.replace(u';', u' ');
    const QString named = u'(' + patterns + u')';
    const QString label = parts[at].trimmed();
    filters << (label.endsWith(named) ? label : label + u' ' + named);
  }
  return filters;
}

/// "dat" of "Areas (*.dat *.txt)", nothing of "All (*)" or "All (*.*)".
QString ExtensionOf(const QString& nameFilter) {
  static const QRegularExpression first(QStringLiteral("\\(\\*\\.([^*?\\s)]+)[^()]*\\)$"));
  return first.match(nameFilter).captured(1);
}

}  // namespace

base::Answer QtDesktop::Ask(std::string_view title, std::string_view text, base::MessageIcon icon,
                            base::MessageButtons buttons, base::Answer enter) {
  return AskWith(nullptr, title, text, icon, buttons, enter);
}

base::Answer QtDesktop::AskUnlessTold(std::string_view title, std::string_view text, bool& never) {
  auto* box = new QCheckBox(QStringLiteral("&Do not ask again"));
  box->setObjectName(QStringLiteral("chkNever"));
  // The box of the message owns it for as long as that stands.
  QObject::connect(box, &QCheckBox::toggled, box, [&never](bool on) { never = on; });
  never = false;
  return AskWith(box, title, text, base::MessageIcon::Question, base::MessageButtons::YesNo, base::Answer::No);
}

base::Answer QtDesktop::AskWith(QCheckBox* check, std::string_view title, std::string_view text, base::MessageIcon icon,
                                base::MessageButtons buttons, base::Answer enter) {
  QMessageBox box(owner);
  box.setObjectName(QStringLiteral("MessageBox"));
  box.setWindowTitle(AsTitle(FromBytes(title)));
  box.setTextFormat(Qt::PlainText);
  box.setText(FromBytes(text));
  box.setIcon(IconOf(icon));
  if (check != nullptr) box.setCheckBox(check);
  const std::vector<BoxButton> offered = ButtonsOf(buttons);
  for (const BoxButton& each : offered) {
    box.addButton(each.Standard)->setObjectName(QString::fromLatin1(each.Name));
    if (each.Meaning == enter) box.setDefaultButton(each.Standard);
  }
  box.setEscapeButton(offered.back().Standard);
  MakeRoomForTitle(box);
  const int chosen = RunDialog(box, modal);
  for (const BoxButton& each : offered) {
    if (chosen == each.Standard) return each.Meaning;
  }
  return offered.back().Meaning;
}

void QtDesktop::MessageSoon(std::string_view title, std::string_view text, base::MessageIcon icon) {
  // Without a frame there is nobody left to tell.
  if (owner.isNull()) return;
  QTimer::singleShot(
      0, owner, [this, title = std::string(title), text = std::string(text), icon] { Message(title, text, icon); });
}

void QtDesktop::LetEventsRun() { QCoreApplication::processEvents(); }

void QtDesktop::Open(const std::string& file, const std::string& argument, const std::string& folder) {
  if (argument.empty()) {
    // A file by its whole path, which the code page may not hold, or an address.
    const QString path = QString::fromStdString(file);
    if (QDir::isAbsolutePath(path) && QFileInfo::exists(path)) {
      QDesktopServices::openUrl(QUrl::fromLocalFile(path));
      return;
    }
    const QString name = FromBytes(file);
    if (!name.isEmpty()) QDesktopServices::openUrl(QUrl::fromUserInput(name, FromBytes(folder)));
    return;
  }
  // Paths are UTF-8 everywhere in Qt; a name that is no file is silently not started.
  const QString program = QString::fromStdString(file);
  if (!QFileInfo::exists(program)) return;
#ifdef Q_OS_WIN
  // The verb asks for elevation where the program wants it.
  const auto wide = [](const QString& text) { return QDir::toNativeSeparators(text).toStdWString(); };
  ShellExecuteW(nullptr, L"open", wide(program).c_str(), FromBytes(argument).toStdWString().c_str(),
                wide(QString::fromStdString(folder)).c_str(), SW_SHOWNORMAL);
#else
  QProcess::startDetached(program, {FromBytes(argument)}, QString::fromStdString(folder));
#endif
}

std::optional<std::string> QtDesktop::OpenFile(std::string_view title, std::string_view filter,
                                               const std::string& folder, std::string_view defaultName) {
  return ChooseFile({title, filter, folder, defaultName}, [](QFileDialog& dialog) {
    dialog.setObjectName(QStringLiteral("OpenFile"));
    dialog.setFileMode(QFileDialog::ExistingFile);
  });
}

std::optional<std::string> QtDesktop::SaveFile(std::string_view title, std::string_view filter,
                                               const std::string& folder, std::string_view defaultName) {
  return ChooseFile({title, filter, folder, defaultName}, [](QFileDialog& dialog) {
    dialog.setObjectName(QStringLiteral("SaveFile"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    const auto follow = [&dialog](const QString& chosen) { dialog.setDefaultSuffix(ExtensionOf(chosen)); };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
    follow(dialog.selectedNameFilter());
  });
}

std::optional<std::string> QtDesktop::ChooseFile(const FileQuestion& question,
                                                 const std::function<void(QFileDialog&)>& setUp) {
  const QString kind = FromBytes(question.Title);
  // The toolkit would begin where any file was last chosen: a picture among the tapes.
  const QString begin =
      question.Folder.empty() ? lastFolders.value(kind, QDir::homePath()) : QString::fromStdString(question.Folder);
  QFileDialog dialog(owner, kind, begin);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setNameFilters(NameFilters(question.Filter));
  setUp(dialog);
  if (!question.DefaultName.empty()) dialog.selectFile(FromBytes(question.DefaultName));
  if (RunDialog(dialog, modal) != QDialog::Accepted) return std::nullopt;
  const QString chosen = dialog.selectedFiles().value(0);
  lastFolders.insert(kind, QFileInfo(chosen).path());
  return chosen.toStdString();
}

std::optional<base::Colour> QtDesktop::PickColour(base::Colour present) {
  QColorDialog dialog(ToQColor(present), owner);
  dialog.setObjectName(QStringLiteral("PickColour"));
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if (RunDialog(dialog, modal) != QDialog::Accepted) return std::nullopt;
  return FromQColor(dialog.selectedColor());
}

std::optional<base::FontRecord> QtDesktop::PickFont(const base::FontRecord& present, bool withColour) {
  FontDialog dialog(present, withColour, owner);
  if (RunDialog(dialog, modal) != QDialog::Accepted) return std::nullopt;
  return dialog.Chosen();
}

}  // namespace kestrel::shell
