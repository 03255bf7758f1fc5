#pragma once

#include "base/uncopyable.h"
#include "core/veltora_serializer.h"

#include <cstddef>
#include <string_view>

namespace veltora {

/// A stream that keeps nothing of what is written but a number: another one as soon as an item differs. Reads
/// fail.
class VELTORA_API EmpreinteSerializer : public VeltoraSerializer, private Uncopyable {
public:
  [[nodiscard]] std::size_t empreinte() const { return m_empreinte; }

  int rewind() override { return 0; }
  int peekMark() override { return -1; }
  int testMark(int) override { return 0; }
  int writeMark(int mark) override { return writeInt(mark); }
  int writeAcString(const AcString& text) override;
  int writeObjectId(const AcDbObjectId& id) override;
  int writeShort(const short& value) override { return meler(value); }
  int writeByte(const unsigned char& value) override { return meler(value); }
  int writeChar(const char& value) override { return meler(value); }
  int writeDouble(const double& value) override;
  int writeBytes(const void* bytes, int length) override;
  int writeInt(const int& value) override { return meler(value); }
  int writeString(const CString& text) override { return writeAcString(text); }
  int writeEnum(const int& value) override { return meler(value); }
  int readAcString(AcString&) override { return 0; }
  int readObjectId(AcDbObjectId&) override { return 0; }
  int readByte(unsigned char&) override { return 0; }
  int readChar(char&) override { return 0; }
  int readDouble(double&) override { return 0; }
  int readBytes(void*, int) override { return 0; }
  int readInt(int&) override { return 0; }
  int readString(CString&) override { return 0; }
  int readShort(short&) override { return 0; }
  int readEnum(int&) override { return 0; }

private:
  /// FNV-1a, word by word; the high half is folded down, as the product carries upwards only.
  template <class Value>
  int meler(Value value) {
    m_empreinte = (m_empreinte ^ static_cast<std::size_t>(value)) * 1099511628211U;
    m_empreinte ^= m_empreinte >> 32U;
    return 1;
  }
  std::size_t m_empreinte = 14695981039346656037U;
};

}  // namespace veltora
