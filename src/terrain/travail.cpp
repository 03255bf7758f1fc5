#include "terrain/travail.h"

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "base/format.h"
#include "terrain/dessin_terrain.h"
#include "terrain/lecture_dessin.h"
#include "terrain/terrains_ouverts.h"

#include <algorithm>

namespace veltora::terrain {
namespace {

class Travail {
public:
  Travail(AcDbDatabase& dessin, const DemandeTerrain& demande, ResultatTerrain& resultat)
      : m_dessin(dessin), m_demande(demande), m_resultat(resultat) {}

  bool faire() {
    std::unique_ptr<Terrain> nouveau;
    if (!ChoixCodes::lire(m_demande.codes, m_codes))
      return echec(L"« " + m_demande.codes + L" » ne dit pas des codes : 100, 200-299");
    if (!lireAxes()) return false;
    const Terrain* terrain = nullptr;
    if (m_demande.source == SourceTerrain::kExistant) {
      terrain = terrainCourant(m_dessin);
      if (!terrain) return echec(L"le dessin n'a pas de terrain");
    } else {
      Sources sources;
      if (!rassembler(sources)) return false;
      nouveau = fabriquer(m_demande.nom, sources, m_resultat.remarques, m_resultat.erreur);
      if (!nouveau) return false;
      terrain = nouveau.get();
    }
    decrire(*terrain, m_resultat);
    mesurer(*terrain);
    m_resultat.retenu = m_resultat.remarques.douteuses() && !m_demande.malgreDoutes;
    if (m_resultat.retenu) return true;
    return garder(std::move(nouveau)) && dessiner(*terrainCourant(m_dessin));
  }

private:
  bool echec(const std::wstring& raison) {
    m_resultat.erreur = raison;
    return false;
  }
  bool duCalque(const std::wstring& calque, std::vector<AcDbObjectId>& ids) {
    return entitesDuCalque(m_dessin, calque, ids) ||
           echec(L"le dessin n'a pas de calque « " + calque + L" »");
  }
  void autres(const wchar_t* texte, int nombre) {
    if (nombre > 0) m_resultat.remarques.ajouter(base::formater(texte, nombre));
  }

  bool rassembler(Sources& sources) {
    sources.areteMaximale = m_demande.areteMaximale;
    std::vector<AcDbObjectId> ids;
    if (!m_demande.calqueLignes.empty()) {
      if (!duCalque(m_demande.calqueLignes, ids)) return false;
      const Bilan bilan = ajouterEntites(ids, Role::kLignes, sources);
      if (bilan.lignes == 0)
        return echec(L"le calque « " + m_demande.calqueLignes + L" » ne porte aucune ligne 3D");
      autres(L"lignes à l'altitude 0 et autres entités du calque des lignes, laissées de côté : %d",
             bilan.autres);
    }
    if (!m_demande.calqueLimite.empty()) {
      if (!duCalque(m_demande.calqueLimite, ids)) return false;
      const Bilan bilan = ajouterEntites(ids, Role::kLimite, sources);
      if (bilan.lignes == 0)
        return echec(L"le calque « " + m_demande.calqueLimite + L" » ne porte aucune limite");
      autres(L"entités du calque des limites qui n'en sont pas, laissées de côté : %d", bilan.autres);
      autres(L"limites ouvertes, fermées d'un trait : %d", bilan.ouvertes);
    }
    rassemblerPoints(sources);
    if (sources.points.empty() && sources.lignes.empty() && sources.facettes.empty())
      return echec(L"aucun point, aucune ligne 3D, aucune face 3D dont faire un terrain");
    return true;
  }
  void rassemblerPoints(Sources& sources) {
    for (const PointTerrain& point : m_demande.points) {
      if (!m_codes.prend(point.code)) continue;
      sources.points.push_back(point.lieu);
      sources.reperes.push_back(point.nom);
    }
    if (!m_demande.points.empty()) return;
    const bool reconnue = m_demande.source == SourceTerrain::kReconnue;
    std::vector<AcDbObjectId> ids;
    entitesDuCalque(m_dessin, {}, ids);
    if ((reconnue || m_demande.source == SourceTerrain::kTable) && ajouterTable(m_codes, sources) > 0) {
      Sources dessinees;
      autres(L"points dessinés, laissés de côté pour ceux de la table courante : %d",
             reconnue ? ajouterEntites(ids, Role::kPoints, dessinees).points : 0);
      return;
    }
    if ((reconnue || m_demande.source == SourceTerrain::kEntites) &&
        ajouterEntites(ids, Role::kPoints, sources).points > 0)
      return;
    if ((reconnue && sources.lignes.empty()) || m_demande.source == SourceTerrain::kFaces)
      ajouterEntites(ids, Role::kFacettes, sources);
  }

  bool lireAxes() {
    if (m_demande.calqueProfil.empty()) return true;
    std::vector<AcDbObjectId> ids;
    if (!duCalque(m_demande.calqueProfil, ids)) return false;
    for (const AcDbObjectId& id : ids) {
      const AcDbObjectPointer<AcDbEntity> entite(id);
      bool fermee = false;
      std::vector<AcGePoint3d> axe = sommetsDe(*entite, fermee);
      if (axe.size() < 2) continue;
      if (fermee && !(axe.front() == axe.back())) axe.push_back(axe.front());
      m_axes.push_back(std::move(axe));
    }
    return !m_axes.empty() || echec(L"le calque « " + m_demande.calqueProfil + L" » ne porte aucune ligne");
  }

  /// What is to be drawn, before anything is.
  void mesurer(const Terrain& terrain) {
    const Triangulation& surface = terrain.surface();
    if (m_demande.equidistance > 0.0) {
      const double ampleur = ampleurCourbes(surface, m_demande.equidistance);
      if (ampleur > kDemesure)
        m_resultat.remarques.douter(
            base::formater(L"les courbes compteraient %.0f sommets, équidistance trop petite ?", ampleur));
    }
    for (const std::vector<AcGePoint3d>& axe : m_axes) {
      Profil profil = profilLeLong(surface, axe);
      if (profil.empty())
        m_resultat.remarques.douter(base::formater(
            L"la ligne qui commence en %.3f, %.3f ne passe sur aucun terrain", axe.front().x, axe.front().y));
      else
        m_profils.push_back(std::move(profil));
    }
  }

  bool garder(std::unique_ptr<Terrain> nouveau) {
    if (!nouveau) return true;
    int remplaces = 0;
    if (!ajouter(m_dessin, std::move(nouveau), remplaces))
      return echec(L"le dessin ne reçoit pas le terrain");
    if (remplaces > 0)
      m_resultat.remarques.ajouter(L"le terrain « " + m_demande.nom + L" » en remplace un autre");
    return true;
  }

  bool dessiner(const Terrain& terrain) {
    const Triangulation& surface = terrain.surface();
    if (m_demande.equidistance > 0.0) {
      BilanCourbes bilan;
      if (!dessinerCourbes(m_dessin, surface, {m_demande.equidistance, m_demande.maitresses}, bilan,
                           m_resultat.erreur))
        return false;
      autres(L"polylignes déjà sur les calques des courbes, qui restent : %d", bilan.anciennes);
      m_resultat.courbes = bilan.courbes;
      m_resultat.maitresses = bilan.maitresses;
      if (bilan.interrompu) return echec(L"interrompu");
    }
    if (m_demande.faces) {
      m_resultat.facesDessinees = dessinerFaces(m_dessin, surface, m_resultat.erreur);
      if (m_resultat.facesDessinees < 0) return false;
    }
    return dessinerProfils();
  }

  /// One beside the other, below the drawing.
  bool dessinerProfils() {
    if (m_profils.empty()) return true;
    m_dessin.updateExt();
    AspectProfil aspect;
    aspect.exageration = m_demande.exageration;
    aspect.coin = {m_dessin.extmin().x, m_dessin.extmin().y, 0.0};
    for (const Profil& profil : m_profils) {
      const double longueur = profil.back().back().distance;
      double haute = altitudeDeReference(profil);
      for (const std::vector<SommetProfil>& troncon : profil)
        for (const SommetProfil& s : troncon) haute = std::max(haute, s.point.z);
      aspect.hauteurTexte = std::max(longueur / 100.0, 0.1);
      const double hauteur = (haute - altitudeDeReference(profil)) * aspect.exageration;
      AspectProfil celui = aspect;
      celui.coin.y -= hauteur + 10.0 * aspect.hauteurTexte;
      if (!dessinerProfil(m_dessin, profil, celui, m_resultat.erreur)) return false;
      ++m_resultat.profils;
      m_resultat.placesProfils += static_cast<int>(nombreDePlaces(profil));
      aspect.coin.x += std::max(longueur, 32.0 * aspect.hauteurTexte) + 10.0 * aspect.hauteurTexte;
    }
    return true;
  }

  AcDbDatabase& m_dessin;
  const DemandeTerrain& m_demande;
  ResultatTerrain& m_resultat;
  ChoixCodes m_codes;
  std::vector<std::vector<AcGePoint3d>> m_axes;
  std::vector<Profil> m_profils;
};

}  // namespace

bool travailler(AcDbDatabase& dessin, const DemandeTerrain& demande, ResultatTerrain& resultat) {
  return Travail(dessin, demande, resultat).faire();
}

void decrire(const Terrain& terrain, ResultatTerrain& resultat) {
  const Triangulation& surface = terrain.surface();
  resultat.nom = terrain.modele().nom;
  resultat.sommets = static_cast<int>(surface.sommets().size());
  resultat.lignes = static_cast<int>(terrain.modele().lignes.size());
  resultat.basse = 1e300;
  resultat.haute = -1e300;
  for (const Face& face : surface.faces()) {
    if (!face.sol) continue;
    ++resultat.faces;
    AcGePoint3d c[3];
    for (std::size_t i = 0; i < 3; ++i) {
      c[i] = surface.sommets()[static_cast<std::size_t>(face.sommets[i])];
      resultat.basse = std::min(resultat.basse, c[i].z);
      resultat.haute = std::max(resultat.haute, c[i].z);
    }
    resultat.surface += ((c[1].x - c[0].x) * (c[2].y - c[0].y) - (c[1].y - c[0].y) * (c[2].x - c[0].x)) / 2.0;
  }
}

}  // namespace veltora::terrain
