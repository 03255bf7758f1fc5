#include "calc/traverse/rapport_ouverte.h"

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
  m_plume.ouvrirLigne();
  m_plume.texte(libelle, "class=celgris align=left");
  m_plume.texte(connue.nom, attributs::kCentre);
  for (const double valeur : {connue.x, connue.y, connue.z, connue.gisement}) {
    m_plume.nombre(valeur, attributs::kCentre);
  }
  m_plume.fermerLigne();
}

void rapportOuverte::donnees(double A) {
  m_plume.paragraphe(L"Corrections de fermeture polygonale", attributs::kGrand);
  m_plume.paragraphe(L"Données", attributs::kTitreMaj);
  m_plume.entetes({L"", L"Station", L"X", L"Y", L"Z", L"Gis"}, attributs::kGrisCentre);
  stationConnueEnLigne(L"Départ", m_depart);
  stationConnueEnLigne(L"Arrivée", m_arrivee);
  m_plume.ouvrirLigne();
  m_plume.texte(L"Fermeture", "class=celgris colspan=5 align=right");
  m_plume.nombre(A);
  m_plume.fermerLigne();
  m_plume.fermerTable();
}

void rapportOuverte::angles(const etapesOuverte& e, double A) {
  const std::size_t n = m_lignes.size();
  const auto compense = [&](std::size_t i, double erreur) {
    return reduireAngle(reduireAngle(e.gis[i], m_unite.tour) + erreur, m_unite.tour);
  };
  m_plume.paragraphe(L"Fermeture angulaire", attributs::kTitre);
  m_plume.entetes({L"Station", L"Angle", L"Gisement", L"Erreur", L"Gis.Compensé"}, attributs::kGrisCentre);
  m_plume.ouvrirLigne();
  m_plume.texte(L"Ref", attributs::kCentre);
  m_plume.octets(kBlanc, kNormal);
  m_plume.nombre(m_depart.gisement);
  for (int i = 0; i < 2; ++i) m_plume.octets(kBlanc, kNormal);
  m_plume.fermerLigne();
  for (std::size_t i = 0; i < n; ++i) {
    const double erreur = -static_cast<double>(i + 1) * e.E;
    m_plume.ouvrirLigne();
    m_plume.texte(station(i), attributs::kCentre);
    m_plume.nombres({m_lignes[i].angle, reduireAngle(e.gis[i], m_unite.tour), erreur, compense(i, erreur)});
    m_plume.fermerLigne();
  }
  const double totale = static_cast<double>(n + 1) * e.E;
  m_plume.ouvrirLigne();
  m_plume.texte(m_arrivee.nom, attributs::kCentre);
  for (const double valeur : {A, reduireAngle(e.gis[n], m_unite.tour), -totale, compense(n, -totale)}) {
    m_plume.nombre(valeur, kNormal);
  }
  m_plume.fermerLigne();
  m_plume.ouvrirLigne();
  m_plume.vides(1);
  m_plume.texte(L"Erreur :", attributs::kNombre);
  // Deliberate (erreur-opposee): the arrival's row shows the correction, the row below it the error.
  m_plume.nombre(totale);
  m_plume.fermerLigne();
  m_plume.fermerTable();
}

void rapportOuverte::distances(const etapesOuverte& e, const base::CArray<double>& X,
                               const base::CArray<double>& Y) {
  m_plume.paragraphe(L"Comprensation des distances", attributs::kTitre);  // sic
  m_plume.entetes(
      {L"Station", L"Gisement", L"Distance", L"DX", L"DY", L"DX.Corrigé", L"DY.Corrigé", L"X", L"Y"},
      attributs::kGrisCentre);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    m_plume.ouvrirLigne();
    m_plume.texte(station(i), attributs::kCentre);
    m_plume.nombres({e.gisC[i], m_lignes[i].distance, e.dx[i], e.dy[i], e.dx[i] + e.cx[i], e.dy[i] + e.cy[i],
                     i == 0 ? m_depart.x : X[i - 1], i == 0 ? m_depart.y : Y[i - 1]});
    m_plume.fermerLigne();
  }
  m_plume.ouvrirLigne();
  m_plume.texte(m_arrivee.nom, attributs::kCentre);
  m_plume.nombre(m_arrivee.gisement);
  for (int i = 0; i < 5; ++i) m_plume.octets(kBlanc, kNormal);
  m_plume.nombre(m_arrivee.x, kNormal);
  m_plume.nombre(m_arrivee.y, kNormal);
  m_plume.fermerLigne();
  totauxDistances(e);
  m_plume.fermerTable();
}

void rapportOuverte::totauxDistances(const etapesOuverte& e) {
  const double deltaX = m_arrivee.x - m_depart.x;
  const double deltaY = m_arrivee.y - m_depart.y;
  m_plume.ouvrirLigne();
  m_plume.octets("", kDeuxColonnes);
  m_plume.texte(L"Total", kNormal);
  m_plume.nombres({e.Sx, e.Sy});
  m_plume.fermerLigne();
  // Deliberate (totaux-decales): only the row "Total" begins with a cell of two columns, so these two stand
  // further to the left.
  m_plume.ouvrirLigne();
  m_plume.texte(m_arrivee.nom + L"-" + m_depart.nom, attributs::kTexte);
  m_plume.nombres({deltaX, deltaY});
  m_plume.fermerLigne();
  m_plume.ouvrirLigne();
  m_plume.texte(L"Erreur", attributs::kTexte);
  m_plume.nombres({deltaX - e.Sx, deltaY - e.Sy});
  m_plume.fermerLigne();
}

void rapportOuverte::altitudes(int modeNivellement, const corrections& parts, const base::CArray<double>& X,
                               const base::CArray<double>& Y, const base::CArray<double>& Z) {
  titresAltitudes(m_plume, modeNivellement);
  entetesAltitudes(m_plume, {L"Station", L"Vise", L"X", L"Y", L"d.Z"}, modeNivellement);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    m_plume.ouvrirLigne();
    m_plume.texte(station(i), attributs::kTexte);
    m_plume.texte(i + 1 < m_lignes.size() ? station(i + 1) : m_arrivee.nom, attributs::kTexte);
    celluleAltitudes(m_plume, modeNivellement, parts, i, X[i], Y[i], Z[i]);
    m_plume.fermerLigne();
  }
  totauxAltitudes(modeNivellement, parts);
  m_plume.fermerTable();
}

void rapportOuverte::totauxAltitudes(int modeNivellement, const corrections& parts) {
  const double deltaZ = m_arrivee.z - m_depart.z;
  m_plume.ouvrirLigne();
  m_plume.octets("", kTroisColonnes);
  m_plume.texte(L"Total", attributs::kTexte);
  m_plume.nombre(deltaZ + parts.H);
  if (modeNivellement == 2) m_plume.nombre(parts.SL);
  if (modeNivellement == 3) m_plume.nombre(parts.SR);
  m_plume.fermerLigne();
  m_plume.ouvrirLigne();
  m_plume.octets("", kTroisColonnes);
  m_plume.texte(m_depart.nom + L"-" + m_arrivee.nom, attributs::kTexte);
  m_plume.nombre(deltaZ);
  m_plume.fermerLigne();
  m_plume.ouvrirLigne();
  m_plume.octets("", kTroisColonnes);
  m_plume.texte(L"Erreur", attributs::kTexte);
  m_plume.nombre(parts.H);
  m_plume.fermerLigne();
}

void rapportOuverte::ligneResultat(const std::wstring& nom, double x, double y, double z) {
  m_plume.ouvrirLigne();
  m_plume.texte(nom, attributs::kTexte);
  m_plume.nombres({x, y, z});
  m_plume.fermerLigne();
}

void rapportOuverte::resultats(const base::CArray<double>& X, const base::CArray<double>& Y,
                               const base::CArray<double>& Z) {
  m_plume.paragraphe(L"Résultats finaux :", attributs::kTitre);
  m_plume.entetes({L"Station", L"X", L"Y", L"Z"}, attributs::kGrisCentre);
  ligneResultat(m_depart.nom, m_depart.x, m_depart.y, m_depart.z);
  for (std::size_t i = 0; i + 1 < m_lignes.size(); ++i) {
    ligneResultat(m_lignes[i].nom, X[i], Y[i], Z[i + 1]);
  }
  ligneResultat(m_arrivee.nom, m_arrivee.x, m_arrivee.y, m_arrivee.z);
  m_plume.fermerTable();
}

}  // namespace veltora
