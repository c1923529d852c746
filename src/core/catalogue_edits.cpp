#include "core/catalogue_edits.h"

#include <exception>
#include <filesystem>
#include <utility>

#include "base/code_page.h"
#include "base/files.h"
#include "core/bullseye_steps.h"
#include "core/settings.h"
#include "core/tell.h"
#include "core/theater_switch.h"
#include "falcon/campaign_bullseye.h"

namespace kestrel::core {
namespace {

/// The name of a file without its folder, as bytes of the code page.
std::string NameOf(const std::filesystem::path& file) { return base::FromUnicode(file.filename().u16string()); }

std::string Quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }

/// Stores the held picture as `theater`'s.
void SaveHeldPicture(const Station& station, theaters::Theater& theater, const base::Picture& held) {
  const std::filesystem::path path = TheaterPath(station, theater.Pic);
  if (path == TheatersFolder(station)) {
    throw base::RuntimeFailure("its settings file " + theater.TheaterFile +
                               " names no picture (PIC) that could be written");
  }
  base::WriteWholeFile(path, base::EncodeGif(held));
  theater.PicSize = held.Width;
}

/// The theater as the edit makes it, its picture already on the disk.
theaters::Theater EditedTheater(const Station& station, const TheaterEdit& edit) {
  theaters::Theater theater;
  if (edit.Index == 0) {
    theater = theaters::NewTheater(edit.Details, edit.Default.X, edit.Default.Y, TheatersFolder(station));
  } else {
    theater = station.Catalogue.Theaters[edit.Index];
    theaters::ApplyDetails(theater, edit.Details);
  }
  if (!edit.Held.Empty()) SaveHeldPicture(station, theater, edit.Held);
  return theater;
}

std::optional<std::string> Objection(const TheaterEdit& edit) {
  std::optional<std::string> objection = theaters::Objection(edit.Details, edit.Shown);
  return objection || edit.Index != 0 ? objection : theaters::Objection(edit.Default);
}

/// What `load` gives, or nothing after a box.
template <class Load>
std::optional<base::Picture> PictureOrBox(Program& program, Load load) {
  try {
    return load();
  } catch (const std::exception& failure) {
    program.Log.LogLine(failure.what());
    Tell(program, "Error loading image file.");
    return std::nullopt;
  }
}

}  // namespace

bool StoreTheater(Program& program, const TheaterEdit& edit) {
  if (const std::optional<std::string> objection = Objection(edit)) {
    Tell(program, *objection, "Error");
    return false;
  }
  theaters::Catalogue& catalogue = program.State.Catalogue;
  try {
    theaters::Theater theater = EditedTheater(program.State, edit);
    if (edit.Index == 0) {
      theaters::AppendTheater(catalogue, std::move(theater));
    } else {
      catalogue.Theaters[edit.Index] = std::move(theater);
    }
    return true;
  } catch (const std::exception& failure) {
    TellFailure(program, "The theater could not be stored: ", failure);
    return false;
  }
}

bool DeleteTheater(Program& program, std::size_t row) {
  const std::string title = "Theater delete...";
  theaters::Catalogue& catalogue = program.State.Catalogue;
  if (row == static_cast<std::size_t>(catalogue.CurrentTheater)) {
    Tell(program, "The Theater you selected is the currently active Theater. This Theater can't be deleted.", title);
    return false;
  }
  const std::string name = catalogue.Theaters[row].DisplayName;
  if (!IsSure(program, "Are you sure you want to delete the " + name + " Theater?", title)) return false;
  for (const std::string& file : theaters::RemoveTheater(catalogue, row, TheatersFolder(program.State))) {
    program.Log.LogLine("The file " + file + " of the deleted theater " + name + " could not be deleted");
  }
  // The files are gone: a station that is killed before the next save must not look for them at its start.
  SaveEverything(program);
  program.Shown.Refresh(base::Changed::NameMenus);
  return true;
}

std::optional<base::Picture> OpenStoredPicture(Program& program, const std::string& name) {
  return PictureOrBox(program, [&]() -> std::optional<base::Picture> {
    const std::filesystem::path path = TheaterPath(program.State, name);
    if (!base::FileExists(path)) return std::nullopt;
    return base::LoadPicture(path);
  });
}

std::optional<base::Picture> OpenMapImage(Program& program, const std::filesystem::path& file) {
  const auto square = program.State.Extras.PICTUREMARGIN ? base::FilledPicture : base::SquarePicture;
  return PictureOrBox(program, [&file, square] { return square(base::LoadPicture(file)); });
}

std::optional<theaters::Corner> OpenMapFile(Program& program, const std::filesystem::path& file) {
  try {
    return theaters::ReadTheaterMapCorner(base::ReadWholeFile(file, base::MaxTextFileBytes));
  } catch (const std::exception& failure) {
    TellFailure(program, "The corner cannot be read from " + Quoted(NameOf(file)) + ": ", failure);
    return std::nullopt;
  }
}

bool StoreBullseye(Program& program, std::size_t row, const theaters::Bullseye& bullseye,
                   const std::optional<theaters::Bullseye>& shown) {
  if (const std::optional<std::string> objection = theaters::Objection(bullseye, shown)) {
    Tell(program, *objection, "Error");
    return false;
  }
  theaters::Theater& theater = program.State.Catalogue.Current();
  const BullseyeStep before = PresentBullseye(program.State);
  try {
    if (row == 0) {
      theaters::AddBullseye(theater, bullseye);
    } else {
      theater.Bulls[row] = bullseye;
    }
  } catch (const std::exception& failure) {
    TellFailure(program, "The bullseye could not be stored: ", failure);
    return false;
  }
  KeepBullseye(program.State, before);
  program.Shown.Refresh(ReloadBulls(program.State) | base::Changed::NameMenus);
  return true;
}

bool DeleteBullseye(Program& program, std::size_t row) {
  const std::string title = "Bullseye delete...";
  theaters::Theater& theater = program.State.Catalogue.Current();
  if (row == static_cast<std::size_t>(theater.CurrentBull)) {
    Tell(program, "The Bullseye you selected is the currently active Bullseye. This Bullseye can't be deleted.", title);
    return false;
  }
  const std::string name = theater.Bulls[row].Name;
  if (!IsSure(program, "Are you sure you want to delete the " + name + " Bullseye?", title)) return false;
  theaters::RemoveBullseye(theater, row);
  ForgetBullseye(program.State, row);
  program.Shown.Refresh(base::Changed::NameMenus);
  return true;
}

bool AddCampaignBullseye(Program& program, const std::filesystem::path& file) {
  const std::string name = NameOf(file);
  try {
    const falcon::CampaignFile campaign(base::ReadWholeFile(file, falcon::MaxCampaignFileBytes));
    const falcon::CampaignBullseye place = falcon::ReadCampaignBullseye(campaign);
    return StoreBullseye(program, 0, {name, static_cast<double>(place.X), static_cast<double>(place.Y)});
  } catch (const std::exception& failure) {
    TellFailure(program, "The bullseye cannot be read from " + Quoted(name) + ": ", failure);
    return false;
  }
}

}  // namespace kestrel::core
