#include "codes/legend/legende.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbcolor.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbtext.h"
#include "core/drawing_groups.h"
#include "core/drawing_space.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

namespace veltora {
namespace {

constexpr double kTailleMinimum = -1.0;  // below it a box is none
constexpr double kInterligne = 1.2;      // of the larger of the sizes
constexpr double kEcartTexte = 2.5;      // from a block's corner to its text, in sizes of blocks
constexpr double kTraitMinimum = 5.0;    // in heights of texts, likewise the next
constexpr double kEcartTrait = 3.0;

/// References in model space by what they show.
std::unordered_map<AcDbObjectId, int> occurrencesDe(AcDbDatabase& dessin) {
  std::unordered_map<AcDbObjectId, int> nombres;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  for (const AcDbObjectId& id : espace->entities()) {
    const AcDbObjectPointer<AcDbBlockReference> reference(id);
    if (reference.openStatus() == Acad::eOk) ++nombres[reference->blockTableRecord()];
  }
  return nombres;
}

/// A text for one line: what ends lines becomes a blank.
std::wstring surUneLigne(const std::wstring& texte) {
  std::wstring ligne;
  for (std::size_t i = 0; i < texte.size(); ++i) {
    const bool fin = texte[i] == L'\n' || texte[i] == L'\r';
    const bool suite = fin && i > 0 && texte[i - 1] == L'\r' && texte[i] == L'\n';
    if (!suite) ligne += fin ? L' ' : texte[i];
  }
  return ligne;
}

/// Puts the lines into the drawing, one below the other.
class traceurLegende {
public:
  traceurLegende(const demandeLegende& demande, const AcGePoint2d& coin)
      : m_demande(demande),
        m_dessin(*acdbHostApplicationServices()->workingDatabase()),
        m_espace(&m_dessin, DrawingSpace::kCurrent),
        m_x(coin.x),
        m_y(coin.y),
        m_pas(std::max(std::max(demande.tailleBlocs, demande.tailleTextes) * kInterligne,
                       demande.distanceLignes)) {}

  void ligneBloc(const ligneLegende& ligne) {
    const double taille = std::max(ligne.bloc.tailleX, ligne.bloc.tailleY);
    if (!(taille > 0.0)) return;
    auto reference = std::make_unique<AcDbBlockReference>(AcGePoint3d(), ligne.bloc.idBlock);
    const double echelle = m_demande.tailleBlocs / taille;
    reference->setScaleFactors(AcGeScale3d(echelle));
    AcDbExtents boite;
    if (reference->getGeomExtents(boite) != Acad::eOk) return;
    const AcGePoint3d& bas = boite.minPoint();
    reference->setPosition({m_x - bas.x, m_y - bas.y, -bas.z});
    ajouter(std::move(reference), {});
    texte(m_x + m_demande.tailleBlocs * kEcartTexte, ligne.description, {});
    m_y -= m_pas;
  }
  void ligneLayer(const AcDbObjectId& layer, const std::wstring& nom) {
    const double longueur = std::max(m_demande.tailleTextes * kTraitMinimum, m_demande.longueurTrait);
    auto trait =
        std::make_unique<AcDbLine>(AcGePoint3d(m_x, m_y, 0.0), AcGePoint3d(m_x + longueur, m_y, 0.0));
    ajouter(std::move(trait), layer);
    texte(m_x + longueur + m_demande.tailleTextes * kEcartTrait, nom, layer);
    m_y -= m_pas;
  }
  /// Joins what was drawn since the last time.
  void grouper() {
    if (m_demande.grouper) groupEntities(m_entites);
    m_entites.clear();
  }

private:
  void texte(double x, const std::wstring& contenu, const AcDbObjectId& layer) {
    ajouter(std::make_unique<AcDbText>(AcGePoint3d(x, m_y, 0.0), surUneLigne(contenu).c_str(),
                                       m_dessin.textstyle(), m_demande.tailleTextes),
            layer);
  }
  /// @param layer  null for the current one
  void ajouter(std::unique_ptr<AcDbEntity> entite, const AcDbObjectId& layer) {
    AcDbEntity* const ouverte = m_espace.addOpen(std::move(entite));
    if (!ouverte) return;
    ouverte->setColorIndex(kColorByLayer);
    ouverte->setLinetype(L"BYLAYER");
    if (!layer.isNull()) ouverte->setLayer(layer);
    m_entites.push_back(ouverte->objectId());
    ouverte->close();
  }
  const demandeLegende& m_demande;
  AcDbDatabase& m_dessin;
  DrawingSpace m_espace;
  double m_x;
  double m_y;
  double m_pas;
  std::vector<AcDbObjectId> m_entites;
};

}  // namespace

std::vector<infoBlocks> listerBlocs() {
  std::vector<infoBlocks> blocs;
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return blocs;
  const auto nombres = occurrencesDe(*dessin);
  const AcDbObjectPointer<AcDbSymbolTable> table(dessin->blockTableId());
  for (const AcDbObjectId& id : table->records()) {
    if (id == dessin->modelSpaceId() || id == dessin->paperSpaceId()) continue;
    const AcDbObjectPointer<AcDbBlockTableRecord> definition(id);
    if (definition.openStatus() != Acad::eOk || definition->isLayout()) continue;
    infoBlocks bloc;
    bloc.nom = definition->name();
    bloc.idBlock = id;
    const auto nombre = nombres.find(id);
    bloc.occurrences = nombre == nombres.end() ? 0 : nombre->second;
    AcDbExtents boite;
    AcDbBlockReference(AcGePoint3d(), id).getGeomExtents(boite);
    bloc.minX = boite.minPoint().x;
    bloc.minY = boite.minPoint().y;
    bloc.tailleX = boite.maxPoint().x - bloc.minX;
    bloc.tailleY = boite.maxPoint().y - bloc.minY;
    if (bloc.tailleX >= kTailleMinimum && bloc.tailleY >= kTailleMinimum) blocs.push_back(std::move(bloc));
  }
  return blocs;
}

void dessinerLegende(const std::vector<ligneLegende>& lignes, const demandeLegende& demande,
                     const AcGePoint2d& coin) {
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return;
  traceurLegende traceur(demande, coin);
  for (const ligneLegende& ligne : lignes) traceur.ligneBloc(ligne);
  traceur.grouper();
  if (!demande.legendeLayers) return;
  std::vector<std::pair<AcDbObjectId, std::wstring>> layers;
  {
    const AcDbObjectPointer<AcDbSymbolTable> table(dessin->layerTableId());
    for (const AcDbObjectId& id : table->records()) {
      const AcDbObjectPointer<AcDbSymbolTableRecord> layer(id);
      if (layer.openStatus() == Acad::eOk) layers.emplace_back(id, layer->name());
    }
  }
  for (const auto& [layer, nom] : layers) traceur.ligneLayer(layer, nom);
  traceur.grouper();
}

}  // namespace veltora
