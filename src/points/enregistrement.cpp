// Record layout of points, tables and projects: the same sequence of items for every serializer.

#include "core/veltora_serializer.h"
#include "points/projets_topo.h"

#include <cstring>

namespace veltora {

int pointDuDessin::saveToXRecord(VeltoraSerializer* flux) const {
  return flux->writeBytes(nomPoint, sizeof(nomPoint)) && flux->writeInt(code) && flux->writeDouble(x) &&
                 flux->writeDouble(y) && flux->writeDouble(z) && flux->writeObjectId(id)
             ? 1
             : 0;
}

int pointDuDessin::readFromXRecord(VeltoraSerializer* flux) {
  char nom[sizeof(nomPoint)] = {};
  if (!flux->readBytes(nom, sizeof(nom))) return 0;
  nom[kLongueurNom] = 0;
  setNomPoint(nom);
  return flux->readInt(code) && flux->readDouble(x) && flux->readDouble(y) && flux->readDouble(z) &&
                 flux->readObjectId(id)
             ? 1
             : 0;
}

int listePointsDuDessin::saveToXRecord(VeltoraSerializer* flux) const {
  if (!flux->writeString(nomTable) || !flux->writeInt(nbPoint())) return 0;
  for (const pointDuDessin& point : pointsTable)
    if (!point.saveToXRecord(flux)) return 0;
  return 1;
}

int listePointsDuDessin::GetFromXRecord(VeltoraSerializer* flux) {
  int nombre = 0;
  if (!flux->readString(nomTable) || !flux->readInt(nombre)) return 0;
  for (int i = 0; i < nombre; ++i) {
    pointDuDessin point;
    if (!point.readFromXRecord(flux)) return 0;
    Ajouter(point);
  }
  return 1;
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
