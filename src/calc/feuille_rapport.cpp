#include "calc/feuille_rapport.h"

#include "base/text.h"
#include "report/html_document.h"
#include "report/html_text.h"
#include "report/report_setup.h"

#include <cmath>

namespace veltora {

feuilleRapport::feuilleRapport(htmlDocument& document) : m_document(document) {
  ajouterPrologue(m_document);
  preparerTable(m_table);
}

void feuilleRapport::paragraphe(std::wstring_view texte, std::string_view attributs) {
  m_document.ajouterCorps(htmlText(base::narrow(texte), attributs).html());
}

void feuilleRapport::entetes(std::initializer_list<const wchar_t*> titres, std::string_view attributs) {
  ouvrirLigne();
  for (const wchar_t* titre : titres) texte(titre, attributs);
  fermerLigne();
}

void feuilleRapport::texte(std::wstring_view texte, std::string_view attributs) {
  m_table.ajouterCellule(base::narrow(texte), attributs);
}

void feuilleRapport::nombre(double valeur) { nombre(valeur, attributs::kNombre); }

void feuilleRapport::nombre(double valeur, std::string_view attributs) {
  m_table.ajouterCelluleDouble(valeur, m_decimales, attributs);
}

void feuilleRapport::nombres(std::initializer_list<double> valeurs) {
  for (const double valeur : valeurs) nombre(valeur);
}

void feuilleRapport::vides(int combien) {
  for (int i = 0; i < combien; ++i) m_table.ajouterCellule("", "");
}

void feuilleRapport::fermerTable() {
  m_document.ajouterCorps(m_table.fermerTable());
  m_table.vider();
}

void feuilleRapport::titresAltitudes(int modeNivellement) {
  if (!compenseAltitudes(modeNivellement)) {
    paragraphe(L"Pas de correction de nivellement", attributs::kTitre);
    return;
  }
  static constexpr std::array<const wchar_t*, 4> kTitres = {
      L"", L"Correction simple, erreur de fermeture répartie uniformèment",  // sic
      L"Correction proportionnelle aux distances", L"Correction proportionnelle aux racines distances"};
  paragraphe(L"Correction des altitudes", attributs::kTitre);
  paragraphe(kTitres[static_cast<std::size_t>(modeNivellement)], attributs::kTitre);
}

void feuilleRapport::entetesAltitudes(std::initializer_list<const wchar_t*> premieres, int modeNivellement) {
  ouvrirLigne();
  for (const wchar_t* titre : premieres) texte(titre, attributs::kGrisCentre);
  if (modeNivellement == 2) texte(L"Distance", attributs::kGrisCentre);
  if (modeNivellement == 3) texte(L"Racine.dist", attributs::kGrisCentre);
  for (const wchar_t* titre : {L"Correction", L"d.Z Corrigé", L"Z"}) texte(titre, attributs::kGrisCentre);
  fermerLigne();
}

void feuilleRapport::celluleAltitudes(int modeNivellement, const corrections& parts, std::size_t i, double X,
                                      double Y, double Z) {
  nombres({X, Y, parts.dz[i]});
  if (modeNivellement == 2) nombre(parts.L[i]);
  if (modeNivellement == 3) nombre(std::sqrt(parts.L[i]));
  nombres({parts.c[i], parts.dz[i] - parts.c[i], Z});
}

}  // namespace veltora
