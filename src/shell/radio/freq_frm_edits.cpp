// What the buttons, keys and marks of the panel change.

#include <QLineEdit>
#include <QTimer>

#include "core/tell.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/guard.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"
#include "shell/radio/edit_freq_frm.h"
#include "shell/radio/freq_frm.h"
#include "shell/radio/freq_rows.h"
#include "ui_freq_frm.h"

namespace kestrel::shell {
namespace {

using base::Changed;
using radio::FreqMove;
using radio::FreqTab;

QString Trimmed(const std::string& text) { return FromBytes(base::Trim(text)); }

/// The keys of a list after its record `key` has moved.
KeyedTree::KeyNow After(QChar letter, const std::string& key, std::size_t count, FreqMove move) {
  const std::size_t from = radio::ReadFreqKey(key).Index;
  const std::size_t targets[] = {1, from - 1, from + 1, count};
  return [letter, from, to = targets[static_cast<std::size_t>(move)]](const QString& before) {
    return Renumbered(before, letter, from, to);
  };
}

}  // namespace

void FreqFrm::ShowEdited(const radio::Reselect& select, const KeyedTree::KeyNow& now) {
  if (!select) return;
  Build(Tab(), FromBytes(*select), false, now);
  if (Tab() == FreqTab::Airports) UpdateTreeviewCheckBoxes();
  ShowRefused({});
  ShowEnabled();
}

void FreqFrm::Undo(UndoStep<radio::FrequencyHistory> step) {
  const radio::Moved moved = (Steps().*step)(Tables());
  if (!moved.Done) return;
  ShowTab(static_cast<int>(moved.Tab));
  ShowEdited(moved.Select);
  if (moved.Tab == FreqTab::Airports) program.Shown.Refresh(Changed::Map);
}

void FreqFrm::EditChannel(const std::string& key) {
  const std::string* channel = radio::ChannelOf(Tables(), key);
  if (channel == nullptr) return;
  EditFreqFrm dialog(program, parentWidget());
  dialog.Populate(EditFreqFrm::Channel, false, Trimmed(*channel), {});
  if (RunDialog(dialog, modal) != QDialog::Accepted) return;
  ShowEdited(radio::SetChannel(Tables(), Steps(), key, dialog.Value()));
}

void FreqFrm::LoadBMS(const std::string&) {
  if (!core::IsSure(program, "All your custom channels will be replaced by BMS default channels. Are you sure?",
                    "Confirm")) {
    return;
  }
  radio::TakeDefaults(Tables(), Steps(), program.State.DefaultFrequencies);
  ShowEdited("");
}

void FreqFrm::AddFolder(const std::string& key) { ShowEdited(radio::AddFolder(Tables(), Steps(), key)); }

void FreqFrm::EditFolder(const std::string& key) {
  form->TreeView3->setFocus();
  form->TreeView3->edit(TreeOf(FreqTab::CustomFreqs).Find(FromBytes(key)));
}

void FreqFrm::DeleteFolder(const std::string& key) {
  const std::string question = radio::DeleteFolderQuestion(Tables(), key);
  if (!question.empty() && !core::IsSure(program, question, "Folder delete...")) return;
  const radio::Reselect select = radio::DeleteFolder(Tables(), Steps(), key);
  // Its button may be disabled now; the keyboard is not to go on to the next one.
  form->TreeView3->setFocus();
  const std::size_t gone = radio::ReadFreqKey(key).Index;
  ShowEdited(select, [gone](const QString& before) { return Renumbered(before, u'C', gone, 0); });
}

void FreqFrm::AddFreq(const std::string& key) {
  EditFreqFrm dialog(program, parentWidget());
  dialog.Populate(EditFreqFrm::Entry, true, {}, {});
  if (RunDialog(dialog, modal) != QDialog::Accepted) return;
  ShowEdited(radio::AddFreq(Tables(), Steps(), key, {dialog.Description(), dialog.Value()}));
}

void FreqFrm::EditFreq(const std::string& key) {
  const radio::FreqEntry* entry = radio::EntryOf(Tables(), key);
  if (entry == nullptr) return;
  EditFreqFrm dialog(program, parentWidget());
  dialog.Populate(EditFreqFrm::Entry, false, Trimmed(entry->Value), Trimmed(entry->Description));
  if (RunDialog(dialog, modal) != QDialog::Accepted) return;
  ShowEdited(radio::SetEntry(Tables(), Steps(), key, {dialog.Description(), dialog.Value()}));
}

void FreqFrm::DeleteFreq(const std::string& key) {
  const radio::Reselect select = radio::DeleteFreq(Tables(), Steps(), key);
  form->TreeView3->setFocus();
  ShowEdited(select);
}

template <FreqMove move>
void FreqFrm::MoveFreq(const std::string& key) {
  const radio::Reselect select = radio::MoveFreq(Tables(), Steps(), key, move);
  const bool folder = radio::ReadFreqKey(key).Record == radio::FreqRecord::Folder;
  ShowEdited(select, folder ? After(u'C', key, Tables().FreqFolders.UpperBound(), move) : KeyedTree::KeyNow());
}

void FreqFrm::MoveToFolder(const std::string& key, bool down) {
  if (!Can(On::Entry, key) || !Can(On::FolderOrEntry, key)) return;
  const std::size_t folder = radio::ReadFreqKey(key).Index;
  ShowEdited(radio::DropFreq(Tables(), Steps(), key, radio::FolderKey(down ? folder + 1 : folder - 1)));
}

template <FreqMove move>
void FreqFrm::MoveAirfield(const std::string& key) {
  const radio::Reselect select = radio::MoveAirfield(Tables(), Steps(), key, move);
  if (!select) return;
  ShowEdited(select, After(u'A', key, Tables().Airfields.UpperBound(), move));
  // The order of drawing has changed.
  program.Shown.Refresh(Changed::Map);
}

bool FreqFrm::Check(const QString& key, bool on) {
  bool done = false;
  Guarded(program.Log, "NodeCheck", [&] {
    marked = true;
    done = radio::CheckNode(Tables(), Steps(), ToBytes(key), on);
    const bool team = radio::ReadFreqKey(ToBytes(key)).Record == radio::FreqRecord::Team;
    if (team) TreeOf(FreqTab::Airports).Refresh(RowsOf(Nodes(FreqTab::Airports), Wanted(FreqTab::Airports)).Rows);
    UpdateTreeviewCheckBoxes();
    program.Shown.Refresh(Changed::Map);
  });
  return done;
}

void FreqFrm::SelectAll(radio::SelectAllBox box, bool on) {
  radio::SelectAll(Tables(), Steps(), box, on);
  TreeOf(FreqTab::Airports).Refresh(RowsOf(Nodes(FreqTab::Airports), Wanted(FreqTab::Airports)).Rows);
  UpdateTreeviewCheckBoxes();
  program.Shown.Refresh(Changed::Map);
}

bool FreqFrm::Rename(const QString& key, const QString& text) {
  bool done = false;
  Guarded(program.Log, "TreeView3", [&] {
    const QString refused = UnheldSentence(UnheldCharacters(text));
    ShowRefused(refused);
    if (refused.isEmpty()) {
      done = radio::RenameFolder(Tables(), Steps(), ToBytes(key), ToBytes(text));
    } else {
      EditAgain(key, text);
    }
  });
  return done;
}

void FreqFrm::EditAgain(const QString& key, const QString& text) {
  // Once the editor that gave the text is gone.
  QTimer::singleShot(0, this, [this, key, text] {
    const KeyedTree& tree = TreeOf(FreqTab::CustomFreqs);
    if (!isActiveWindow() || tree.Selected() != key) return;
    form->TreeView3->setFocus();
    const QModelIndex at = tree.Find(key);
    form->TreeView3->edit(at);
    if (auto* editor = qobject_cast<QLineEdit*>(form->TreeView3->indexWidget(at))) editor->setText(text);
  });
}

void FreqFrm::ShowRefused(const QString& sentence) {
  QLabel& refused = *form->lblRefused;
  if (refused.text() == sentence && refused.isHidden() == sentence.isEmpty()) return;
  refused.setText(sentence);
  refused.setVisible(!sentence.isEmpty());
  // As wide as the tree is, however many lines that takes.
  refused.setMinimumHeight(sentence.isEmpty() ? 0 : refused.heightForWidth(form->trees->width()));
  FitBody();
}

template void FreqFrm::MoveFreq<FreqMove::Top>(const std::string&);
template void FreqFrm::MoveFreq<FreqMove::Up>(const std::string&);
template void FreqFrm::MoveFreq<FreqMove::Down>(const std::string&);
template void FreqFrm::MoveFreq<FreqMove::Bottom>(const std::string&);
template void FreqFrm::MoveAirfield<FreqMove::Top>(const std::string&);
template void FreqFrm::MoveAirfield<FreqMove::Up>(const std::string&);
template void FreqFrm::MoveAirfield<FreqMove::Down>(const std::string&);
template void FreqFrm::MoveAirfield<FreqMove::Bottom>(const std::string&);

}  // namespace kestrel::shell
