#include "drafting/sheet/planche.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbtextsize.h"
#include "base/text.h"
#include "base/uncopyable.h"
#include "core/drawing_space.h"
#include "core/installation.h"
#include "drafting/sheet/planches_dessin.h"
#include "points/bloc_fichier.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace veltora {
namespace {

constexpr double kDroit = std::numbers::pi / 2.0;

AcGeVector2d direction(double angle) { return {std::cos(angle), std::sin(angle)}; }

/// Another current text style for a while.
class styleCourant : private Uncopyable {
public:
  explicit styleCourant(const AcDbObjectId& style)
      : m_dessin(*acdbHostApplicationServices()->workingDatabase()), m_ancien(m_dessin.textstyle()) {
    m_change = !style.isNull() && style != m_ancien;
    if (m_change) m_dessin.setTextstyle(style);
  }
  ~styleCourant() {
    if (m_change) m_dessin.setTextstyle(m_ancien);
  }

private:
  AcDbDatabase& m_dessin;
  AcDbObjectId m_ancien;
  bool m_change = false;
};

}  // namespace

std::wstring dossierCartouches() { return base::fromUtf8((dossierInstallation() / "Cartouches").string()); }

bool lireCartouche(const std::wstring& chemin, fichierCartouche& cartouche, std::wstring& raison) {
  auto dessin = std::make_unique<AcDbDatabase>(false, true);
  if (dessin->readDwgFile(chemin.c_str(), &raison) != Acad::eOk || dessin->updateExt() != Acad::eOk)
    return false;
  const AcGePoint3d extmin = dessin->extmin();
  const AcGePoint3d extmax = dessin->extmax();
  const AcGePoint3d insbase = dessin->insbase();
  cartouche = {chemin, std::move(dessin), extmin, extmax, insbase};
  return true;
}

planche::planche(const demandePlanche& demande, const fichierCartouche& cartouche, const AcGePoint2d& point,
                 bool milieu, double orientation)
    : m_demande(demande),
      m_cartouche(cartouche),
      m_u(direction(orientation)),
      m_v(direction(orientation + kDroit)),
      m_orientation(orientation),
      m_origine(point) {
  const double s = demande.echelle;
  const double largeur = demande.papier.x * s;
  const double hauteur = demande.papier.y * s;
  if (milieu) m_origine = avancer(point, -largeur * 0.5, -hauteur * 0.5);
  const double marge = demande.margePapier * s;
  const AcGePoint2d q = m_origine + direction(orientation + kDroit / 2.0) * (std::numbers::sqrt2 * marge);
  const double l = largeur - 2.0 * marge;
  const double h = hauteur - 2.0 * marge;
  m_cadre[kBasGauche] = q;
  m_cadre[kBasDroite] = avancer(q, l, 0.0);
  m_cadre[kHautGauche] = avancer(q, 0.0, h);
  m_cadre[kHautDroite] = avancer(q, l, h);
}

AcGePoint2d planche::avancer(const AcGePoint2d& point, double longueur, double hauteur) const {
  return point + m_u * longueur + m_v * hauteur;
}

AcDbPolyline planche::rectangle(const AcGePoint2d& coin, double longueur, double hauteur) const {
  AcDbPolyline polyligne(4);
  for (const AcGePoint2d& sommet :
       {coin, avancer(coin, longueur, 0.0), avancer(coin, longueur, hauteur), avancer(coin, 0.0, hauteur)})
    polyligne.addVertexAt(polyligne.numVerts(), sommet);
  polyligne.setClosed(true);
  return polyligne;
}

/// How far the grid's region stays away from the frame, for the crosses and texts that reach out of it.
double planche::retrait() const {
  const double chiffre =
      acdbTextExtents(L"0", m_demande.styleTexte, m_demande.hauteurTexte, 0.0).width * m_demande.echelle;
  const double plusLoin = std::max(std::abs(m_origine.x), std::abs(m_origine.y));
  const int chiffres = static_cast<int>(std::log10(plusLoin + 1.0)) + m_demande.decimales;
  // Deliberate (planche-retrait): the size of the crosses is not brought to scale here, that of the texts is.
  return m_demande.tailleCroisillons * 0.5 + chiffre * (chiffres + 2);
}

std::optional<AcDbPolyline> planche::region() const {
  if (m_demande.modeCarroyage == demandePlanche::kSansCarroyage) return std::nullopt;
  const int coin = m_demande.positionCartouche;
  const bool droite = coin == kBasDroite || coin == kHautDroite;
  const bool haut = coin == kHautGauche || coin == kHautDroite;
  const double bw = m_cartouche.largeur() * m_demande.echelle;
  const double bh = m_cartouche.hauteur() * m_demande.echelle;
  const double d = retrait();
  double l = m_cadre[kBasGauche].distanceTo(m_cadre[kBasDroite]) - 2.0 * d;
  double h = m_cadre[kBasGauche].distanceTo(m_cadre[kHautGauche]) - 2.0 * d;
  AcGePoint2d bas = avancer(m_cadre[kBasGauche], d, d);
  if (m_demande.modeCarroyage == demandePlanche::kPasACoteDuCartouche) {
    // Deliberate (planche-cote): on an upright format the whole side below or above the block is left out, on
    // a lying one the whole side left or right of it.
    const bool debout = m_demande.papier.x <= m_demande.papier.y;
    if (debout ? !haut : !droite) bas = avancer(bas, debout ? 0.0 : bw, debout ? bh : 0.0);
    (debout ? h : l) -= debout ? bh : bw;
    return l > 0.0 && h > 0.0 ? std::optional(rectangle(bas, l, h)) : std::nullopt;
  }
  if (!(l > bw && h > bh)) return std::nullopt;
  // Once round the frame; the block's corner gives way to three points, entered as one walks.
  AcDbPolyline polyligne;
  const auto ajouter = [&](double x, double y) {
    polyligne.addVertexAt(polyligne.numVerts(), avancer(bas, x, y));
  };
  for (const coinPlanche ici : {kBasGauche, kBasDroite, kHautDroite, kHautGauche}) {
    const bool iciDroite = ici == kBasDroite || ici == kHautDroite;
    const bool iciHaut = ici == kHautGauche || ici == kHautDroite;
    const double x = iciDroite ? l : 0.0;
    const double y = iciHaut ? h : 0.0;
    if (ici != coin) {
      ajouter(x, y);
      continue;
    }
    const double dx = iciDroite ? l - bw : bw;
    const double dy = iciHaut ? h - bh : bh;
    const bool dabordVertical = iciDroite == iciHaut;
    ajouter(dabordVertical ? x : dx, dabordVertical ? dy : y);
    ajouter(dx, dy);
    ajouter(dabordVertical ? dx : x, dabordVertical ? y : dy);
  }
  polyligne.setClosed(true);
  return polyligne;
}

ampleurCarroyage planche::ampleur() const {
  const std::optional<AcDbPolyline> ou = region();
  return ou ? estimerCarroyage(*ou, m_demande.espacementX, m_demande.espacementY) : ampleurCarroyage();
}

bool planche::inserer(resultat& fait) const {
  AcDbDatabase& dessin = *acdbHostApplicationServices()->workingDatabase();
  AcDbObjectId bloc;
  const std::wstring nom = nomBloc(m_cartouche.chemin);
  if (nom.empty() || dessin.insert(bloc, nom.c_str(), m_cartouche.dessin.get()) != Acad::eOk) return false;
  const int coin = m_demande.positionCartouche;
  const bool droite = coin == kBasDroite || coin == kHautDroite;
  const bool haut = coin == kHautGauche || coin == kHautDroite;
  const double echelle = m_demande.facteurCartouche * m_demande.echelle;
  const double x = (droite ? m_cartouche.extmax.x : m_cartouche.extmin.x) - m_cartouche.insbase.x;
  const double y = (haut ? m_cartouche.extmax.y : m_cartouche.extmin.y) - m_cartouche.insbase.y;
  const AcGePoint2d position = avancer(m_cadre[coin], -x * echelle, -y * echelle);
  DrawingSpace espace(&dessin, DrawingSpace::kCurrent);
  AcDbBlockReference* const reference =
      espace.addOpen(std::make_unique<AcDbBlockReference>(AcGePoint3d(position.x, position.y, 0.0), bloc));
  if (!reference) return false;
  reference->setScaleFactors(AcGeScale3d(echelle));
  reference->setRotation(m_orientation);
  ajouterAttributs(*reference);
  fait.attributs = ecrireAttributs(*reference, m_demande.attributs);
  reference->close();
  return true;
}

planche::resultat planche::dessiner() const {
  resultat fait;
  const double s = m_demande.echelle;
  const auto tracer = [](const AcDbPolyline& polyligne) {
    DrawingSpace(nullptr, DrawingSpace::kCurrent).add(std::make_unique<AcDbPolyline>(polyligne));
  };
  AcDbPolyline papier = rectangle(m_origine, m_demande.papier.x * s, m_demande.papier.y * s);
  marquerPlanche(papier, m_demande);
  tracer(papier);
  tracer(rectangle(m_cadre[kBasGauche], (m_demande.papier.x - 2.0 * m_demande.margePapier) * s,
                   (m_demande.papier.y - 2.0 * m_demande.margePapier) * s));
  if (m_cartouche.present()) fait.cartoucheInsere = inserer(fait);
  if (const std::optional<AcDbPolyline> ou = region()) {
    const styleCourant style(m_demande.styleTexte);
    fait.carroyage =
        dessinerCarroyage(*ou, m_demande.espacementX, m_demande.espacementY, m_demande.tailleCroisillons * s,
                          m_demande.hauteurTexte * s, false, m_demande.decimales);
  }
  return fait;
}

}  // namespace veltora
