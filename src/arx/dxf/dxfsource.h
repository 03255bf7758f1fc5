#pragma once

#include "arx/db/dxftags.h"

#include <filesystem>
#include <string>
#include <string_view>

/// Where the bytes of a drawing come from. They can be read again from the start.
class DxfSource {
public:
  virtual ~DxfSource() = default;
  /// Puts up to `room` bytes at `to`. @return their number, 0 at the end Raises DxfError when the file cannot
  /// be read.
  virtual std::size_t read(char* to, std::size_t room) = 0;
  virtual void restart() = 0;
  /// Number of bytes, 0 when it is not known.
  [[nodiscard]] virtual std::size_t size() const { return 0; }
};

/// A text in memory, which must outlive the source.
class DxfMemorySource : public DxfSource {
public:
  explicit DxfMemorySource(std::string_view text) : m_text(text) {}
  std::size_t read(char* to, std::size_t room) override;
  void restart() override { m_at = 0; }

private:
  std::string_view m_text;
  std::size_t m_at = 0;
};

/// A file, read piece by piece: the drawing's text is never in memory as a whole.
class DxfFileSource : public DxfSource {
public:
  explicit DxfFileSource(const std::filesystem::path& path);
  ~DxfFileSource() override;
  DxfFileSource(const DxfFileSource&) = delete;
  DxfFileSource& operator=(const DxfFileSource&) = delete;
  [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
  std::size_t read(char* to, std::size_t room) override;
  void restart() override;
  [[nodiscard]] std::size_t size() const override;

private:
  int m_descriptor = -1;
};

/// Text of a code page (`$DWGCODEPAGE`, "ANSI_1252") to UTF-8. A byte that the page does not hold, and any
/// page that is not known, is read as Windows-1252.
std::string dxfFromCodePage(std::string_view bytes, const std::string& codePage);
/// The same for text that should be UTF-8: sequences that are not well formed are read as Windows-1252 bytes.
std::string dxfRepairUtf8(std::string_view bytes);
/// The converter's name of a code page, empty when it is not known.
std::string dxfCodePageName(std::string_view codePage);
