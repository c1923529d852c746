#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <system_error>

#include "base/failure.h"

namespace kestrel::base {

/// A file that cannot be opened, with the system's reason.
class OpenFailure : public RuntimeFailure {
 public:
  OpenFailure(const std::string& text, std::errc reason) : RuntimeFailure(text), Reason(reason) {}
  std::errc Reason;
};

/// A file read and written at any position of 64 bits, without a buffer of its own: what a write returns from is with
/// the system and outlives the process. For what is too large or too lasting to be held whole.
class PositionedFile {
 public:
  enum class Mode {
    Read,     ///< an existing file, to be read
    Replace,  ///< for reading and writing, made when missing, emptied otherwise
    Create,   ///< for reading and writing, never over an existing file
  };

  PositionedFile() = default;
  /// OpenFailure, naming the file and the reason, when it cannot be opened or is no file.
  PositionedFile(const std::filesystem::path& path, Mode mode);
  ~PositionedFile();
  PositionedFile(PositionedFile&& other) noexcept;
  PositionedFile& operator=(PositionedFile&& other) noexcept;

  bool IsOpen() const { return descriptor >= 0; }
  const std::filesystem::path& Path() const { return name; }

  /// Bytes in the file at this moment. RuntimeFailure when the system does not tell.
  std::uint64_t Size() const;
  /// Fills `into` from `position` on; how many bytes there were. RuntimeFailure when the file cannot be read.
  std::size_t Read(std::uint64_t position, std::span<std::byte> into) const;
  /// Writes all bytes at `position`. RuntimeFailure, naming the reason, when it cannot; some may have been written
  /// then.
  void Write(std::uint64_t position, std::span<const std::byte> bytes);
  /// Writes the pieces one behind the other, from where they lie, as Write does. The spans are used up.
  void Write(std::uint64_t position, std::span<std::span<const std::byte>> pieces);
  /// Cuts the file to its first `size` bytes. RuntimeFailure when that fails.
  void CutTo(std::uint64_t size);
  /// Brings what was written to the disk. RuntimeFailure when that fails.
  void Flush();
  /// RuntimeFailure when the system tells of a failed write only now; the file is closed in any case.
  void Close();

 private:
  int descriptor = -1;
  std::filesystem::path name;
};

}  // namespace kestrel::base
