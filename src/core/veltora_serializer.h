#pragma once

#include "arx/adesk.h"
#include "arx/db/dbid.h"

namespace veltora {

/// Typed stream of the system's stored data. There is no schema: a reader calls the same operations in the
/// same order as the writer did, every read verifies the type of the next item, and the caller stops at the
/// first that fails.
///
/// All operations return non-zero on success and 0 on failure unless told otherwise. A failed read leaves its
/// target unchanged and the stream where it was, so that another read may be tried there. The order of the
/// virtual operations is part of the interface: `rewind` is slot 0, `readEnum` slot 25.
class VELTORA_API VeltoraSerializer {
public:
  /// Back to the start of the stream.
  virtual int rewind() = 0;
  /// The next mark without consuming it; -1 when there is none.
  virtual int peekMark() = 0;
  /// Whether the next mark equals `mark`. A `FileSerializer` consumes a mark that matches, a
  /// `ResbufSerializer` never.
  virtual int testMark(int mark) = 0;
  virtual int writeMark(int mark) = 0;
  virtual int writeAcString(const AcString& text) = 0;
  virtual int writeBool(bool value);  ///< 0 or 1 through `writeInt`
  virtual int writeObjectId(const AcDbObjectId& id) = 0;
  virtual int writeShort(const short& value) = 0;
  virtual int writeByte(const unsigned char& value) = 0;
  virtual int writeChar(const char& value) = 0;
  virtual int writeDouble(const double& value) = 0;
  /// @param length in bytes; a negative one fails
  virtual int writeBytes(const void* bytes, int length) = 0;
  virtual int writeInt(const int& value) = 0;
  virtual int writeString(const CString& text) = 0;
  virtual int writeEnum(const int& value) = 0;
  virtual int readAcString(AcString& text) = 0;  ///< what `writeAcString` or `writeString` wrote
  /// Through `readInt`; stores value != 0 and succeeds only when the value was 0 or 1.
  virtual int readBool(bool& value);
  virtual int readObjectId(AcDbObjectId& id) = 0;
  virtual int readByte(unsigned char& value) = 0;
  virtual int readChar(char& value) = 0;
  virtual int readDouble(double& value) = 0;
  /// @param length the exact length that was written, in bytes
  virtual int readBytes(void* bytes, int length) = 0;
  virtual int readInt(int& value) = 0;
  virtual int readString(CString& text) = 0;  ///< what `writeAcString` or `writeString` wrote
  virtual int readShort(short& value) = 0;
  virtual int readEnum(int& value) = 0;
  virtual ~VeltoraSerializer() = default;  ///< last: the slots before it are told

protected:
  VeltoraSerializer() = default;
};

}  // namespace veltora
