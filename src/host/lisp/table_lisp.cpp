#include "host/lisp/table_lisp.h"

#include "arx/ed/acutads.h"
#include "arx/ed/edlisp.h"
#include "host/lisp/lisp_blocs_points.h"
#include "host/lisp/lisp_codes.h"
#include "host/lisp/lisp_decalage.h"
#include "host/lisp/lisp_dessin.h"
#include "host/lisp/lisp_dialogues.h"
#include "host/lisp/lisp_joindre.h"
#include "host/lisp/lisp_points.h"
#include "host/lisp/lisp_polylines.h"
#include "host/lisp/lisp_textes.h"
#include "host/lisp/lisp_utilisateur.h"
#include "host/lisp/lisp_xdata.h"

namespace veltora {

constexpr std::array<fonctionLisp, kNombreFonctionsLisp> tableFonctionsLisp{{
    {L"calctailleblock", lispCalcTailleBlock},
    {L"add_pt", lispAddPt},
    {L"analyse", lispAnalyse},
    {L"attrvisibility", lispAttrVisibility},
    {L"c:projpoly", lispProjPoly, {L"Points", L"Une polyligne par les points voisins"}},
    {L"c:vcode", lispVCode, {L"Points", L"Montre d'une croix les points d'un code"}},
    {L"ename_pt", lispEnamePt},
    {L"getsegtype", lispGetSegType},
    {nullptr, nullptr},  // kept free
    {L"k_getpt", lispKGetPt},
    {L"maxnum", lispMaxNum},
    {L"modif-attrib", lispModifAttrib},
    {L"reg_pts", lispRegPts},
    {L"select_all", lispSelectAll},
    {L"seloncode", lispSelOnCode},
    {L"selonnum", lispSelOnNum},
    {L"vndelfile", lispVnDelFile},
    {L"superpos", lispSuperpos},
    {L"sxd", lispSxd},
    {L"wait_user", lispWaitUser},
    {L"tpcdaddpt", lispTpcdAddPt},
    {L"loadcodept", lispLoadCodePt},
    {L"addcodept", lispAddCodePt},
    {L"resetcodespts", lispResetCodesPts},
    {L"choixpoint", lispChoixPoint},
    {L"chgreppts", lispChgRepPts},
    {L"updarxttxt", lispUpdArxTtxt},
    {L"c:decrireblock", lispDecrireBlock, {L"Codes", L"La description d'un bloc, pour la légende"}},
    {L"c:tablegendes", lispTableLegendes, {L"Codes", L"La légende des blocs et des calques"}},
    {L"c:gererLeves", lispGererLeves, {L"Points", L"Les tables de points : crée, fusionne, supprime"}},
    {L"C:pointsParDecalage", lispPointsParDecalage, {L"Points", L"Décale une polyligne et ses points"}},
    {L"C:ZoomLeve", lispZoomLeve, {L"Points", L"Vue sur les points de la table"}},
    {L"selectionnerCode", lispSelectionnerCode},
    {L"c:TopJndre", lispTopJndre, {L"Points", L"Une polyligne par des points numérotés"}},
    {L"VARNTEXT", lispVarnText},
    {L"c:DISSOCBLOCK", lispDissocBlock, {L"Points", L"Change en textes les attributs des blocs"}},
    {L"c:IMPLANT2", lispImplant2, {L"Calculs", L"Implante des points depuis des stations"}},
    {L"c:VNDEPORTPNTS", lispVnDeportPnts, {L"Points", L"Porte des points sur une courbe"}},
    {L"c:VNAJUSTERZ", lispVnAjusterZ, {L"Points", L"Décale les altitudes"}},
    {L"c:HELMERT", lispHelmert, {L"Calculs", L"Transformation d'Helmert sur des couples de points"}},
    {L"c:CREERPLANCHE", lispCreerPlanche, {L"Plan", L"Une planche : papier, cadre, cartouche, carroyage"}},
    {L"C:POL3DTOPOL2D", lispPol3dToPol2d, {L"Points", L"Des polylignes 3D à plat"}},
}};

void enregistrerFonctionsLisp() {
  for (std::size_t code = 0; code < tableFonctionsLisp.size(); ++code) {
    const ACHAR* nom = tableFonctionsLisp[code].nom;
    if (nom && acedDefun(nom, static_cast<int>(code)) != RTNORM) return;
  }
}

void retirerFonctionsLisp() {
  for (std::size_t code = 0; code < tableFonctionsLisp.size(); ++code)
    if (const ACHAR* nom = tableFonctionsLisp[code].nom) acedUndef(nom, static_cast<int>(code));
}

void appelerFonctionLisp() {
  acedRetVoid();
  const int code = acedGetFunCode();
  if (code < 0 || code >= static_cast<int>(kNombreFonctionsLisp)) return;
  if (const auto fonction = tableFonctionsLisp[static_cast<std::size_t>(code)].fonction) fonction();
}

}  // namespace veltora
