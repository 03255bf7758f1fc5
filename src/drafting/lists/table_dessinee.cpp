// The coordinate table as drawn entities.
//
//   h       height of the texts
//   (x0,y0) upper left corner
//   width   extent of the widest text of a column; the column takes 1.2 times that

#include "drafting/lists/table_dessinee.h"

#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "base/format.h"
#include "base/suivi.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/drawing_table.h"
#include "core/valider_nombre.h"

#include <algorithm>
#include <memory>

namespace veltora {
namespace {

constexpr double kLargeurColonne = 1.2;  ///< of a column, in text widths
constexpr double kMarges = 0.2;          ///< of a cell of a table, in text heights
constexpr double kMilieu = 0.6;
constexpr double kBordDroit = 1.1;
constexpr double kBordGauche = 0.1;
constexpr double kInterligne = 1.8;  ///< in text heights, likewise the next
constexpr double kBase = 1.1;        ///< from the top of a row to its base line
constexpr double kTrait = 1.4;       ///< from the top of a row to the line under it

struct colonneTable {
  std::wstring titre;
  std::vector<std::wstring> textes;
  double largeur = 0.0;
};

/// Writes into the current space.
class crayon : private Uncopyable {
public:
  crayon(AcDbDatabase& db, double hauteur)
      : m_espace(&db, DrawingSpace::kCurrent), m_style(db.textstyle()), m_hauteur(hauteur) {}
  [[nodiscard]] bool pret() const { return m_espace.ready(); }
  [[nodiscard]] double largeur(const std::wstring& texte) const {
    return acdbTextExtents(texte, m_style, m_hauteur, 0.0).width;
  }
  void texte(double x, double y, const std::wstring& texte, AcDb::TextHorzMode mode) {
    if (texte.empty()) return;
    auto entite = std::make_unique<AcDbText>(AcGePoint3d(x, y, 0.0), texte.c_str(), m_style, m_hauteur);
    if (mode != AcDb::kTextLeft) {
      entite->setHorizontalMode(mode);
      entite->setAlignmentPoint(AcGePoint3d(x, y, 0.0));
    }
    m_espace.add(std::move(entite));
  }
  void trait(double x1, double y1, double x2, double y2) {
    m_espace.add(std::make_unique<AcDbLine>(AcGePoint3d(x1, y1, 0.0), AcGePoint3d(x2, y2, 0.0)));
  }
  void rectangle(double x1, double y1, double x2, double y2) {
    auto cadre = std::make_unique<AcDbPolyline>(4U);
    const AcGePoint2d coins[] = {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
    for (unsigned int i = 0; i < 4; ++i) cadre->addVertexAt(i, coins[i]);
    cadre->setClosed(true);
    m_espace.add(std::move(cadre));
  }

private:
  DrawingSpace m_espace;
  AcDbObjectId m_style;
  double m_hauteur;
};

std::wstring valeur(double nombre, int decimales) {
  if (nombre == Z_ABSENT) return {};
  return base::formater(base::formater(L"%%.%df", std::clamp(decimales, 0, 99)), nombre);
}

template <class Texte>
void ajouterColonne(std::vector<colonneTable>& colonnes, bool voulue, const wchar_t* titre,
                    const std::vector<pointDuDessin>& points, Texte texteDe) {
  if (!voulue) return;
  colonneTable colonne;
  colonne.titre = titre;
  colonne.textes.reserve(points.size());
  for (const pointDuDessin& point : points) colonne.textes.push_back(texteDe(point));
  colonnes.push_back(std::move(colonne));
}

std::vector<colonneTable> colonnesDe(const paramsTableXYZ& p, const std::vector<pointDuDessin>& points,
                                     tableCodification& codes) {
  using Point = pointDuDessin;
  std::vector<colonneTable> c;
  ajouterColonne(c, p.numeros, L"Num", points, [](const Point& q) { return base::widen(q.nomPoint); });
  ajouterColonne(c, p.x, L"X", points, [&p](const Point& q) { return valeur(q.x, p.decimalesXY); });
  ajouterColonne(c, p.y, L"Y", points, [&p](const Point& q) { return valeur(q.y, p.decimalesXY); });
  ajouterColonne(c, p.z, L"Z", points, [&p](const Point& q) { return valeur(q.z, p.decimalesZ); });
  ajouterColonne(c, p.code, L"Code", points, [](const Point& q) { return base::formater(L"%d", q.code); });
  ajouterColonne(c, p.libelle, L"Libelle", points,
                 [&codes](const Point& q) { return codes.getLibelleCode(q.code); });
  return c;
}

/// @return the width of the whole table
double mesurer(std::vector<colonneTable>& colonnes, const crayon& dessin) {
  double total = 0.0;
  for (colonneTable& colonne : colonnes) {
    colonne.largeur = dessin.largeur(colonne.titre);
    for (const std::wstring& texte : colonne.textes)
      colonne.largeur = std::max(colonne.largeur, dessin.largeur(texte));
    total += colonne.largeur * kLargeurColonne;
  }
  return total;
}

/// The header with the lines that run through the whole table.
void dessinerEntete(const paramsTableXYZ& p, const std::vector<colonneTable>& colonnes, crayon& dessin,
                    const AcGePoint3d& coin, double largeur) {
  const double h = p.hauteur;
  const double bas = coin.y - static_cast<double>(colonnes.front().textes.size() + 1) * h * kInterligne;
  double x = coin.x;
  for (std::size_t i = 0; i < colonnes.size(); ++i) {
    dessin.texte(x + colonnes[i].largeur * kMilieu, coin.y - h * kBase, colonnes[i].titre, AcDb::kTextCenter);
    x += colonnes[i].largeur * kLargeurColonne;
    if ((p.cadre & paramsTableXYZ::kColonnes) && i + 1 < colonnes.size()) dessin.trait(x, coin.y, x, bas);
  }
  if (p.cadre & paramsTableXYZ::kEntete)
    dessin.trait(coin.x, coin.y - h * kTrait, coin.x + largeur, coin.y - h * kTrait);
  if (p.cadre & paramsTableXYZ::kEncadrer) dessin.rectangle(coin.x, coin.y, coin.x + largeur, bas);
}

/// Row k, counted from 1.
void dessinerLigne(const paramsTableXYZ& p, const std::vector<colonneTable>& colonnes, std::size_t k,
                   crayon& dessin, const AcGePoint3d& coin, double largeur) {
  const double haut = coin.y - static_cast<double>(k) * p.hauteur * kInterligne;
  double x = coin.x;
  for (const colonneTable& colonne : colonnes) {
    const std::wstring& texte = colonne.textes[k - 1];
    const bool nombre = validerNombre(texte);
    dessin.texte(x + colonne.largeur * (nombre ? kBordDroit : kBordGauche), haut - p.hauteur * kBase, texte,
                 nombre ? AcDb::kTextRight : AcDb::kTextLeft);
    x += colonne.largeur * kLargeurColonne;
  }
  if (p.cadre & paramsTableXYZ::kLignes) {
    const double y = haut - p.hauteur * kTrait;
    dessin.trait(coin.x, y, coin.x + largeur, y);
  }
}

}  // namespace

bool dessinerTableXYZ(const paramsTableXYZ& params, const std::vector<pointDuDessin>& points,
                      tableCodification& codes, const AcGePoint3d& coin) {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (!db || points.empty() || params.aucuneColonne()) return false;
  std::vector<colonneTable> colonnes = colonnesDe(params, points, codes);
  crayon dessin(*db, params.hauteur);
  if (!dessin.pret()) return false;
  const double largeur = mesurer(colonnes, dessin);
  dessinerEntete(params, colonnes, dessin, coin, largeur);
  base::Suivi suivi(static_cast<long long>(points.size()));
  for (std::size_t k = 1; k <= points.size(); ++k) {
    dessinerLigne(params, colonnes, k, dessin, coin, largeur);
    suivi.avancer();
    if (suivi.arrete()) break;
  }
  return true;
}

AcDbObjectId placerTableXYZ(const paramsTableXYZ& params, const std::vector<pointDuDessin>& points,
                            tableCodification& codes, const AcGePoint3d& coin) {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (!db || points.empty() || params.aucuneColonne()) return {};
  std::vector<colonneTable> colonnes = colonnesDe(params, points, codes);
  mesurer(colonnes, crayon(*db, params.hauteur));
  std::vector<TableColumn> entetes;
  // The margins of its cells belong to a column of a table.
  for (const colonneTable& colonne : colonnes)
    entetes.push_back({colonne.titre, std::max(colonne.largeur, params.hauteur) * kLargeurColonne +
                                          kMarges * params.hauteur});
  std::unique_ptr<AcDbTable> table =
      textTable(*db, entetes, points.size(), params.hauteur, params.hauteur * kInterligne,
                [&](std::size_t ligne, std::size_t c) { return colonnes[c].textes[ligne]; });
  if (!table) return {};
  table->setPosition(coin);
  for (std::size_t c = 0; c < colonnes.size(); ++c)
    for (std::size_t ligne = 0; ligne < points.size(); ++ligne)
      if (!validerNombre(colonnes[c].textes[ligne]))
        table->setAlignment(static_cast<int>(ligne) + 1, static_cast<int>(c), AcDb::kMiddleLeft);
  DrawingSpace espace(db, DrawingSpace::kCurrent);
  return addTable(espace, std::move(table));
}

}  // namespace veltora
