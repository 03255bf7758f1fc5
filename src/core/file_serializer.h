#pragma once

#include "base/uncopyable.h"
#include "core/veltora_serializer.h"

#include <cstdio>
#include <string>

namespace veltora {

/// Tagged binary file: a one-byte tag in front of every typed item, then its little-endian bytes without
/// padding. Marks and single bytes have no tag; a block ("b") has no length of its own.
///
/// | tag | payload |
/// |---|---|
/// | i | 32-bit integer |
/// | d | 64-bit float |
/// | s | 16-bit integer |
/// | b | the bytes of a block; 8 bytes for an object id |
/// | c | a text: an "i" item with its length n, then a "b" item of n + 1 bytes (ANSI code page, a last 0) |
/// | e | an "i" item |
class VELTORA_API FileSerializer : public VeltoraSerializer, private Uncopyable {
public:
  /// A file that cannot be opened is told by `estOuvert`; every operation then fails.
  /// @param chemin  path in the ANSI code page
  /// @param ecriture  true: for reading and writing, made or emptied; false: for reading only
  FileSerializer(const std::string& chemin, bool ecriture);
  ~FileSerializer() override;
  [[nodiscard]] bool estOuvert() const { return m_ouvert; }

  int rewind() override;
  int peekMark() override;
  int testMark(int mark) override;
  int writeMark(int mark) override;
  /// @throws std::range_error, with nothing written, for a text longer than 1023 characters
  int writeAcString(const AcString& text) override;
  /// The id's value in this run: another run reads a stale one. File formats store no ids.
  int writeObjectId(const AcDbObjectId& id) override;
  int writeShort(const short& value) override;
  int writeByte(const unsigned char& value) override;
  int writeChar(const char& value) override;
  int writeDouble(const double& value) override;
  int writeBytes(const void* bytes, int length) override;
  int writeInt(const int& value) override;
  /// @throws std::range_error as `writeAcString`
  int writeString(const CString& text) override;
  int writeEnum(const int& value) override;
  /// Texts of up to 255 characters; a longer one fails. A text that holds a zero byte is read up to it, and
  /// fails.
  int readAcString(AcString& text) override;
  int readObjectId(AcDbObjectId& id) override;
  int readByte(unsigned char& value) override;
  int readChar(char& value) override;
  int readDouble(double& value) override;
  int readBytes(void* bytes, int length) override;
  int readInt(int& value) override;
  int readString(CString& text) override;
  int readShort(short& value) override;
  int readEnum(int& value) override;

private:
  /// Raw bytes at the present place; all of them or failure.
  bool lireBrut(void* bytes, std::size_t length);
  bool ecrireBrut(const void* bytes, std::size_t length);
  /// The tag, then the bytes; a failure goes back to where the item began.
  int lireElement(char tag, void* bytes, std::size_t length);
  int ecrireElement(char tag, const void* bytes, std::size_t length);
  void passerEn(char sens);
  [[nodiscard]] long position();
  void revenir(long position);

  std::FILE* m_fichier = nullptr;
  bool m_possede = false;  ///< closes the file at the end
  bool m_ouvert = false;
  char m_sens = 0;  ///< 'r' or 'w': a stream must be repositioned between reading and writing
};

}  // namespace veltora
