#include "jobs/tracer_clothoide.h"

#include "base/format.h"
#include "base/text.h"
#include "drafting/clothoids/imprimer_matrice.h"
#include "jobs/echec.h"
#include "jobs/resultat_points.h"

namespace veltora {
namespace {

std::wstring rayonEnTexte(double rayon) {
  return rayon > 0.0 ? base::formater(L"%.4f", rayon) : std::wstring(L"infini");
}

void ecrirePoints(const std::vector<pointClothoide>& points, resultatTracerClothoide& resultat) {
  resultat.points = static_cast<int>(points.size());
  resultat.texte +=
      L"\n     N°     Abscisse               X               Y          Rayon   Gisement (gr)\n";
  resultat.csv = "Abscisse;X;Y;Rayon;Gisement (gr)\r\n";
  int rang = 0;
  for (const pointClothoide& p : points) {
    const std::wstring rayon = rayonEnTexte(p.rayon);
    resultat.texte += base::formater(L"%7d %12.4f %15.4f %15.4f %14s %15.4f\n", ++rang, p.abscisse, p.point.x,
                                     p.point.y, rayon, p.gisement);
    resultat.csv += base::formater("%.4f;%.4f;%.4f;%s;%.4f\r\n", p.abscisse, p.point.x, p.point.y,
                                   p.rayon > 0.0 ? base::toUtf8(rayon) : std::string(), p.gisement);
  }
}

/// Vertices by a chord's distance are limited in number, so that the distance may be exceeded.
void controlerFleche(const clothoideConstruite& c, const std::vector<pointClothoide>& points, double fleche,
                     base::Remarques& remarques) {
  double ecart = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const double milieu = (points[i - 1].abscisse + points[i].abscisse) / 2.0;
    const AcGePoint2d q = c.courbe.pointEn(c.s1 + (c.s2 < c.s1 ? -milieu : milieu));
    const AcGePoint2d corde = points[i - 1].point + (points[i].point - points[i - 1].point) * 0.5;
    ecart = std::max(ecart, q.distanceTo(corde));
  }
  constexpr double kArrondi = 1.5;  // the middle of a chord is not just that of the arc
  if (ecart > fleche * kArrondi)
    remarques.douter(base::formater(
        L"une flèche de %.15g demanderait plus de 10000 points : elle atteint %.6f", fleche, ecart));
}

}  // namespace

bool tracerClothoide(const demandeTracerClothoide& demande, resultatTracerClothoide& resultat) {
  resultat = {};
  clothoideConstruite construite;
  if (const wchar_t* const raison = construireClothoide(demande.donnees, construite))
    return echec(resultat, raison);
  const std::vector<pointClothoide> points = listerPoints(construite, demande.pas, demande.fleche);
  if (points.empty()) return echec(resultat, L"ce pas donnerait plus d'un million de points");
  controlerClothoide(construite, resultat.remarques);
  if (demande.fleche > 0.0) controlerFleche(construite, points, demande.fleche, resultat.remarques);
  resultat.texte = decrireClothoide(construite);
  ecrirePoints(points, resultat);
  if (demande.matrice) analyserMatrice(construite.courbe.matriceVersMonde(), L"clothoïde");
  if (!demande.dessiner) return true;
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (resultat.retenu) return true;
  const clothoideDessinee dessinee = dessiner(construite.courbe, demande.couleur, demande.infos);
  resultat.sommets = dessinee.sommets;
  return !dessinee.polyligne.isNull() || echec(resultat, kSansProjet);
}

}  // namespace veltora
