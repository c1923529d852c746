#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::core {

/// Packs files into a zip as their bytes come, one after another: nothing is held but a window of them. The bytes of
/// the zip are told in their order.
class ZipWriter {
 public:
  using Sink = std::function<void(std::span<const std::byte>)>;

  /// `name`: of the first file within the zip, UTF-8, at most 65,535 bytes. Tells the zip's first bytes.
  ZipWriter(std::string_view name, Sink sink);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  /// RuntimeFailure beyond 4 GB, which the form cannot count.
  void Write(std::string_view bytes);
  /// Ends the present file and begins the next. RuntimeFailure beyond 65,534 files, which the form cannot count.
  void Next(std::string_view name);
  /// The last bytes of the zip. Nothing may be written afterwards.
  void Finish();

 private:
  struct Packer;
  struct Packed {
    std::string Name;
    std::uint64_t At = 0;     ///< of the zip, where it begins
    std::uint64_t Bytes = 0;  ///< of it in the zip
    std::uint64_t Plain = 0;  ///< of it
    std::uint32_t Sum = 0;    ///< of them
  };

  void Begin(std::string_view name);
  void End();
  void Pack(std::string_view bytes, bool last);
  void Tell(std::string_view bytes);

  Sink tell;
  std::unique_ptr<Packer> packer;
  std::uint64_t told = 0;     ///< bytes of the zip
  std::vector<Packed> files;  ///< the last is being packed
};

}  // namespace kestrel::core
