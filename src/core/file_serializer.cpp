#include "core/file_serializer.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace veltora {
namespace {

constexpr std::size_t kTamponEcriture = 1024;  ///< longest text written, its terminator included
constexpr int kTamponLecture = 256;            ///< longest text read, its terminator included

/// The bytes of a number in the order of the file.
template <class T>
std::array<unsigned char, sizeof(T)> octets(T value) {
  auto bytes = std::bit_cast<std::array<unsigned char, sizeof(T)>>(value);
  if constexpr (std::endian::native == std::endian::big) std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

template <class T>
T nombre(std::array<unsigned char, sizeof(T)> bytes) {
  if constexpr (std::endian::native == std::endian::big) std::reverse(bytes.begin(), bytes.end());
  return std::bit_cast<T>(bytes);
}

}  // namespace

FileSerializer::FileSerializer(const std::string& chemin, bool ecriture) {
  const std::filesystem::path path(base::toUtf8(base::widen(chemin)));
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return;
  m_fichier = std::fopen(path.string().c_str(), ecriture ? "w+b" : "rb");
  m_ouvert = m_possede = m_fichier != nullptr;
}

FileSerializer::~FileSerializer() {
  if (m_possede) std::fclose(m_fichier);
}

void FileSerializer::passerEn(char sens) {
  if (m_sens != 0 && m_sens != sens) std::fseek(m_fichier, 0, SEEK_CUR);
  m_sens = sens;
}

long FileSerializer::position() { return m_ouvert ? std::ftell(m_fichier) : -1; }

void FileSerializer::revenir(long position) {
  if (m_ouvert && position >= 0) std::fseek(m_fichier, position, SEEK_SET);
}

bool FileSerializer::lireBrut(void* bytes, std::size_t length) {
  if (!m_ouvert) return false;
  passerEn('r');
  return length == 0 || std::fread(bytes, 1, length, m_fichier) == length;
}

bool FileSerializer::ecrireBrut(const void* bytes, std::size_t length) {
  if (!m_ouvert) return false;
  passerEn('w');
  return length == 0 || std::fwrite(bytes, 1, length, m_fichier) == length;
}

int FileSerializer::lireElement(char tag, void* bytes, std::size_t length) {
  const long debut = position();
  char lu = 0;
  if (lireBrut(&lu, 1) && lu == tag && lireBrut(bytes, length)) return 1;
  revenir(debut);
  return 0;
}

int FileSerializer::ecrireElement(char tag, const void* bytes, std::size_t length) {
  ecrireBrut(&tag, 1);  // the payload alone decides the result
  return ecrireBrut(bytes, length) ? 1 : 0;
}

int FileSerializer::rewind() {
  if (!m_ouvert) return 0;
  m_sens = 0;
  return std::fseek(m_fichier, 0, SEEK_SET) == 0 ? 1 : 0;
}

int FileSerializer::peekMark() {
  const long debut = position();
  std::array<unsigned char, 4> bytes{};
  const bool lu = lireBrut(bytes.data(), bytes.size());
  revenir(debut);
  return lu ? nombre<int>(bytes) : -1;
}

int FileSerializer::testMark(int mark) {
  const long debut = position();
  std::array<unsigned char, 4> bytes{};
  if (lireBrut(bytes.data(), bytes.size()) && nombre<int>(bytes) == mark) return 1;
  revenir(debut);
  return 0;
}

int FileSerializer::writeMark(int mark) { return ecrireBrut(octets(mark).data(), 4) ? 1 : 0; }

int FileSerializer::writeInt(const int& value) { return ecrireElement('i', octets(value).data(), 4); }

int FileSerializer::writeShort(const short& value) { return ecrireElement('s', octets(value).data(), 2); }

int FileSerializer::writeDouble(const double& value) { return ecrireElement('d', octets(value).data(), 8); }

int FileSerializer::writeByte(const unsigned char& value) { return ecrireBrut(&value, 1) ? 1 : 0; }

int FileSerializer::writeChar(const char& value) { return ecrireBrut(&value, 1) ? 1 : 0; }

int FileSerializer::writeBytes(const void* bytes, int length) {
  return length < 0 ? 0 : ecrireElement('b', bytes, static_cast<std::size_t>(length));
}

int FileSerializer::writeObjectId(const AcDbObjectId& id) {
  const auto value = static_cast<std::int64_t>(id.asOldId());
  return ecrireElement('b', octets(value).data(), 8);
}

int FileSerializer::writeEnum(const int& value) {
  const char tag = 'e';
  ecrireBrut(&tag, 1);
  return writeInt(value);
}

int FileSerializer::writeAcString(const AcString& text) { return writeString(text); }

int FileSerializer::writeString(const CString& text) {
  const std::string ansi = base::narrow(text.c_str());
  if (ansi.size() >= kTamponEcriture) throw std::range_error("texte trop long pour le fichier");
  const char tag = 'c';
  ecrireBrut(&tag, 1);
  const int length = static_cast<int>(ansi.size());
  return writeInt(length) && writeBytes(ansi.c_str(), length + 1) ? 1 : 0;
}

int FileSerializer::readInt(int& value) {
  std::array<unsigned char, 4> bytes{};
  if (!lireElement('i', bytes.data(), bytes.size())) return 0;
  value = nombre<int>(bytes);
  return 1;
}

int FileSerializer::readShort(short& value) {
  std::array<unsigned char, 2> bytes{};
  if (!lireElement('s', bytes.data(), bytes.size())) return 0;
  value = nombre<short>(bytes);
  return 1;
}

int FileSerializer::readDouble(double& value) {
  std::array<unsigned char, 8> bytes{};
  if (!lireElement('d', bytes.data(), bytes.size())) return 0;
  value = nombre<double>(bytes);
  return 1;
}

int FileSerializer::readByte(unsigned char& value) {
  const long debut = position();
  unsigned char lu = 0;
  if (!lireBrut(&lu, 1)) {
    revenir(debut);
    return 0;
  }
  value = lu;
  return 1;
}

int FileSerializer::readChar(char& value) {
  unsigned char lu = 0;
  if (!readByte(lu)) return 0;
  value = static_cast<char>(lu);
  return 1;
}

int FileSerializer::readBytes(void* bytes, int length) {
  if (length < 0) return 0;
  std::vector<char> lu(static_cast<std::size_t>(length));
  if (!lireElement('b', lu.data(), lu.size())) return 0;
  if (length > 0) std::memcpy(bytes, lu.data(), lu.size());
  return 1;
}

int FileSerializer::readObjectId(AcDbObjectId& id) {
  std::array<unsigned char, 8> bytes{};
  if (!lireElement('b', bytes.data(), bytes.size())) return 0;
  id.setFromOldId(static_cast<Adesk::IntDbId>(nombre<std::int64_t>(bytes)));
  return 1;
}

int FileSerializer::readEnum(int& value) {
  const long debut = position();
  char tag = 0;
  if (lireBrut(&tag, 1) && tag == 'e' && readInt(value)) return 1;
  revenir(debut);
  return 0;
}

int FileSerializer::readAcString(AcString& text) { return readString(text); }

int FileSerializer::readString(CString& text) {
  const long debut = position();
  char tag = 0;
  int length = 0;
  std::array<char, kTamponLecture + 1> tampon{};  // ends in a zero, whatever was read
  if (!lireBrut(&tag, 1) || tag != 'c' || !readInt(length) || length < 0 || length >= kTamponLecture ||
      !readBytes(tampon.data(), length + 1)) {
    revenir(debut);
    return 0;
  }
  // A zero inside makes the text shorter, a closing zero that is none makes it longer.
  text = base::widen(tampon.data());
  return static_cast<int>(text.size()) == length ? 1 : 0;
}

}  // namespace veltora
