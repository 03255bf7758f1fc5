#include "jobs/rendre.h"

#include "arx/db/dbmain.h"
#include "arx/plot/plcairo.h"
#include "arx/plot/plpdf.h"
#include "arx/plot/plsvg.h"
#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/drawing_records.h"
#include "jobs/echec.h"
#include "jobs/mise_en_page.h"
#include "jobs/resultat_points.h"

#include <filesystem>
#include <memory>

namespace veltora {
namespace {

constexpr double kPlusDePoints = 1e8;  // of a PNG

/// What was left out makes the picture doubtful.
void raconter(const AcPlOmissions& omis, base::Remarques& remarques) {
  std::wstring genres;
  for (const auto& [genre, nombre] : omis.kinds)
    genres += base::formater(L"%ls%d %ls", genres.empty() ? L"" : L", ", nombre, base::fromUtf8(genre));
  if (!genres.empty()) remarques.douter(L"entités qui ne sont pas tracées : " + genres);
  std::wstring polices;
  for (const std::wstring& police : omis.fonts) polices += (polices.empty() ? L"" : L", ") + police;
  if (!polices.empty()) remarques.ajouter(L"polices remplacées par DejaVu Sans : " + polices);
  if (omis.places > 0)
    remarques.douter(base::formater(L"entités aux coordonnées sans valeur, non tracées : %d", omis.places));
  if (omis.texts > 0)
    remarques.douter(
        base::formater(L"textes plus hauts que deux mètres de papier, non tracés : %d", omis.texts));
  if (omis.repeats > 0)
    remarques.douter(
        base::formater(L"blocs en plus de 100 000 rangées et colonnes, tracés une fois : %d", omis.repeats));
  if (omis.slanted > 0)
    remarques.douter(base::formater(
        L"fenêtres de la présentation qui ne regardent pas d'en haut, laissées vides : %d", omis.slanted));
  if (omis.clipped > 0)
    remarques.douter(
        base::formater(L"fenêtres de la présentation dont le contour libre manque, tracées en rectangle : %d",
                       omis.clipped));
}

std::unique_ptr<AcPlPen> plumePour(const std::wstring& genre, const AcPlPaper& papier,
                                   base::Remarques& remarques, std::wstring& raison) {
  if (genre == L"svg") return std::make_unique<AcPlSvgPen>(papier);
  const double points =
      papier.width * papier.height * (papier.dotsPerInch / 25.4) * (papier.dotsPerInch / 25.4);
  if (genre == L"png" && points > kPlusDePoints) {
    raison =
        L"l'image aurait plus de 100 millions de points : moins de points par pouce, ou un papier plus petit";
    return nullptr;
  }
  std::string why;
  if (genre == L"pdf") {
    if (auto plume = acplPdfPen(papier, why)) return plume;
    remarques.ajouter(L"PDF sans calques : " + base::fromUtf8(why));
  }
  auto plume = acplCairoPen(papier, genre == L"pdf" ? AcPlCairoKind::kPdf : AcPlCairoKind::kPng, why);
  raison = base::fromUtf8(why);
  return plume;
}

}  // namespace

bool rendreDessin(const demandeRendu& demande, resultatRendu& resultat) {
  resultat = {};
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return echec(resultat, kSansProjet);
  const std::filesystem::path chemin = base::cheminDuTexte(demande.fichier);
  const std::wstring genre = base::terminaison(chemin);
  if (genre != L"pdf" && genre != L"svg" && genre != L"png")
    return echec(resultat, L"« " + demande.fichier + L" » : les plans s'écrivent en .pdf, .svg ou .png");
  for (const std::wstring& nom : demande.calques)
    if (recordNamed(dessin->layerTableId(), nom).isNull())
      return echec(resultat, L"le dessin n'a pas de calque « " + nom + L" »");
  miseEnPage mise;
  if (!mettreEnPage(*dessin, demande, mise, resultat)) return false;
  const AcPlView& view = mise.vue;
  std::wstring raison;
  const std::unique_ptr<AcPlPen> plume = plumePour(genre, view.paper, resultat.remarques, raison);
  if (!plume) return echec(resultat, raison);
  raconter(mise.presentation ? acplPlotLayout(*dessin, *mise.presentation, view, *plume)
                             : acplPlot(*dessin, dessin->modelSpaceId(), view, *plume),
           resultat.remarques);
  std::string contenu;
  std::string why;
  if (!plume->finish(contenu, why) || !base::remplacerFichier(chemin, contenu, &why))
    return echec(resultat, base::fromUtf8(why));
  return true;
}

}  // namespace veltora
