#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "falcon-info/context.h"
#include "falcon/theater_definition.h"

// Where things stand that a file needs to be understood: the installation around it and its theater.
namespace kestrel::falconinfo {

/// An installation, as far as files tell of it.
struct Installation {
  std::filesystem::path Folder;  ///< what the person installed
  std::filesystem::path Root;    ///< what paths of theaters are relative to
  std::filesystem::path List;    ///< of theaters; empty when there is none
};

/// The installation whose folder this is: one with a list of theaters in Data\Terrdata\theaterdefinition, the same
/// without "Data", one with Terrdata and a list at its top, or one with Terrdata alone.
std::optional<Installation> InstallationAt(const std::filesystem::path& folder);
/// The installation around a file or folder, itself included: the nearest with a list where BMS has it, else the
/// nearest at all.
std::optional<Installation> InstallationAround(const std::filesystem::path& path);

/// A theater and the file that defines it.
struct Theater {
  std::filesystem::path File;
  falcon::TheaterDefinition Definition;
};

/// The file that an entry of a list of theaters, or a folder of a definition, names below `root`. RuntimeFailure when
/// it leads elsewhere.
std::filesystem::path Below(const std::filesystem::path& root, std::string_view name);

/// The theaters of an installation whose definitions can be read: those of its list, then other ones in the same
/// folder as the definitions.
std::vector<std::filesystem::path> DefinitionsOf(const Installation& installation);
/// RuntimeFailure when the file cannot be read.
Theater ReadTheater(const std::filesystem::path& file);

/// A folder of a theater: what its definition tells of it, and what that comes to.
struct TheaterDir {
  std::string Told;              ///< empty: nothing
  std::string Used;              ///< the default theater's when nothing is told; may be empty
  std::filesystem::path Folder;  ///< empty when it leads out of the installation
};
TheaterDir DirOf(const Installation& installation, const Theater& theater, std::string falcon::TheaterDefinition::*dir);

/// Folders that a file is read with.
struct Companions {
  std::filesystem::path Campaign;
  std::filesystem::path Strings;
  std::vector<std::filesystem::path> Objects;  ///< of each table the first one counts that has it
};

/// Of a theater.
Companions CompanionsOf(const Context& context, const Installation& installation, const Theater& theater);
/// Of a file in a folder of campaigns or of objects: what was asked for, the file's own folder, the theater of that
/// folder, the default theater.
Companions CompanionsOf(const Context& context, const std::filesystem::path& file);

/// The files of a folder by their names; none when it cannot be read.
std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& folder);
/// The end of a file's name from its last point on, in lower case: ".cam".
std::string EndingOf(const std::filesystem::path& file);
/// A file's name in lower case, as bytes of the code page.
std::string LowerNameOf(const std::filesystem::path& file);
bool IsFolder(const std::filesystem::path& path);

}  // namespace kestrel::falconinfo
