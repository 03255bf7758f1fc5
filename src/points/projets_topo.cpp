#include "points/projets_topo.h"

#include "base/text.h"
#include "core/veltora_serializer.h"

#include <memory>
#include <stdexcept>
#include <vector>

namespace veltora {
namespace {

constexpr const wchar_t* kTableParDefaut = L"LEVE";

}  // namespace

projetsTopo* tablesPoints = nullptr;

projetsTopo::projetsTopo() { reset(); }

projetsTopo::~projetsTopo() { removeAll(); }

void projetsTopo::reset() {
  removeAll();
  creerTablePoints(kTableParDefaut);
  tableCourante = 0;
}

void projetsTopo::removeAll() {
  for (listePointsDuDessin* table : tablesListe) delete table;
  tablesListe.RemoveAll();
  tableCourante = -1;
}

void projetsTopo::creerTablePoints(const wchar_t* nom) {
  auto table = std::make_unique<listePointsDuDessin>();
  table->setNomTable(nom);
  tablesListe.Add(table.get());
  static_cast<void>(table.release());
}

void projetsTopo::supprimer(int i) {
  delete tablesListe.GetAt(i);
  tablesListe.RemoveAt(i);
}

void projetsTopo::removeTablePoints(int i) {
  if (tablesListe.GetSize() == 1 || i < 0 || i >= tablesListe.GetSize()) return;
  // Deliberate (removetablepoints-courante): removing the current table moves the index down too.
  if (tableCourante >= i) --tableCourante;
  supprimer(i);
  if (tableCourante < 0) tableCourante = 0;
}

listePointsDuDessin* projetsTopo::currTable() {
  if (tablesListe.empty()) {
    creerTablePoints(L"");
    tableCourante = 0;
  }
  if (tableCourante >= tablesListe.GetSize()) tableCourante = 0;
  if (tableCourante < 0) throw std::invalid_argument("table courante hors de la liste");
  listePointsDuDessin*& table = tablesListe.GetAt(tableCourante);
  if (!table) table = new listePointsDuDessin;
  return table;
}

listePointsDuDessin* projetsTopo::chercherTable(const std::wstring& nom) {
  if (nom.empty()) return currTable();
  for (listePointsDuDessin* table : tablesListe)
    if (table && base::compareNoCase(table->getNomTable(), nom) == 0) return table;
  return nullptr;
}

listePointsDuDessin& projetsTopo::tableOuNouvelle(const std::wstring& nom) {
  if (listePointsDuDessin* table = chercherTable(nom)) return *table;
  creerTablePoints(nom.c_str());
  return *tablesListe.GetAt(tablesListe.GetSize() - 1);
}

void projetsTopo::decalZ(const double& dz) {
  for (listePointsDuDessin* table : tablesListe)
    if (table) table->decalZ(dz);
}

void projetsTopo::notifyPositionPoint(const AcDbObjectId& id, const AcGePoint3d& pt, int masque) {
  for (listePointsDuDessin* table : tablesListe)
    if (table) table->notifyPositionPoint(id, pt, masque);
}

void projetsTopo::notifyPositionPoints(const placesBlocs& places, int masque) {
  for (listePointsDuDessin* table : tablesListe)
    if (table) table->notifyPositionPoints(places, masque);
}

void projetsTopo::nettoyerLeveVides() {
  std::vector<int> vides;
  for (int i = 0; i < tablesListe.GetSize(); ++i) {
    const listePointsDuDessin* table = tablesListe.GetAt(i);
    if (table->nbPoint() == 0 && table->getNomTable() == kTableParDefaut) vides.push_back(i);
  }
  if (vides.size() < 2) {
    if (tableCourante < 0 || tableCourante >= tablesListe.GetSize()) tableCourante = 0;
    return;
  }
  for (auto i = vides.rbegin(); i != vides.rend() && tablesListe.GetSize() > 1; ++i) supprimer(*i);
  tableCourante = 0;
}

int projetsTopo::SaveToXRecord(VeltoraSerializer* flux) const {
  if (!flux->writeInt(tableCourante) || !flux->writeInt(tablesListe.GetSize())) return 0;
  for (const listePointsDuDessin* table : tablesListe)
    if (!(table ? table->saveToXRecord(flux) : listePointsDuDessin().saveToXRecord(flux))) return 0;
  return 1;
}

int projetsTopo::GetFromXRecord(VeltoraSerializer* flux) {
  flux->rewind();
  removeAll();
  int nombre = 0;
  bool lu = flux->readInt(tableCourante) && flux->readInt(nombre);
  for (int i = 0; lu && i < nombre; ++i) {
    creerTablePoints(L"");
    lu = tablesListe.GetAt(i)->GetFromXRecord(flux) != 0;
  }
  if (!lu) {
    reset();
    return 0;
  }
  if (tablesListe.empty()) reset();
  nettoyerLeveVides();
  return 1;
}

}  // namespace veltora
