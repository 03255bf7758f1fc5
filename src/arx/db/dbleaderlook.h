#pragma once

#include "arx/db/dbents.h"

class AcDbKeptGroups;
class AcDbKeptPen;

/// Draws a leader as its groups say: its vertices joined straight or by a curve, the landing under its text,
/// and its arrow head, in the size, form and colour of its dimension style and of what it says otherwise
/// (extended data "DSTYLE" of "ACAD"). A head longer than half of the first stretch is not drawn, as usual.
void acdbDrawLeader(const AcDbOtherEntity& leader, AcDbKeptGroups& groups, const AcDbKeptPen& pen);
