#include "points/bloc_fichier.h"

#include "arx/db/dbmain.h"
#include "base/text.h"
#include "core/drawing_records.h"
#include "core/installation.h"

#include <memory>

namespace veltora {
namespace {

bool finitParDwg(std::wstring_view chemin) {
  return chemin.size() >= 4 && base::compareNoCase(chemin.substr(chemin.size() - 4), L".dwg") == 0;
}

std::unique_ptr<AcDbDatabase> lireDessin(std::wstring_view chemin) {
  auto dessin = std::make_unique<AcDbDatabase>(false, true);
  const std::wstring fichier = base::fromUtf8(cheminPlateforme(chemin).string());
  return dessin->readDwgFile(fichier.c_str()) == Acad::eOk ? std::move(dessin) : nullptr;
}

}  // namespace

std::wstring nomBloc(std::wstring_view chemin) {
  const std::size_t separateur = chemin.find_last_of(L"\\/");
  if (separateur != std::wstring_view::npos) chemin = chemin.substr(separateur + 1);
  return std::wstring(chemin.substr(0, chemin.find_last_of(L'.')));
}

AcDbObjectId blocDuFichier(AcDbDatabase& db, std::wstring_view cheminDonne) {
  std::wstring chemin = base::trim(cheminDonne, L" \t,;.");
  if (chemin.empty()) chemin = cheminInstallation(L"varnblk1.dwg", L"biblio");
  const std::wstring nom = nomBloc(chemin);
  AcDbObjectId bloc = recordNamed(db.blockTableId(), nom);
  if (!bloc.isNull() || nom.empty()) return bloc;
  if (!finitParDwg(chemin)) chemin += L".dwg";
  std::unique_ptr<AcDbDatabase> dessin = lireDessin(chemin);
  if (!dessin) dessin = lireDessin(cheminInstallation(chemin));
  if (!dessin || db.insert(bloc, nom.c_str(), dessin.get()) != Acad::eOk) bloc.setNull();
  return bloc;
}

}  // namespace veltora
