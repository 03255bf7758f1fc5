#include "host/lisp/lisp_utilisateur.h"

#include "arx/ed/acedads.h"
#include "arx/ed/edroutines.h"
#include "base/text.h"
#include "core/installation.h"
#include "core/resbuf_serializer.h"
#include "host/lisp/arguments_lisp.h"

#include <filesystem>

namespace veltora {
namespace {

using Args = argumentsLisp;

int refuser(const ACHAR* message) {
  acutPrintf(L"%s", message);
  return acedRetNil();
}

}  // namespace

int lispAnalyse() {
  const Args args(acedGetArgs());
  if (!Args::estTexte(args.element(0))) return acedRetNil();
  constexpr std::wstring_view kSeparateurs = L" ,\t\n";
  const std::wstring_view texte = args.element(0)->resval.rstring;
  chaineResbuf mots;
  for (std::size_t debut = texte.find_first_not_of(kSeparateurs); debut != std::wstring_view::npos;) {
    const std::size_t fin = std::min(texte.find_first_of(kSeparateurs, debut), texte.size());
    mots.ajouter(acutBuildList(RTSTR, std::wstring(texte.substr(debut, fin - debut)), RTNONE));
    debut = texte.find_first_not_of(kSeparateurs, fin);
  }
  return mots.tete ? acedRetList(mots.tete) : acedRetNil();
}

int lispKGetPt() {
  const Args args(acedGetArgs());
  const resbuf* invite = args.element(0);
  const resbuf* base = args.element(1);
  if (!invite) return refuser(L"\n1er param = NULL");
  if (!Args::estTexte(invite)) return refuser(L"\n1er param n'est pas une chaine");
  if (!base) return refuser(L"\n2eme param = NULL");
  const auto depart = lirePosition(base);
  if (!depart && base->restype != RTNIL) {
    acutPrintf(L"\n2eme param n'est pas un point, son code est %d", static_cast<int>(base->restype));
    return acedRetNil();
  }
  const ads_point origine = {depart ? depart->x : 0.0, depart ? depart->y : 0.0, depart ? depart->z : 0.0};
  ads_point resultat = {0.0, 0.0, 0.0};
  acedInitGet(RSG_NONULL, nullptr);
  if (acedGetPoint(depart ? origine : nullptr, invite->resval.rstring, resultat) != RTNORM)
    return acedRetNil();
  return acedRetPoint(resultat);
}

int lispVnDelFile() {
  const Args args(acedGetArgs());
  if (!Args::estTexte(args.element(0)) || !acedRoutineMayReach()) return acedRetNil();
  const std::filesystem::path fichier = cheminPlateforme(args.element(0)->resval.rstring);
  std::error_code erreur;
  const auto etat = std::filesystem::symlink_status(fichier, erreur);
  const bool supprimable = std::filesystem::is_regular_file(etat) || std::filesystem::is_symlink(etat);
  return supprimable && std::filesystem::remove(fichier, erreur) ? acedRetInt(1) : acedRetNil();
}

int lispWaitUser() {
  acutPrintf(L"\nAppuyez sur une touche pour continuer ");
  constexpr int kSuivi = 5;  // the mouse moved
  int type = kSuivi;
  resbuf resultat{};
  while (acedGrRead(0, &type, &resultat) == RTNORM && type == kSuivi) {
  }
  return RTNORM;
}

}  // namespace veltora
