#include "jobs/echelle_projection.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/sibling_library.h"
#include "base/text.h"
#include "calc/leve/reduction.h"

namespace veltora {
namespace {

/// The name by which PROJ knows a system; empty for none.
std::string systemeDe(const std::string& nom) {
  const std::string grand = base::toUpperAnsi(base::trim(nom));
  if (grand == "L93") return "EPSG:2154";
  const int zone =
      grand.starts_with("CC") && grand.size() == 4 ? base::lireEntier(std::string_view(grand).substr(2)) : 0;
  if (zone >= 42 && zone <= 50) return "EPSG:" + std::to_string(3900 + zone);
  const bool code = grand.starts_with("EPSG:") && grand.size() > 5 &&
                    grand.find_first_not_of("0123456789", 5) == std::string::npos;
  return code ? grand : std::string();
}

}  // namespace

std::optional<echelleProjection> calculerEchelle(const std::string& nom, double x, double y, double z,
                                                 std::wstring& erreur) {
  echelleProjection echelle;
  echelle.systeme = systemeDe(nom);
  const std::wstring lu = L"« " + base::fromUtf8(nom) + L" »";
  if (echelle.systeme.empty()) {
    erreur = lu + L" n'est pas une projection : L93, CC42 à CC50, ou EPSG:numéro";
    return {};
  }
  using Fonction = int (*)(const char*, double, double, double*);
  std::string raison;
  const auto calculer = reinterpret_cast<Fonction>(
      base::siblingFunction("libveltora_proj.so", "veltoraEchelleProjection", raison));
  if (!calculer) {
    erreur =
        L"l'échelle des projections n'est pas disponible ici (bibliothèque libveltora_proj.so, faite avec "
        L"PROJ, "
        L"paquet libproj-dev) : " +
        base::fromUtf8(raison);
    return {};
  }
  const int etat = calculer(echelle.systeme.c_str(), x, y, &echelle.projection);
  if (etat != 0) {
    erreur = etat == 1
                 ? lu + L" : projection inconnue, ou qui n'est pas conforme"
                 : base::formater(
                       L"%s : le canevas (autour de %.0f, %.0f) est hors du domaine de cette projection ; "
                       L"X et Y inversés, ou une autre projection ?",
                       lu, x, y);
    return {};
  }
  echelle.altitude = kRayonTerre / (kRayonTerre + z);
  return echelle;
}

}  // namespace veltora
