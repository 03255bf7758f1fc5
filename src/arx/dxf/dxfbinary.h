#pragma once

#include "arx/dxf/dxfsource.h"

/// The binary form of a drawing file as the text that it stands for: group codes of one byte (255 in front of
/// two more) as the first versions wrote them, or of two bytes; numbers in little-endian order, texts up to a
/// zero byte.
class DxfBinarySource : public DxfSource {
public:
  /// @param inner  starts with the mark of the binary form; outlives this
  explicit DxfBinarySource(DxfSource& inner) : m_inner(inner) {}
  /// Whether a source starts with the mark of the binary form; it is put back to its start.
  static bool isBinary(DxfSource& source);
  /// Raises DxfError for a group code whose size is not known. What ends within a group ends there.
  std::size_t read(char* to, std::size_t room) override;
  void restart() override;
  [[nodiscard]] std::size_t size() const override { return m_inner.size(); }

private:
  bool need(std::size_t count);
  Adesk::UInt64 integer(std::size_t bytes);
  bool group();
  bool code(int& value);
  bool value(int code);
  bool text(int code);
  bool chunk();
  bool real(int code);
  template <class Integer>
  bool whole(int code);

  DxfSource& m_inner;
  std::string m_in;  // bytes read, of which `m_at` are used
  std::size_t m_at = 0;
  std::size_t m_before = 0;  // bytes that were used and dropped
  bool m_marked = false;     // behind the mark
  bool m_wide = false;       // two-byte codes
  std::string m_out;
  std::size_t m_given = 0;
};
