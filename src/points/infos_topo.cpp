#include "points/infos_topo.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"
#include "core/resbuf_serializer.h"

#include <memory>

namespace veltora {

namespace {

constexpr const ACHAR* kCle = L"VELTORA4_VARN_DATA";
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

/// Stores the chain, or an empty record, in place of what stood there. @return false when the drawing refuses
bool ecrireChaine(AcDbObjectId calqueId, const chaineResbuf& chaine) {
  AcDbObjectPointer<AcDbLayerTableRecord> calque(calqueId, AcDb::kForWrite);
  if (calque.openStatus() != Acad::eOk) return false;
  calque->createExtensionDictionary();  // an existing one is no error
  const AcDbObjectPointer<AcDbDictionary> dictionnaire(calque->extensionDictionary(), AcDb::kForWrite);
  if (dictionnaire.openStatus() != Acad::eOk) return false;
  auto fiche = std::make_unique<AcDbXrecord>();
  if (chaine.tete && fiche->setFromRbChain(*chaine.tete, calqueId.database()) != Acad::eOk) return false;
  fiche->setXlateReferences(true);
  AcDbObjectId id;
  if (dictionnaire->setAt(kCle, fiche.get(), id) != Acad::eOk) return false;
  fiche.release()->close();
  return true;
}

/// The stored chain, owned by the caller; null when nothing is stored.
resbuf* lireChaine(AcDbDatabase* db) {
  const AcDbObjectPointer<AcDbLayerTableRecord> calque(calqueZero(db));
  if (calque.openStatus() != Acad::eOk) return nullptr;
  const AcDbObjectPointer<AcDbDictionary> dictionnaire(calque->extensionDictionary());
  if (dictionnaire.openStatus() != Acad::eOk) return nullptr;
  AcDbXrecord* fiche = nullptr;
  if (dictionnaire->getAt(kCle, fiche) != Acad::eOk) return nullptr;
  resbuf* chaine = nullptr;
  fiche->rbChain(&chaine, db);
  fiche->close();
  return chaine;
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
  if (lireTables(db, *tablesPoints) != lectureTables::kIllisibles) return;
  acutPrintf(
      L"\nLes points enregistrés dans ce dessin sont illisibles : le levé repart d'une table vide."
      L"\nLe prochain enregistrement du dessin les remplacera : enregistrez-le sous un autre nom pour "
      L"conserver"
      L" l'original.");
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

void purgeInfosTopo() { ecrireChaine(calqueZero(dessinOuCourant(nullptr)), chaineResbuf()); }

}  // namespace veltora
