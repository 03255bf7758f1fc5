#include "points/infos_topo.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"
#include "core/extension_record.h"
#include "core/resbuf_serializer.h"

#include <bit>
#include <functional>
#include <memory>
#include <set>
#include <string_view>

namespace veltora {

namespace {

constexpr const ACHAR* kCle = L"VELTORA4_VARN_DATA";
constexpr const ACHAR* kCleIllisibles = L"VELTORA4_VARN_DATA_ILLISIBLES";
constexpr int kCouleurCalqueZero = 1;  ///< of a layer "0" that has to be made

int s_sauvegarder = 0;

AcDbDatabase* dessinOuCourant(AcDbDatabase* db) {
  return db ? db : acdbHostApplicationServices()->workingDatabase();
}

/// Layer "0" of a drawing, made when it is missing; null id without a drawing.
AcDbObjectId calqueZero(AcDbDatabase* db) {
  AcDbObjectId id;
  AcDbLayerTable* calques = nullptr;
  if (!db || db->getLayerTable(calques) != Acad::eOk) return id;
  const bool present = calques->getIdAt(L"0", id) == Acad::eOk;
  calques->close();
  if (present || db->getLayerTable(calques, AcDb::kForWrite) != Acad::eOk) return id;
  auto calque = std::make_unique<AcDbLayerTableRecord>();
  calque->setName(L"0");
  calque->setColor(AcCmColor(kCouleurCalqueZero));
  if (calques->add(id, calque.get()) == Acad::eOk) calque.release()->close();
  calques->close();
  return id;
}

/// Drawings whose stored points could not be read.
std::set<const AcDbDatabase*>& illisibles() {
  static std::set<const AcDbDatabase*> dessins;
  return dessins;
}

/// What could not be read goes under another key before something takes its place.
void garderIllisibles(AcDbDictionary& dictionnaire, const AcDbDatabase* db) {
  if (illisibles().erase(db) == 0) return;
  AcDbXrecord* ancienne = nullptr;
  if (dictionnaire.getAt(kCle, ancienne) != Acad::eOk) return;
  auto copie = std::make_unique<AcDbXrecord>();
  copie->setTags(ancienne->tags());
  ancienne->close();
  AcDbObjectId id;
  if (dictionnaire.setAt(kCleIllisibles, copie.get(), id) == Acad::eOk) copie.release()->close();
}

/// @return false when the drawing refuses
bool ecrireChaine(AcDbObjectId calqueId, const chaineResbuf& chaine) {
  const AcDbObjectPointer<AcDbLayerTableRecord> calque(calqueId, AcDb::kForWrite);
  if (calque.openStatus() != Acad::eOk) return false;
  if (const AcDbObjectPointer<AcDbDictionary> dictionnaire(calque->extensionDictionary(), AcDb::kForWrite);
      dictionnaire.openStatus() == Acad::eOk)
    garderIllisibles(*dictionnaire, calqueId.database());
  return storeRecord(*calque, kCle, chaine);
}

/// The stored chain, owned by the caller; null when nothing is stored.
resbuf* lireChaine(AcDbDatabase* db) {
  const AcDbObjectPointer<AcDbLayerTableRecord> calque(calqueZero(db));
  return calque.openStatus() == Acad::eOk ? storedRecord(*calque, kCle) : nullptr;
}

/// The value of one item as a number.
std::size_t valeurDe(const resbuf& element) {
  const auto& valeur = element.resval;
  switch (acutRbKind(element.restype)) {
    case RbKind::kReal:
      return std::bit_cast<std::size_t>(valeur.rreal);
    case RbKind::kPoint:
      return std::bit_cast<std::size_t>(valeur.rpoint[0]) ^ std::bit_cast<std::size_t>(valeur.rpoint[1]) * 3 ^
             std::bit_cast<std::size_t>(valeur.rpoint[2]) * 5;
    case RbKind::kShort:
      return static_cast<std::size_t>(valeur.rint);
    case RbKind::kLong:
      return static_cast<std::size_t>(valeur.rlong);
    case RbKind::kInt64:
      return static_cast<std::size_t>(valeur.mnInt64);
    case RbKind::kText:
      return valeur.rstring ? std::hash<std::wstring_view>()(valeur.rstring) : 0;
    case RbKind::kName:
      return static_cast<std::size_t>(valeur.rlname[0]);
    case RbKind::kBinary:
      return std::hash<std::string_view>()(
          {valeur.rbinary.buf, static_cast<std::size_t>(valeur.rbinary.clen)});
    default:
      return 0;
  }
}

}  // namespace

lectureTables lireTables(AcDbDatabase* db, projetsTopo& projets) {
  chaineResbuf chaine(lireChaine(dessinOuCourant(db)));
  ResbufSerializer flux(&chaine);
  if (projets.GetFromXRecord(&flux)) return lectureTables::kLues;
  return chaine.tete ? lectureTables::kIllisibles : lectureTables::kAucune;
}

void chargerInfosTopo(AcDbDatabase* db) {
  if (!tablesPoints) return;
  acutPrintf(L"\nLecture des données Topo");
  illisibles().erase(dessinOuCourant(db));
  if (lireTables(db, *tablesPoints) != lectureTables::kIllisibles) return;
  illisibles().insert(dessinOuCourant(db));
  acutPrintf(
      L"\nLes points enregistrés dans ce dessin sont illisibles : le levé repart d'une table vide."
      L"\nIls restent à part dans le dessin ; « Raffraichir » (MAJPOINTS) refait la table à partir des "
      L"blocs.");
}

void setSrcInfosTopo(AcDbDatabase* db, projetsTopo* projets, int sauvegarder, int charger) {
  s_sauvegarder = sauvegarder;
  tablesPoints = projets;
  if (charger) chargerInfosTopo(db);
}

int sauvegarderInfosTopo() {
  if (!tablesPoints) return 1;
  const AcDbObjectId calque = calqueZero(dessinOuCourant(nullptr));
  chaineResbuf chaine;
  int complet = 1;
  if (s_sauvegarder) {
    ResbufSerializer flux(&chaine);
    complet = tablesPoints->SaveToXRecord(&flux);
    if (!complet) acutPrintf(L"\t*** ERREUR ***");
  }
  return ecrireChaine(calque, chaine) && complet ? 1 : 0;
}

std::size_t empreinteTables(const projetsTopo& projets) {
  chaineResbuf chaine;
  ResbufSerializer flux(&chaine);
  projets.SaveToXRecord(&flux);
  std::size_t empreinte = 14695981039346656037U;
  const auto melanger = [&empreinte](std::size_t valeur) {
    empreinte = (empreinte ^ valeur) * 1099511628211U;
  };
  for (const resbuf* element = chaine.tete; element; element = element->rbnext) {
    melanger(static_cast<std::size_t>(element->restype));
    melanger(valeurDe(*element));
  }
  return empreinte;
}

void purgeInfosTopo() { ecrireChaine(calqueZero(dessinOuCourant(nullptr)), chaineResbuf()); }

}  // namespace veltora
