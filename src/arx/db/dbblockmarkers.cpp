#include "arx/db/dbblockmarkers.h"

ACDB_DEFINE_MEMBERS(AcDbBlockBegin, AcDbEntity, "BLOCK")
ACDB_DEFINE_MEMBERS(AcDbBlockEnd, AcDbEntity, "ENDBLK")

bool AcDbBlockBegin::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 1:
      externalPath = in.wide();
      return true;
    case 2:
      name = in.wide();
      return true;
    case 3:
      return true;  // the name again
    case 4:
      comments = in.wide();
      return m_hasComments = true;
    case 70:
      flags = in.integer();
      return true;
    default:
      return in.coordinate(10, origin);
  }
}

void AcDbBlockBegin::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbBlockBegin");
}

void AcDbBlockBegin::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbBlockBegin");
  out.wide(2, name);
  out.integer(70, flags);
  out.point(10, origin);
  out.wide(3, name);
  out.wide(1, externalPath);
  if (m_hasComments || !comments.empty()) out.wide(4, comments);
  writeExtras(out, "AcDbBlockBegin");
}

void AcDbBlockBegin::exchangeFields(AcDbBlockBegin& other) {
  name.swap(other.name);
  comments.swap(other.comments);
  externalPath.swap(other.externalPath);
  std::swap(origin, other.origin);
  std::swap(flags, other.flags);
  std::swap(m_hasComments, other.m_hasComments);
  AcDbEntity::exchangeFields(other);
}

void AcDbBlockEnd::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbBlockEnd");
}

void AcDbBlockEnd::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbBlockEnd");
  writeExtras(out, "AcDbBlockEnd");
}
