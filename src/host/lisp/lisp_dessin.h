#pragma once

// LISP functions on blocks, attributes and polylines of the drawing; see host/lisp/table_lisp.h.
namespace veltora {

/// calctailleblock: width and height of a block definition.
int lispCalcTailleBlock();
/// attrvisibility: shows and hides attributes of a selection.
int lispAttrVisibility();
/// getsegtype: the segment of a polyline next to a point.
int lispGetSegType();
/// modif-attrib: sets an attribute of a block.
int lispModifAttrib();
/// updarxttxt: the factor of the size of point blocks.
int lispUpdArxTtxt();

}  // namespace veltora
