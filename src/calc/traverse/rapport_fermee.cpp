#include "calc/traverse/rapport_fermee.h"

#include "base/format.h"
#include "base/text.h"
#include "report/html_text.h"
#include "report/report_setup.h"

namespace veltora {

rapportFermee::rapportFermee(htmlDocument& document, const lignesPolygonale& lignes)
    : m_plume(document), m_lignes(lignes) {
  m_noms.reserve(lignes.size());
  for (const obsPolygonale& ligne : lignes) m_noms.push_back(base::narrow(ligne.nom));
}

const std::string& rapportFermee::nom(std::size_t i, std::size_t recul) const {
  return m_noms[(i + 2 * m_noms.size() - recul) % m_noms.size()];
}

void rapportFermee::troisNoms(std::size_t i) {
  for (const std::size_t recul : {2U, 1U, 0U}) m_plume.octets(echappe(nom(i, recul)), attributs::kTexte);
}

void rapportFermee::donnees(const std::wstring& nomDepart, double Xdep, double Ydep, double Zdep, double Vo) {
  m_plume.paragraphe(L"Corrections de fermeture polygonale", attributs::kGrand);
  m_plume.paragraphe(L"Données", attributs::kTitreMaj);
  // Deliberate (format-z): Z has a width of 4 and no point, so it shows six decimals.
  m_plume.paragraphe(base::formater(L"\r\nStation de départ : %s\tX=%.4f\tY=%.4f\tZ=%4f\tVo=%.4f",
                                    nomDepart.c_str(), Xdep, Ydep, Zdep, Vo),
                     attributs::kPetit);
  m_plume.paragraphe(L"Observations", attributs::kTitre);
  m_plume.entetes({L"Station", L"Vise", L"Angle", L"Distance", L"Altitude"}, attributs::kGrisMaj);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    m_plume.ouvrirLigne();
    m_plume.octets(echappe(nom(i, 1)), attributs::kCentre);
    m_plume.octets(echappe(nom(i, 0)), attributs::kCentre);
    m_plume.nombres({m_lignes[i].angle, m_lignes[i].distance, m_lignes[i].dz});
    m_plume.fermerLigne();
  }
  m_plume.fermerTable();
}

void rapportFermee::angles(const etapesFermee& e) {
  const double part = e.f.E / static_cast<double>(m_lignes.size());
  m_plume.paragraphe(L"Fermeture Angulaire", attributs::kTitreMaj);
  m_plume.paragraphe(base::formater(L"\r\nErreur angulaire=%.5f", e.f.E), attributs::kPetitMaj);
  m_plume.paragraphe(base::formater(L"\r\nCorrection angulaire=%.5f", part), attributs::kPetitMaj);
  m_plume.entetes({L"Réf", L"Station", L"Vise", L"Ang Ext", L"Ang Int", L"Ang Int Corr", L"Ang Ext Corr",
                   L"Gisement Corr"},
                  attributs::kGrisCentre);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    m_plume.ouvrirLigne();
    troisNoms(i);
    m_plume.nombres({m_lignes[i].angle, e.angInt[i], e.angIntCorr[i], e.angExtCorr[i], e.gis[i]});
    m_plume.fermerLigne();
  }
  const std::pair<const wchar_t*, double> totaux[] = {
      {L"Somme", e.f.S}, {L"Erreur", e.f.E}, {L"Correction", part}};
  for (const auto& [libelle, valeur] : totaux) {
    m_plume.ouvrirLigne();
    m_plume.vides(3);
    m_plume.texte(libelle, attributs::kTexte);
    m_plume.nombre(valeur);
    m_plume.fermerLigne();
  }
  m_plume.fermerTable();
}

void rapportFermee::distances(const etapesFermee& e, const base::CArray<double>& X,
                              const base::CArray<double>& Y) {
  m_plume.paragraphe(L"Correction des distances", attributs::kTitre);
  m_plume.entetes({L"Réf", L"Station", L"Vise", L"Gis. Corrigé", L"Distance", L"Dx", L"Dy", L"Dx corrigé",
                   L"Dy corrigé", L"X", L"Y"},
                  attributs::kGrisCentre);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    const double distance = m_lignes[i].distance;
    m_plume.ouvrirLigne();
    troisNoms(i);
    m_plume.nombres({e.gis[i], distance, e.dx[i], e.dy[i], e.dx[i] - (distance / e.f.D) * e.f.Ex,
                     e.dy[i] - (distance / e.f.D) * e.f.Ey, X[i], Y[i]});
    m_plume.fermerLigne();
  }
  m_plume.ouvrirLigne();
  m_plume.vides(3);
  m_plume.texte(L"Somme", attributs::kGrisCentre);
  m_plume.nombres({e.f.D, e.f.Ex, e.f.Ey});
  m_plume.fermerLigne();
  m_plume.fermerTable();
}

void rapportFermee::altitudes(int modeNivellement, const corrections& parts, const base::CArray<double>& X,
                              const base::CArray<double>& Y, const base::CArray<double>& Z) {
  titresAltitudes(m_plume, modeNivellement);
  entetesAltitudes(m_plume, {L"Réf", L"Station", L"Vise", L"X", L"Y", L"d.Z"}, modeNivellement);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    m_plume.ouvrirLigne();
    troisNoms(i);
    celluleAltitudes(m_plume, modeNivellement, parts, i, X[i], Y[i], Z[i]);
    m_plume.fermerLigne();
  }
  m_plume.ouvrirLigne();
  m_plume.octets("", attributs::kQuatreColonnes);
  m_plume.texte(L"Total", attributs::kTexte);
  m_plume.nombre(parts.H);
  if (modeNivellement == 2) m_plume.nombre(parts.SL);
  if (modeNivellement == 3) m_plume.nombre(parts.SR);
  m_plume.fermerLigne();
  m_plume.fermerTable();
}

void rapportFermee::coordonnees(const base::CArray<double>& X, const base::CArray<double>& Y,
                                const base::CArray<double>& Z) {
  m_plume.paragraphe(L"Coordonnées finales", attributs::kTitre);
  m_plume.entetes({L"Station", L"X", L"Y", L"Z"}, attributs::kGrisCentre);
  for (std::size_t i = 0; i < m_lignes.size(); ++i) {
    m_plume.ouvrirLigne();
    m_plume.octets(echappe(nom(i, 1)), attributs::kTexte);
    m_plume.nombres({X[i], Y[i], Z[i]});
    m_plume.fermerLigne();
  }
  m_plume.fermerTable();
}

}  // namespace veltora
