#include "host/lisp/lisp_xdata.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/text.h"
#include "core/resbuf_serializer.h"
#include "core/xdata_names.h"
#include "host/lisp/arguments_lisp.h"

namespace veltora {
namespace {

// Group codes of extended data.
constexpr int kDonneesEtendues = -3;
constexpr int kNomApplication = 1001;
constexpr int kAccolade = 1002;
constexpr int kTexte = 1000;
constexpr int kReel = 1040;
constexpr int kCourt = 1070;

int echouer(const ACHAR* message) {
  acutPrintf(L"%s", message);
  return acedRetNil();
}

/// The items of a list as extended data. @return false for an item of another type
bool convertirListe(const resbuf* liste, chaineResbuf& valeurs) {
  for (const resbuf* element = liste->rbnext; element && element->restype != RTLE;
       element = element->rbnext) {
    if (element->restype == RTREAL)
      valeurs.ajouter(acutBuildList(kReel, element->resval.rreal, RTNONE));
    else if (element->restype == RTSHORT)
      valeurs.ajouter(acutBuildList(kCourt, element->resval.rint, RTNONE));
    else if (argumentsLisp::estTexte(element))
      valeurs.ajouter(acutBuildList(kTexte, element->resval.rstring, RTNONE));
    else
      return false;
  }
  return true;
}

/// The second argument as extended data. @return null, or the message that tells why not
const ACHAR* convertir(const resbuf* argument, chaineResbuf& valeurs) {
  const int type = argument->restype;
  if (type == RTPOINT || type == RT3DPOINT) {
    for (int i = 0; i < (type == RTPOINT ? 2 : 3); ++i)
      valeurs.ajouter(acutBuildList(kReel, argument->resval.rpoint[i], RTNONE));
    return nullptr;
  }
  if (type == RTLB)
    return convertirListe(argument, valeurs) ? nullptr
                                             : L"\nMauvais type d'element dans la liste (buildxdata)";
  acutPrintf(L"\nType 2 eme param=%d", type);
  return L"\n2 eme param doit etre une liste de Xdata";
}

bool memeValeur(const resbuf& a, const resbuf& b) {
  if (a.restype != b.restype) return false;
  if (a.restype == kTexte) return base::compareNoCase(a.resval.rstring, b.resval.rstring) == 0;
  if (a.restype == kReel) return a.resval.rreal == b.resval.rreal;
  return a.restype == kCourt && a.resval.rint == b.resval.rint;
}

bool estAccolade(const resbuf* element, const wchar_t* signe) {
  return element && element->restype == kAccolade && element->resval.rstring &&
         std::wstring_view(element->resval.rstring) == signe;
}

/// The opening brace of the section whose first value is this one; null when there is none.
resbuf* trouverSection(resbuf* chaine, const resbuf& premiere) {
  for (resbuf* element = chaine; element; element = element->rbnext)
    if (estAccolade(element, L"{") && element->rbnext && memeValeur(*element->rbnext, premiere))
      return element;
  return nullptr;
}

/// Moves the values in place of what stands between the brace and the closing one, which stays.
void remplacerContenu(resbuf* accolade, chaineResbuf& valeurs) {
  resbuf* ancien = accolade->rbnext;
  resbuf* dernier = accolade;
  while (dernier->rbnext && !estAccolade(dernier->rbnext, L"}")) dernier = dernier->rbnext;
  resbuf* fermante = dernier->rbnext;
  dernier->rbnext = nullptr;
  if (dernier != accolade) acutRelRb(ancien);
  accolade->rbnext = valeurs.tete;
  valeurs.queue->rbnext = fermante;
  valeurs.tete = valeurs.queue = valeurs.curseur = nullptr;
}

bool contient(const resbuf* chaine, int type) {
  for (; chaine; chaine = chaine->rbnext)
    if (chaine->restype == type) return true;
  return false;
}

/// Appends a new section, behind the marker and the application's name when these are missing.
void ajouterSection(chaineResbuf& entite, chaineResbuf& valeurs) {
  if (!contient(entite.tete, kDonneesEtendues)) entite.ajouter(acutNewRb(kDonneesEtendues));
  if (!contient(entite.tete, kNomApplication))
    entite.ajouter(acutBuildList(kNomApplication, kXDataVeltora, RTNONE));
  entite.ajouter(acutBuildList(kAccolade, L"{", RTNONE));
  while (resbuf* valeur = valeurs.tete) {
    valeurs.tete = valeur->rbnext;
    valeur->rbnext = nullptr;
    entite.ajouter(valeur);
  }
  valeurs.queue = valeurs.curseur = nullptr;
  entite.ajouter(acutBuildList(kAccolade, L"}", RTNONE));
}

int numeroErreur() {
  resbuf valeur{};
  return acedGetVar(L"ERRNO", &valeur) == RTNORM ? valeur.resval.rint : 0;
}

}  // namespace

int lispSxd() {
  const argumentsLisp args(acedGetArgs());
  const resbuf* nom = args.element(0);
  const resbuf* donnees = args.element(1);
  if (!nom) return echouer(L"\nNombre de parametres insuffisant");
  if (nom->restype != RTENAME) return echouer(L"\n1er param doit etre un nom d'entite");
  if (!donnees) return echouer(L"\nNombre de parametres insuffisant");
  chaineResbuf valeurs;
  if (const ACHAR* message = convertir(donnees, valeurs)) return echouer(message);
  const argumentsLisp application(acutBuildList(RTSTR, kXDataVeltora, RTNONE));
  chaineResbuf entite(acdbEntGetX(nom->resval.rlname, application.chaine()));
  if (!entite.tete) return acedRetNil();
  acdbRegApp(kXDataVeltora);
  resbuf* section = valeurs.tete ? trouverSection(entite.tete, *valeurs.tete) : nullptr;
  if (section)
    remplacerContenu(section, valeurs);
  else
    ajouterSection(entite, valeurs);
  if (acdbEntMod(entite.tete) != RTNORM) acutPrintf(L"\nErreur de entmod=%d", numeroErreur());
  return RTNORM;
}

}  // namespace veltora
