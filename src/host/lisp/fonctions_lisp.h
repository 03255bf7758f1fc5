#pragma once

namespace veltora {

class listePointsDuDessin;

// The functions offered to LISP, named after their LISP names. Each takes its arguments from the host, hands
// its result to the host (nothing handed over: no value) and returns what the host's call returned, which
// nobody reads. Wrong arguments give nil or a message; none raises an error of LISP.

/// The table on which they work; null while no project is installed.
listePointsDuDessin* tableDeTravail();

// Points of the current table.
int lispAddPt();
int lispTpcdAddPt();
int lispMaxNum();
int lispEnamePt();
int lispRegPts();
int lispSelectAll();
int lispSelOnCode();
int lispSelOnNum();
int lispChgRepPts();
int lispVCode();
int lispZoomLeve();

// The point tables and the picker.
int lispChoixPoint();
int lispGererLeves();

// The code table.
int lispLoadCodePt();
int lispAddCodePt();
int lispResetCodesPts();
int lispSelectionnerCode();

// The drawing.
int lispCalcTailleBlock();
int lispAttrVisibility();
int lispGetSegType();
int lispModifAttrib();
int lispUpdArxTtxt();
int lispSxd();
int lispSuperpos();
int lispVarnText();
int lispDissocBlock();

// Points and paths, asked for at the command line.
int lispTopJndre();
int lispPointsParDecalage();
int lispVnDeportPnts();
int lispVnAjusterZ();

// Computations.
int lispHelmert();

// The user and the system.
int lispAnalyse();
int lispKGetPt();
int lispVnDelFile();
int lispWaitUser();

}  // namespace veltora
