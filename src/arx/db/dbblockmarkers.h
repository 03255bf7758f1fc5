#pragma once

#include "arx/db/dbents.h"

/// Marks the begin of a block definition in the drawing file.
class ARX_API AcDbBlockBegin : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbBlockBegin)
  ACDB_DECLARE_COPY(AcDbBlockBegin)
public:
  AcDbBlockBegin() = default;
  /// Name, flags, origin and comments are those of the block record; the reader of files takes them from
  /// here.
  AcString name;
  AcString comments;
  AcString externalPath;
  AcGePoint3d origin;
  int flags = 0;

  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbBlockBegin& other);

private:
  bool m_hasComments = false;
};

/// Marks its end.
class ARX_API AcDbBlockEnd : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbBlockEnd)
  ACDB_DECLARE_COPY(AcDbBlockEnd)
public:
  AcDbBlockEnd() = default;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbBlockEnd& other) { AcDbEntity::exchangeFields(other); }
};
