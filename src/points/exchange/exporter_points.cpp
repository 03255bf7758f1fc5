#include "points/exchange/exporter_points.h"

#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/suivi.h"
#include "base/text.h"
#include "report/html_document.h"
#include "report/html_table.h"
#include "report/html_text.h"
#include "report/report_setup.h"

#include <filesystem>

namespace veltora {
namespace {

using Points = std::vector<pointDuDessin>;
/// Decimals of the coordinates in a report.
constexpr int kDecimales = 4;

void ajouterLigne(htmlTable& table, const pointDuDessin& point) {
  table.ouvrirLigne();
  table.ajouterCellule(echappe(point.nomPoint), attributs::kTexte);
  table.ajouterCelluleDouble(point.x, kDecimales, attributs::kNombre);
  table.ajouterCelluleDouble(point.y, kDecimales, attributs::kNombre);
  if (point.z == Z_ABSENT)
    table.ajouterCellule("&nbsp", attributs::kNombre);
  else
    table.ajouterCelluleDouble(point.z, kDecimales, attributs::kNombre);
  table.ajouterCelluleEntier(point.code, attributs::kNombre);
  table.fermerLigne();
}

bool exporterRapport(const Points& points, const std::wstring& chemin, base::Suivi& suivi,
                     std::string& raison) {
  htmlDocument document;
  // Deliberate (export-toujours-word): the Word form, under ".htm" too.
  document.setFichier(base::cheminDuTexte(chemin).native(),
                      chemin.size() < 3 ? htmlDocument::simple : htmlDocument::word);
  ajouterPrologue(document);
  htmlTable table;
  preparerTable(table);
  table.reserver(points.size(), 100);
  table.ouvrirLigne();
  for (const wchar_t* titre : {L"N°", L"X", L"Y", L"Z", L"Code"})
    table.ajouterCellule(base::narrow(titre), attributs::kGrisMaj);
  table.fermerLigne();
  for (const pointDuDessin& point : points) {
    ajouterLigne(table, point);
    suivi.avancer();
    if (suivi.arrete()) return false;
  }
  document.ajouterCorps(table.fermerTable());
  return document.ecrire(&raison);
}

/// The line of a point with an observation, as an `.xyz` list has it.
std::string avecObservation(std::string ligne, const std::wstring& observation) {
  if (!observation.empty()) ligne.insert(ligne.size() - 1, "\t" + base::narrow(observation));
  return ligne;
}

bool exporterTexte(const Points& points, const std::wstring& chemin,
                   const std::vector<std::wstring>& observations, base::Suivi& suivi, std::string& raison) {
  base::RemplacementFichier fichier{base::cheminDuTexte(chemin)};
  for (std::size_t i = 0; i < points.size(); ++i) {
    const std::string ligne = texteDuPoint(points[i]);
    if (!fichier.ecrire(observations.empty() ? ligne : avecObservation(ligne, observations[i]))) break;
    suivi.avancer();
    if (suivi.arrete()) return false;
  }
  return fichier.terminer(&raison);
}

}  // namespace

std::string texteDuPoint(const pointDuDessin& point) {
  const char* nom = point.nomPoint;
  // Deliberate (texte-z-blanc): a blank column, not an empty mark; who splits lines at blanks sees the code
  // in its place.
  if (point.z == Z_ABSENT)
    return base::formater("%10s\t%15.4f\t%15.4f\t%15s\t%5d\n", nom, point.x, point.y, " ", point.code);
  return base::formater("%10s\t%15.4f\t%15.4f\t%15.4f\t%5d\n", nom, point.x, point.y, point.z, point.code);
}

formeExport formeDuFichier(std::wstring_view chemin) {
  const std::wstring nom = base::toLower(chemin);
  for (const wchar_t* extension : {L".htm", L".html", L".doc"})
    if (nom.ends_with(extension)) return formeExport::kRapport;
  return formeExport::kTexte;
}

bool exporterPoints(const Points& points, const std::wstring& chemin, std::wstring& raison,
                    const std::vector<std::wstring>& observations) {
  base::Suivi suivi(static_cast<long long>(points.size()));
  std::string detail;
  const bool rapport = formeDuFichier(chemin) == formeExport::kRapport;
  const bool ecrit = rapport ? exporterRapport(points, chemin, suivi, detail)
                             : exporterTexte(points, chemin, observations, suivi, detail);
  raison = base::fromUtf8(detail);
  return ecrit;
}

}  // namespace veltora
