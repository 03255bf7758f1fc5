#pragma once

// LISP functions on the points of the current table; see host/lisp/table_lisp.h.
namespace veltora {

class listePointsDuDessin;

/// The table on which the functions work; null while no project is installed.
listePointsDuDessin* tableDeTravail();

/// add_pt: makes a point, with its block, and enters it in the table.
int lispAddPt();
/// tpcdaddpt: the same with arguments of more types; replaces a point of that name.
int lispTpcdAddPt();
/// maxnum: one more than the largest number with which a name begins.
int lispMaxNum();
/// ename_pt: the block of a point.
int lispEnamePt();
/// reg_pts: writes the table to the blocks.
int lispRegPts();
/// select_all: the blocks of all points.
int lispSelectAll();
/// seloncode: those of a code.
int lispSelOnCode();
/// selonnum: those whose names are a prefix and a number between two.
int lispSelOnNum();
/// chgreppts: another block for the points of a code.
int lispChgRepPts();
/// c:vcode: crosses at the points of a code.
int lispVCode();
/// C:ZoomLeve: the view on all points.
int lispZoomLeve();

}  // namespace veltora
