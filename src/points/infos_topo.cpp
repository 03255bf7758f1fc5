#include "points/infos_topo.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"
#include "core/empreinte_serializer.h"
#include "core/extension_record.h"
#include "core/resbuf_serializer.h"

#include <memory>
#include <set>

namespace veltora {

namespace {

constexpr const ACHAR* kCle = L"VELTORA4_VARN_DATA";
constexpr const ACHAR* kCleIllisibles = L"VELTORA4_VARN_DATA_ILLISIBLES";
constexpr int kCouleurCalqueZero = 1;  ///< of a layer "0" that has to be made

constexpr std::size_t kOctetsParPoint = 112;  ///< of file text, about

int s_sauvegarder = 0;

std::size_t nombreDePoints(const projetsTopo& projets) {
  std::size_t nombre = 0;
  for (const listePointsDuDessin* table : projets.tablesListe)
    if (table) nombre += static_cast<std::size_t>(table->nbPoint());
  return nombre;
}

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
bool ecrireFiche(AcDbObjectId calqueId, std::unique_ptr<AcDbXrecord> fiche) {
  const AcDbObjectPointer<AcDbLayerTableRecord> calque(calqueId, AcDb::kForWrite);
  if (calque.openStatus() != Acad::eOk) return false;
  if (const AcDbObjectPointer<AcDbDictionary> dictionnaire(calque->extensionDictionary(), AcDb::kForWrite);
      dictionnaire.openStatus() == Acad::eOk)
    garderIllisibles(*dictionnaire, calqueId.database());
  return storeRecord(*calque, kCle, std::move(fiche));
}

/// The stored chain, owned by the caller; null when nothing is stored.
resbuf* lireChaine(AcDbDatabase* db) {
  const AcDbObjectPointer<AcDbLayerTableRecord> calque(calqueZero(db));
  return calque.openStatus() == Acad::eOk ? storedRecord(*calque, kCle) : nullptr;
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
  auto fiche = std::make_unique<AcDbXrecord>();
  bool complet = true;
  if (s_sauvegarder) {
    fiche->reserve(kOctetsParPoint * nombreDePoints(*tablesPoints));
    bool tenu = true;
    chaineResbuf chaine(
        [&](const resbuf& morceau) { tenu = tenu && fiche->appendRbChain(morceau) == Acad::eOk; });
    ResbufSerializer flux(&chaine);
    complet = tablesPoints->SaveToXRecord(&flux) != 0;
    chaine.verser();
    if (!complet) acutPrintf(L"\t*** ERREUR ***");
    if (!tenu) return 0;
  }
  return ecrireFiche(calque, std::move(fiche)) && complet ? 1 : 0;
}

std::size_t empreinteTables(const projetsTopo& projets) {
  EmpreinteSerializer flux;
  projets.SaveToXRecord(&flux);
  return flux.empreinte();
}

void purgeInfosTopo() { ecrireFiche(calqueZero(dessinOuCourant(nullptr)), std::make_unique<AcDbXrecord>()); }

}  // namespace veltora
