#include "terrain/stockage.h"

#include "arx/db/dbmain.h"
#include "base/free_number.h"

#include <memory>

namespace veltora::terrain {
namespace {

constexpr const wchar_t* kDictionnaire = L"VELTORA_TERRAINS";
constexpr const wchar_t* kCourant = L"COURANT";
constexpr std::string_view kTitre = "VELTORA terrain";
constexpr Adesk::Int64 kVersion = 1;

// Groups of a record.
constexpr int kTexte = 1;
constexpr int kReel = 40;
constexpr int kEntier = 90;
constexpr int kX = 10;
constexpr int kY = 20;
constexpr int kZ = 30;

using Dictionnaire = AcDbObjectPointer<AcDbDictionary>;

/// Reads groups in their order; the first that does not fit ends it.
class Lecteur {
public:
  explicit Lecteur(const DxfTagText& groupes) : m_curseur(groupes.tags()) {}
  bool texte(std::string_view& valeur) {
    if (!suivant(kTexte)) return false;
    valeur = m_groupe.value;
    return true;
  }
  bool reel(int code, double& valeur) { return suivant(code) && dxfParseReal(m_groupe.value, valeur); }
  bool entier(int& valeur) {
    Adesk::Int64 lu = 0;
    if (!suivant(kEntier) || !dxfParseInteger(m_groupe.value, lu) || lu < 0 || lu > 0x7FFFFFFF) return false;
    valeur = static_cast<int>(lu);
    return true;
  }
  /// A count, then as many items: no memory is taken for what does not come.
  template <class Lire>
  bool suite(Lire lire) {
    int nombre = 0;
    if (!entier(nombre)) return false;
    for (int i = 0; i < nombre; ++i)
      if (!lire()) return false;
    return true;
  }
  bool fini() { return !m_curseur.next(m_groupe); }

private:
  bool suivant(int code) { return m_curseur.next(m_groupe) && m_groupe.code == code; }

  DxfTagText::Cursor m_curseur;
  DxfTag m_groupe;
};

AcDbObjectId idDictionnaire(AcDbDatabase& dessin) {
  AcDbObjectId id;
  const Dictionnaire racine(dessin.namedObjectsDictionaryId());
  if (racine.openStatus() == Acad::eOk) racine->getAt(kDictionnaire, id);
  return id;
}

AcDbObjectId idDictionnaireOuNouveau(AcDbDatabase& dessin) {
  AcDbObjectId id = idDictionnaire(dessin);
  if (!id.isNull()) return id;
  const Dictionnaire racine(dessin.namedObjectsDictionaryId(), AcDb::kForWrite);
  auto nouveau = std::make_unique<AcDbDictionary>();
  if (racine.openStatus() != Acad::eOk || racine->setAt(kDictionnaire, nouveau.get(), id) != Acad::eOk)
    return {};
  nouveau.release()->close();
  return id;
}

AcDbObjectId poser(AcDbDictionary& dictionnaire, const std::wstring& cle, DxfTagText groupes) {
  AcDbObjectId id;
  auto record = std::make_unique<AcDbXrecord>();
  record->setTags(std::move(groupes));
  if (dictionnaire.setAt(cle.c_str(), record.get(), id) != Acad::eOk) return {};
  record.release()->close();
  return id;
}

bool nommer(AcDbDictionary& dictionnaire, const std::wstring& cle) {
  DxfTagText groupes;
  groupes.append(kTexte, dxfFromWide(cle));
  return !poser(dictionnaire, kCourant, std::move(groupes)).isNull();
}

bool estTerrain(const AcDbDictionary::Entry& entree) {
  const AcDbObjectPointer<AcDbXrecord> record(entree.id);
  if (record.openStatus() != Acad::eOk) return false;
  std::string_view titre;
  return Lecteur(record->tags()).texte(titre) && titre == kTitre;
}

std::wstring cleDe(const AcDbDictionary& dictionnaire, AcDbObjectId id) {
  for (const AcDbDictionary::Entry& entree : dictionnaire.entries())
    if (entree.id == id) return entree.key;
  return {};
}

}  // namespace

DxfTagText ecrireModele(const Modele& modele) {
  DxfTagText g;
  g.append(kTexte, kTitre);
  g.appendInteger(kEntier, kVersion);
  g.append(kTexte, dxfFromWide(modele.nom));
  g.appendReal(kReel, modele.areteMaximale);
  const auto nombre = [&g](std::size_t n) { g.appendInteger(kEntier, static_cast<Adesk::Int64>(n)); };
  nombre(modele.sommets.size());
  for (const AcGePoint3d& s : modele.sommets) {
    g.appendReal(kX, s.x);
    g.appendReal(kY, s.y);
    g.appendReal(kZ, s.z);
  }
  nombre(modele.lignes.size());
  for (const auto& [de, a] : modele.lignes) {
    g.appendInteger(kEntier, de);
    g.appendInteger(kEntier, a);
  }
  nombre(modele.limites.size());
  for (const std::vector<AcGePoint2d>& contour : modele.limites) {
    nombre(contour.size());
    for (const AcGePoint2d& p : contour) {
      g.appendReal(kX, p.x);
      g.appendReal(kY, p.y);
    }
  }
  nombre(modele.facettes.size());
  for (const std::array<int, 3>& facette : modele.facettes)
    for (const int numero : facette) g.appendInteger(kEntier, numero);
  return g;
}

bool lireModele(const DxfTagText& groupes, Modele& modele) {
  Modele lu;
  Lecteur lecteur(groupes);
  std::string_view titre;
  std::string_view nom;
  int version = 0;
  if (!lecteur.texte(titre) || titre != kTitre || !lecteur.entier(version) || version != kVersion)
    return false;
  if (!lecteur.texte(nom) || !lecteur.reel(kReel, lu.areteMaximale)) return false;
  lu.nom = dxfToWide(nom);
  const bool entier = lecteur.suite([&] {
    AcGePoint3d& s = lu.sommets.emplace_back();
    return lecteur.reel(kX, s.x) && lecteur.reel(kY, s.y) && lecteur.reel(kZ, s.z);
  }) && lecteur.suite([&] {
    auto& [de, a] = lu.lignes.emplace_back();
    return lecteur.entier(de) && lecteur.entier(a);
  }) && lecteur.suite([&] {
    std::vector<AcGePoint2d>& contour = lu.limites.emplace_back();
    return lecteur.suite([&] {
      AcGePoint2d& p = contour.emplace_back();
      return lecteur.reel(kX, p.x) && lecteur.reel(kY, p.y);
    });
  }) && lecteur.suite([&] {
    std::array<int, 3>& f = lu.facettes.emplace_back();
    return lecteur.entier(f[0]) && lecteur.entier(f[1]) && lecteur.entier(f[2]);
  });
  if (!entier || !lecteur.fini() || !estValable(lu)) return false;
  modele = std::move(lu);
  return true;
}

std::vector<AcDbObjectId> enregistrements(AcDbDatabase& dessin) {
  std::vector<AcDbObjectId> ids;
  const Dictionnaire dictionnaire(idDictionnaire(dessin));
  if (dictionnaire.openStatus() != Acad::eOk) return ids;
  for (const AcDbDictionary::Entry& entree : dictionnaire->entries())
    if (entree.id.isLive() && estTerrain(entree)) ids.push_back(entree.id);
  return ids;
}

AcDbObjectId enregistrementCourant(AcDbDatabase& dessin) {
  const std::vector<AcDbObjectId> tous = enregistrements(dessin);
  if (tous.empty()) return {};
  const Dictionnaire dictionnaire(idDictionnaire(dessin));
  AcDbObjectId id;
  if (dictionnaire->getAt(kCourant, id) == Acad::eOk) {
    const AcDbObjectPointer<AcDbXrecord> record(id);
    std::string_view cle;
    AcDbObjectId nomme;
    if (record.openStatus() == Acad::eOk && Lecteur(record->tags()).texte(cle) &&
        dictionnaire->getAt(dxfToWide(cle).c_str(), nomme) == Acad::eOk)
      for (const AcDbObjectId& un : tous)
        if (un == nomme) return un;
  }
  return tous.back();
}

AcDbObjectId enregistrer(AcDbDatabase& dessin, const Modele& modele) {
  const Dictionnaire dictionnaire(idDictionnaireOuNouveau(dessin), AcDb::kForWrite);
  if (dictionnaire.openStatus() != Acad::eOk) return {};
  const auto cle = [](int rang) { return L"T" + std::to_wstring(rang); };
  const int libre = base::freeNumber([&](int rang) { return dictionnaire->has(cle(rang).c_str()); });
  const AcDbObjectId id = poser(*dictionnaire, cle(libre), ecrireModele(modele));
  if (!id.isNull()) nommer(*dictionnaire, cle(libre));
  return id;
}

bool rendreCourant(AcDbDatabase& dessin, AcDbObjectId enregistrement) {
  const Dictionnaire dictionnaire(idDictionnaire(dessin), AcDb::kForWrite);
  if (dictionnaire.openStatus() != Acad::eOk) return false;
  const std::wstring cle = cleDe(*dictionnaire, enregistrement);
  return !cle.empty() && nommer(*dictionnaire, cle);
}

bool supprimer(AcDbDatabase& dessin, AcDbObjectId enregistrement) {
  const Dictionnaire dictionnaire(idDictionnaire(dessin), AcDb::kForWrite);
  if (dictionnaire.openStatus() != Acad::eOk) return false;
  const std::wstring cle = cleDe(*dictionnaire, enregistrement);
  if (cle.empty()) return false;
  return dictionnaire->remove(cle.c_str()) == Acad::eOk;
}

}  // namespace veltora::terrain
