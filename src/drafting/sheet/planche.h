#pragma once

#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "base/export.h"
#include "core/block_attributes.h"
#include "drafting/grid/carroyage.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltora {

/// The drawing of a title block, read without being opened.
struct fichierCartouche {
  std::wstring chemin;
  std::unique_ptr<AcDbDatabase> dessin;  ///< null: none is set
  AcGePoint3d extmin;                    ///< measured, of its model space; likewise the next
  AcGePoint3d extmax;
  AcGePoint3d insbase;

  [[nodiscard]] bool present() const { return dessin != nullptr; }
  [[nodiscard]] double largeur() const { return extmax.x - extmin.x; }
  [[nodiscard]] double hauteur() const { return extmax.y - extmin.y; }
};

/// Reads a title block; ".dwg" stands for ".dxf" too.
/// @param raison  in French, why not. @return false, `cartouche` unchanged, when the file is no drawing
VELTORA_API bool lireCartouche(const std::wstring& chemin, fichierCartouche& cartouche, std::wstring& raison);

/// The folder of the title blocks below the installation directory.
VELTORA_API std::wstring dossierCartouches();

/// A corner of the frame, and of the title block that lies there.
enum coinPlanche { kBasGauche, kBasDroite, kHautGauche, kHautDroite };

/// What a sheet is made of. Sizes are millimetres on paper, drawn `echelle` times as large.
struct demandePlanche {
  enum Carroyage { kSansCarroyage, kToutEspaceVide, kPasACoteDuCartouche };
  AcGePoint2d papier{840, 1188};
  double echelle = 1.0;  ///< the scale's denominator by 1000: drawing units (metres) a millimetre
  double margePapier = 10.0;
  int positionCartouche = kBasGauche;
  double facteurCartouche = 1.0;
  Carroyage modeCarroyage = kSansCarroyage;
  double espacementX = 100.0;  ///< drawing units, likewise the next
  double espacementY = 100.0;
  double tailleCroisillons = 5.0;
  double hauteurTexte = 2.5;
  AcDbObjectId styleTexte;  ///< null for the current one
  int decimales = 1;
  std::vector<valeurAttribut> attributs;  ///< for the title block
};

/// A sheet at its place. Nothing is drawn before `dessiner`.
class VELTORA_API planche {
public:
  /// @param cartouche  outlives the sheet
  /// @param point  the lower left corner of the paper, or its middle
  /// @param orientation  of its lower side, radians counter-clockwise from +X
  planche(const demandePlanche& demande, const fichierCartouche& cartouche, const AcGePoint2d& point,
          bool milieu, double orientation);

  [[nodiscard]] const AcGePoint2d& origine() const { return m_origine; }
  /// The corners of the frame in the order of `coinPlanche`.
  [[nodiscard]] const AcGePoint2d* cadre() const { return m_cadre; }
  /// Where the grid goes: the frame less a margin for its texts, and less the title block or the side with
  /// it. Nothing when no grid is wanted or no room is left for one.
  [[nodiscard]] std::optional<AcDbPolyline> region() const;
  /// What the grid would draw.
  [[nodiscard]] ampleurCarroyage ampleur() const;

  struct resultat {
    bool cartoucheInsere = true;  ///< false when one is set and the drawing takes no block of it
    int attributs = 0;            ///< set by the demand
    resultatCarroyage carroyage;
  };
  /// Draws paper, frame, title block and grid into the current space of the working drawing.
  resultat dessiner() const;

private:
  [[nodiscard]] AcGePoint2d avancer(const AcGePoint2d& point, double longueur, double hauteur) const;
  [[nodiscard]] double retrait() const;
  [[nodiscard]] AcDbPolyline rectangle(const AcGePoint2d& coin, double longueur, double hauteur) const;
  bool inserer(resultat& fait) const;

  const demandePlanche& m_demande;
  const fichierCartouche& m_cartouche;
  AcGeVector2d m_u;  ///< along the lower side
  AcGeVector2d m_v;  ///< along the left side
  double m_orientation;
  AcGePoint2d m_origine;  ///< lower left corner of the paper
  AcGePoint2d m_cadre[4];
};

}  // namespace veltora
