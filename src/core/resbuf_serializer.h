#pragma once

#include "arx/db/resbuf.h"
#include "base/uncopyable.h"
#include "core/veltora_serializer.h"

#include <functional>
#include <utility>

namespace veltora {

/// A chain of typed values with its head, tail and reading place. Owns the items and releases them.
class VELTORA_API chaineResbuf : private Uncopyable {
public:
  chaineResbuf() = default;
  /// Takes a chain over; null for an empty one.
  explicit chaineResbuf(resbuf* chaine);
  /// A chain that is only written: its items go to `puits` by the thousand and are released, so that millions
  /// of them need no memory. The last ones go with `verser`.
  explicit chaineResbuf(std::function<void(const resbuf&)> puits) : m_puits(std::move(puits)) {}
  ~chaineResbuf() { acutRelRb(tete); }
  /// Appends one item, which this owns from then on.
  void ajouter(resbuf* element);
  /// Hands over what the chain holds and empties it; for a chain with a `puits`.
  void verser();

  resbuf* tete = nullptr;
  resbuf* queue = nullptr;
  resbuf* curseur = nullptr;

private:
  std::function<void(const resbuf&)> m_puits;
  int m_nombre = 0;  // items since the last handing over
};

/// Stream over a chain of typed values, the form kept in drawings. Writes append at the tail; a read takes
/// the item at the cursor and moves on only when it succeeds.
class VELTORA_API ResbufSerializer : public VeltoraSerializer, private Uncopyable {
public:
  /// The chain belongs to the caller and outlives the serializer.
  explicit ResbufSerializer(chaineResbuf* chaine) : m_chaine(chaine) {}

  int rewind() override;
  int peekMark() override;
  int testMark(int mark) override;
  int writeMark(int mark) override;
  int writeAcString(const AcString& text) override;
  /// A null id, and one that has no entity name, is written as the integer -9999999.
  int writeObjectId(const AcDbObjectId& id) override;
  int writeShort(const short& value) override;
  int writeByte(const unsigned char& value) override;
  int writeChar(const char& value) override;
  int writeDouble(const double& value) override;
  /// The length, then chunks of at most 127 bytes.
  int writeBytes(const void* bytes, int length) override;
  int writeInt(const int& value) override;
  int writeString(const CString& text) override;
  int writeEnum(const int& value) override;
  int readAcString(AcString& text) override;
  /// A reference to an entity that no longer exists gives the null id and succeeds.
  int readObjectId(AcDbObjectId& id) override;
  int readByte(unsigned char& value) override;
  int readChar(char& value) override;
  int readDouble(double& value) override;
  /// Chunks that do not add up to the length fail; `bytes` may then be filled in part.
  int readBytes(void* bytes, int length) override;
  int readInt(int& value) override;
  int readString(CString& text) override;
  int readShort(short& value) override;
  int readEnum(int& value) override;

private:
  [[nodiscard]] const resbuf* suivant(int code) const;
  void avancer();
  int ecrireEntier(int code, int value);
  int ecrireCourt(int code, short value);
  int lireEntier(int code, int& value);

  chaineResbuf* m_chaine;
};

}  // namespace veltora
