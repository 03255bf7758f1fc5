#include "calc/rapport_ouverte.h"

#include "calc/angles.h"
#include "report/report_setup.h"

namespace veltora {
namespace {

constexpr const char* kNormal = "class=celnorm";
constexpr const char* kDeuxColonnes = "colspan=2";
constexpr const char* kTroisColonnes = "colspan=3";
constexpr const char* kBlanc = "&nbsp";

}  // namespace

std::wstring rapportOuverte::station(std::size_t i) const {
  return i == 0 ? m_depart.nom : std::wstring(m_lignes[i - 1].nom);
}

void rapportOuverte::stationConnueEnLigne(const wchar_t* libelle, const stationConnue& connue) {
  m_feuille.ouvrirLigne();
  m_feuille.texte(libelle, "class=celgris align=left");
  m_feuille.texte(connue.nom, attributs::kCentre);
  for (const double valeur : {connue.x, connue.y, connue.z, connue.gisement}) {
    m_feuille.nombre(valeur, attributs::kCentre);
  }
  m_feuille.fermerLigne();
}

void rapportOuverte::donnees(double A) {
  m_feuille.paragraphe(L"Corrections de fermeture polygonale", attributs::kGrand);
  m_feuille.paragraphe(L"Données", attributs::kTitreMaj);
  m_feuille.entetes({L"", L"Station", L"X", L"Y", L"Z", L"Gis"}, attributs::kGrisCentre);
  stationConnueEnLigne(L"Départ", m_depart);
  stationConnueEnLigne(L"Arrivée", m_arrivee);
  m_feuille.ouvrirLigne();
  m_feuille.texte(L"Fermeture", "class=celgris colspan=5 align=right");
  m_feuille.nombre(A);
  m_feuille.fermerLigne();
  m_feuille.fermerTable();
}

void rapportOuverte::angles(const etapesOuverte& e, double A) {
  const std::size_t n = m_lignes.size();
  const auto compense = [&](std::size_t i, double erreur) {
    return reduireAngle(reduireAngle(e.gis[i], m_unite.tour) + erreur, m_unite.tour);
  };
  m_feuille.paragraphe(L"Fermeture angulaire", attributs::kTitre);
  m_feuille.entetes({L"Station", L"Angle", L"Gisement", L"Erreur", L"Gis.Compensé"}, attributs::kGrisCentre);
  m_feuille.ouvrirLigne();
  m_feuille.texte(L"Ref", attributs::kCentre);
  m_feuille.octets(kBlanc, kNormal);
  m_feuille.nombre(m_depart.gisement);
  for (int i = 0; i < 2; ++i) m_feuille.octets(kBlanc, kNormal);
  m_feuille.fermerLigne();
  for (std::size_t i = 0; i < n; ++i) {
    const double erreur = -static_cast<double>(i + 1) * e.E;
    m_feuille.ouvrirLigne();
    m_feuille.texte(station(i), attributs::kCentre);
    m_feuille.nombres({m_lignes[i].angle, reduireAngle(e.gis[i], m_unite.tour), erreur, compense(i, erreur)});
    m_feuille.fermerLigne();
  }
  const double totale = static_cast<double>(n + 1) * e.E;
  m_feuille.ouvrirLigne();
  m_feuille.texte(m_arrivee.nom, attributs::kCentre);
  for (const double valeur : {A, reduireAngle(e.gis[n], m_unite.tour), -totale, compense(n, -totale)}) {
    m_feuille.nombre(valeur, kNormal);
  }
  m_feuille.fermerLigne();
  m_feuille.ouvrirLigne();
  m_feuille.vides(1);
  m_feuille.texte(L"Erreur :", attributs::kNombre);
  // Deliberate (erreur-opposee): the arrival's row shows the correction, the row below it the error.
  m_feuille.nombre(totale);
  m_feuille.fermerLigne();
  m_feuille.fermerTable();
}

void rapportOuverte::distances(const etapesOuverte& e, const base::CArray<double>& X,
                               const base::CArray<double>& Y) {
  m_feuille.paragraphe(L"Comprensation des distances", attributs::kTitre);  // sic
  m_feuille.entetes(
      {L"Station", L"Gisement", L"Distance", L"DX", L"DY", L"DX.Corrigé", L"DY.Corrigé", L"X", L"Y"},
      attributs::kGrisCentre);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    m_feuille.ouvrirLigne();
    m_feuille.texte(station(i), attributs::kCentre);
    m_feuille.nombres({e.gisC[i], m_lignes[i].distance, e.dx[i], e.dy[i], e.dx[i] + e.cx[i],
                       e.dy[i] + e.cy[i], i == 0 ? m_depart.x : X[i - 1], i == 0 ? m_depart.y : Y[i - 1]});
    m_feuille.fermerLigne();
  }
  m_feuille.ouvrirLigne();
  m_feuille.texte(m_arrivee.nom, attributs::kCentre);
  m_feuille.nombre(m_arrivee.gisement);
  for (int i = 0; i < 5; ++i) m_feuille.octets(kBlanc, kNormal);
  m_feuille.nombre(m_arrivee.x, kNormal);
  m_feuille.nombre(m_arrivee.y, kNormal);
  m_feuille.fermerLigne();
  totauxDistances(e);
  m_feuille.fermerTable();
}

void rapportOuverte::totauxDistances(const etapesOuverte& e) {
  const double deltaX = m_arrivee.x - m_depart.x;
  const double deltaY = m_arrivee.y - m_depart.y;
  m_feuille.ouvrirLigne();
  m_feuille.octets("", kDeuxColonnes);
  m_feuille.texte(L"Total", kNormal);
  m_feuille.nombres({e.Sx, e.Sy});
  m_feuille.fermerLigne();
  // Deliberate (totaux-decales): only the row "Total" begins with a cell of two columns, so these two stand
  // further to the left.
  m_feuille.ouvrirLigne();
  m_feuille.texte(m_arrivee.nom + L"-" + m_depart.nom, attributs::kTexte);
  m_feuille.nombres({deltaX, deltaY});
  m_feuille.fermerLigne();
  m_feuille.ouvrirLigne();
  m_feuille.texte(L"Erreur", attributs::kTexte);
  m_feuille.nombres({deltaX - e.Sx, deltaY - e.Sy});
  m_feuille.fermerLigne();
}

void rapportOuverte::altitudes(int modeNivellement, const corrections& parts, const base::CArray<double>& X,
                               const base::CArray<double>& Y, const base::CArray<double>& Z) {
  m_feuille.titresAltitudes(modeNivellement);
  m_feuille.entetesAltitudes({L"Station", L"Vise", L"X", L"Y", L"d.Z"}, modeNivellement);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    m_feuille.ouvrirLigne();
    m_feuille.texte(station(i), attributs::kTexte);
    m_feuille.texte(i + 1 < m_lignes.size() ? station(i + 1) : m_arrivee.nom, attributs::kTexte);
    m_feuille.celluleAltitudes(modeNivellement, parts, i, X[i], Y[i], Z[i]);
    m_feuille.fermerLigne();
  }
  totauxAltitudes(modeNivellement, parts);
  m_feuille.fermerTable();
}

void rapportOuverte::totauxAltitudes(int modeNivellement, const corrections& parts) {
  const double deltaZ = m_arrivee.z - m_depart.z;
  m_feuille.ouvrirLigne();
  m_feuille.octets("", kTroisColonnes);
  m_feuille.texte(L"Total", attributs::kTexte);
  m_feuille.nombre(deltaZ + parts.H);
  if (modeNivellement == 2) m_feuille.nombre(parts.SL);
  if (modeNivellement == 3) m_feuille.nombre(parts.SR);
  m_feuille.fermerLigne();
  m_feuille.ouvrirLigne();
  m_feuille.octets("", kTroisColonnes);
  m_feuille.texte(m_depart.nom + L"-" + m_arrivee.nom, attributs::kTexte);
  m_feuille.nombre(deltaZ);
  m_feuille.fermerLigne();
  m_feuille.ouvrirLigne();
  m_feuille.octets("", kTroisColonnes);
  m_feuille.texte(L"Erreur", attributs::kTexte);
  m_feuille.nombre(parts.H);
  m_feuille.fermerLigne();
}

void rapportOuverte::ligneResultat(const std::wstring& nom, double x, double y, double z) {
  m_feuille.ouvrirLigne();
  m_feuille.texte(nom, attributs::kTexte);
  m_feuille.nombres({x, y, z});
  m_feuille.fermerLigne();
}

void rapportOuverte::resultats(const base::CArray<double>& X, const base::CArray<double>& Y,
                               const base::CArray<double>& Z) {
  m_feuille.paragraphe(L"Résultats finaux :", attributs::kTitre);
  m_feuille.entetes({L"Station", L"X", L"Y", L"Z"}, attributs::kGrisCentre);
  ligneResultat(m_depart.nom, m_depart.x, m_depart.y, m_depart.z);
  for (std::size_t i = 0; i + 1 < m_lignes.size(); ++i) {
    ligneResultat(m_lignes[i].nom, X[i], Y[i], Z[i + 1]);
  }
  ligneResultat(m_arrivee.nom, m_arrivee.x, m_arrivee.y, m_arrivee.z);
  m_feuille.fermerTable();
}

}  // namespace veltora
