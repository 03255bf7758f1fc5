#include "core/resbuf_serializer.h"

#include "arx/db/dbobject.h"

#include <algorithm>
#include <cstring>

namespace veltora {
namespace {

// Group codes of the stored items.
constexpr int kEntier = 90;  ///< also marks, truth values, and the null reference
constexpr int kReel = 40;
constexpr int kCourt = 70;
constexpr int kOctet = 280;
constexpr int kTexte = 300;
constexpr int kEnumeration = 91;
constexpr int kLongueurBloc = 92;
constexpr int kMorceau = 310;
constexpr int kReference = 330;

constexpr int kReferenceNulle = -9999999;
constexpr int kTailleMorceau = 127;
constexpr int kParVersement = 4096;

}  // namespace

chaineResbuf::chaineResbuf(resbuf* chaine) : tete(chaine), queue(chaine), curseur(chaine) {
  while (queue && queue->rbnext) queue = queue->rbnext;
}

void chaineResbuf::ajouter(resbuf* element) {
  if (queue)
    queue->rbnext = element;
  else
    tete = curseur = element;
  queue = element;
  if (m_puits && ++m_nombre >= kParVersement) verser();
}

void chaineResbuf::verser() {
  if (tete) m_puits(*tete);
  acutRelRb(tete);
  tete = queue = curseur = nullptr;
  m_nombre = 0;
}

const resbuf* ResbufSerializer::suivant(int code) const {
  const resbuf* element = m_chaine->curseur;
  return element && element->restype == code ? element : nullptr;
}

void ResbufSerializer::avancer() { m_chaine->curseur = m_chaine->curseur->rbnext; }

int ResbufSerializer::rewind() {
  m_chaine->curseur = m_chaine->tete;
  return 1;
}

int ResbufSerializer::peekMark() {
  const resbuf* element = suivant(kEntier);
  return element ? element->resval.rlong : -1;
}

// Deliberate (testmark-curseur): a mark that matches is not consumed, other than in a file.
int ResbufSerializer::testMark(int mark) {
  const resbuf* element = suivant(kEntier);
  return element && element->resval.rlong == mark ? 1 : 0;
}

int ResbufSerializer::ecrireEntier(int code, int value) {
  resbuf* element = acutNewRb(code);
  if (!element) return 0;
  element->resval.rlong = value;
  m_chaine->ajouter(element);
  return 1;
}

int ResbufSerializer::ecrireCourt(int code, short value) {
  resbuf* element = acutNewRb(code);
  if (!element) return 0;
  element->resval.rint = value;
  m_chaine->ajouter(element);
  return 1;
}

int ResbufSerializer::lireEntier(int code, int& value) {
  const resbuf* element = suivant(code);
  if (!element) return 0;
  value = element->resval.rlong;
  avancer();
  return 1;
}

int ResbufSerializer::writeMark(int mark) { return ecrireEntier(kEntier, mark); }
int ResbufSerializer::writeInt(const int& value) { return ecrireEntier(kEntier, value); }
int ResbufSerializer::writeEnum(const int& value) { return ecrireEntier(kEnumeration, value); }
int ResbufSerializer::writeShort(const short& value) { return ecrireCourt(kCourt, value); }
int ResbufSerializer::writeByte(const unsigned char& value) { return ecrireCourt(kOctet, value); }
int ResbufSerializer::writeChar(const char& value) {
  return ecrireCourt(kOctet, static_cast<short>(static_cast<signed char>(value)));
}

int ResbufSerializer::writeDouble(const double& value) {
  resbuf* element = acutNewRb(kReel);
  if (!element) return 0;
  element->resval.rreal = value;
  m_chaine->ajouter(element);
  return 1;
}

int ResbufSerializer::writeAcString(const AcString& text) { return writeString(text); }

int ResbufSerializer::writeString(const CString& text) {
  resbuf* element = acutBuildList(kTexte, text.c_str(), RTNONE);
  if (!element) return 0;
  m_chaine->ajouter(element);
  return 1;
}

int ResbufSerializer::writeBytes(const void* bytes, int length) {
  if (length < 0 || !ecrireEntier(kLongueurBloc, length)) return 0;
  const char* source = static_cast<const char*>(bytes);
  for (int fait = 0; fait < length; fait += kTailleMorceau) {
    const int taille = std::min(kTailleMorceau, length - fait);
    // The chain copies the chunk; the host's type has no const.
    const ads_binary morceau{static_cast<short>(taille), const_cast<char*>(source + fait)};
    resbuf* element = acutBuildList(kMorceau, morceau, RTNONE);
    if (!element) return 0;
    m_chaine->ajouter(element);
  }
  return 1;
}

int ResbufSerializer::writeObjectId(const AcDbObjectId& id) {
  ads_name nom = {0, 0};
  if (id.isNull() || acdbGetAdsName(nom, id) != Acad::eOk) return ecrireEntier(kEntier, kReferenceNulle);
  resbuf* element = acutNewRb(kReference);
  if (!element) return 0;
  element->resval.rlname[0] = nom[0];
  element->resval.rlname[1] = nom[1];
  m_chaine->ajouter(element);
  return 1;
}

int ResbufSerializer::readInt(int& value) { return lireEntier(kEntier, value); }
int ResbufSerializer::readEnum(int& value) { return lireEntier(kEnumeration, value); }

int ResbufSerializer::readShort(short& value) {
  const resbuf* element = suivant(kCourt);
  if (!element) return 0;
  value = element->resval.rint;
  avancer();
  return 1;
}

int ResbufSerializer::readByte(unsigned char& value) {
  const resbuf* element = suivant(kOctet);
  if (!element) return 0;
  value = static_cast<unsigned char>(element->resval.rint);
  avancer();
  return 1;
}

int ResbufSerializer::readChar(char& value) {
  unsigned char lu = 0;
  if (!readByte(lu)) return 0;
  value = static_cast<char>(lu);
  return 1;
}

int ResbufSerializer::readDouble(double& value) {
  const resbuf* element = suivant(kReel);
  if (!element) return 0;
  value = element->resval.rreal;
  avancer();
  return 1;
}

int ResbufSerializer::readAcString(AcString& text) { return readString(text); }

int ResbufSerializer::readString(CString& text) {
  const resbuf* element = suivant(kTexte);
  if (!element) return 0;
  text = element->resval.rstring ? element->resval.rstring : L"";
  avancer();
  return 1;
}

int ResbufSerializer::readBytes(void* bytes, int length) {
  const resbuf* element = suivant(kLongueurBloc);
  if (!element || length < 0 || element->resval.rlong != length) return 0;
  char* cible = static_cast<char*>(bytes);
  int fait = 0;
  while (fait < length) {
    element = element->rbnext;
    if (!element || element->restype != kMorceau) return 0;
    const ads_binary& morceau = element->resval.rbinary;
    if (morceau.clen <= 0 || morceau.clen > length - fait) return 0;
    std::memcpy(cible + fait, morceau.buf, static_cast<std::size_t>(morceau.clen));
    fait += morceau.clen;
  }
  m_chaine->curseur = element->rbnext;
  return 1;
}

int ResbufSerializer::readObjectId(AcDbObjectId& id) {
  if (const resbuf* nul = suivant(kEntier)) {
    if (nul->resval.rlong != kReferenceNulle) return 0;
    id.setNull();
    avancer();
    return 1;
  }
  const resbuf* element = suivant(kReference);
  if (!element) return 0;
  AcDbObjectId lu;
  const bool trouve = acdbGetObjectId(lu, element->resval.rlname) == Acad::eOk && lu.isLive();
  id = trouve ? lu : AcDbObjectId::kNull;
  avancer();
  return 1;
}

}  // namespace veltora
