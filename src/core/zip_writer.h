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

/// Packs one file into a zip as its bytes come: nothing is held but a window of them. The bytes of the zip are told in
/// their order.
class ZipWriter {
 public:
  using Sink = std::function<void(std::span<const std::byte>)>;

  /// `name`: of the file within the zip, UTF-8, at most 65,535 bytes. Tells the zip's first bytes.
  ZipWriter(std::string_view name, Sink sink);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  /// RuntimeFailure beyond 4 GB, which the form cannot count.
  void Write(std::string_view bytes);
  /// The last bytes of the zip. Nothing may be written afterwards.
  void Finish();

 private:
  struct Packer;

  void Pack(std::string_view bytes, bool last);
  void Tell(std::string_view bytes);

  std::string fileName;
  Sink tell;
  std::unique_ptr<Packer> packer;
  std::uint64_t told = 0;    ///< bytes of the zip
  std::uint64_t packed = 0;  ///< bytes of the file in it
  std::uint64_t plain = 0;   ///< bytes of the file
  std::uint32_t sum = 0;     ///< of them
};

}  // namespace kestrel::core
