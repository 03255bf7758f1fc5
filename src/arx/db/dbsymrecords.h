#pragma once

#include "arx/db/dbcolor.h"
#include "arx/db/dbsymtb.h"

#include <string>
#include <vector>

// The records of symbol tables that the host models, and those that it only carries. Block definitions have
// a header of their own.

class ARX_API AcDbLayerTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord)
  ACDB_DECLARE_COPY(AcDbLayerTableRecord)
public:
  [[nodiscard]] const AcCmColor& color() const { return m_color; }
  Acad::ErrorStatus setColor(const AcCmColor& color);
  [[nodiscard]] bool isOff() const { return m_off; }
  Acad::ErrorStatus setIsOff(bool off);
  [[nodiscard]] bool isFrozen() const { return (m_flags & 1) != 0; }
  Acad::ErrorStatus setIsFrozen(bool frozen);
  [[nodiscard]] bool isLocked() const { return (m_flags & 4) != 0; }
  Acad::ErrorStatus setIsLocked(bool locked);
  [[nodiscard]] AcDbObjectId linetypeObjectId() const { return m_linetype; }
  Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId linetype);
  [[nodiscard]] int lineWeight() const { return m_lineWeight; }
  /// Shown on paper and not on screens alone.
  [[nodiscard]] bool isPlottable() const { return m_plottable; }
  void setDatabaseDefaults(AcDbDatabase& database) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  void exchangeFields(AcDbLayerTableRecord& other);

private:
  AcCmColor m_color{7};
  bool m_off = false;
  bool m_plottable = true;
  int m_lineWeight = -3;
  AcDbObjectId m_linetype;
};

/// Text style. A height of 0 means that each text gives its own.
class ARX_API AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord)
  ACDB_DECLARE_COPY(AcDbTextStyleTableRecord)
public:
  [[nodiscard]] double textSize() const { return m_textSize; }
  [[nodiscard]] double xScale() const { return m_xScale; }
  [[nodiscard]] double obliquingAngle() const {
    return m_oblique * (3.14159265358979323846 / 180.0);
  }  ///< radians
  [[nodiscard]] const AcString& fileName() const { return m_fileName; }
  Acad::ErrorStatus setTextSize(double size);
  Acad::ErrorStatus setXScale(double scale);
  Acad::ErrorStatus setFileName(const ACHAR* name);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbTextStyleTableRecord& other);

private:
  double m_textSize = 0.0;
  double m_xScale = 1.0;
  double m_oblique = 0.0;  // degrees, as in the file: not to lose the last digit
  double m_lastHeight = 2.5;
  int m_generation = 0;
  AcString m_fileName = L"txt";
  AcString m_bigFontFileName;
};

class ARX_API AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord)
  ACDB_DECLARE_COPY(AcDbLinetypeTableRecord)
public:
  [[nodiscard]] const AcString& comments() const { return m_comments; }
  Acad::ErrorStatus setComments(const ACHAR* text);
  [[nodiscard]] double patternLength() const { return m_length; }
  [[nodiscard]] const std::vector<double>& dashes() const { return m_dashes; }
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbLinetypeTableRecord& other);

private:
  AcString m_comments;
  double m_length = 0.0;
  std::vector<double> m_dashes;  // the file's groups are kept beside, shapes of complex patterns included
};

class ARX_API AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord)
  ACDB_DECLARE_COPY(AcDbRegAppTableRecord)
public:
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbRegAppTableRecord& other) { AcDbSymbolTableRecord::exchangeFields(other); }
};

/// A view on model space; the one named "*Active" is what the screen shows.
class ARX_API AcDbViewportTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord)
  ACDB_DECLARE_COPY(AcDbViewportTableRecord)
public:
  [[nodiscard]] AcGePoint2d centerPoint() const { return m_center; }
  [[nodiscard]] double height() const { return m_height; }
  [[nodiscard]] double aspectRatio() const { return m_aspect; }
  Acad::ErrorStatus setCenterPoint(const AcGePoint2d& center);
  Acad::ErrorStatus setHeight(double height);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbViewportTableRecord& other);

private:
  AcGePoint2d m_center;
  double m_height = 297.0;
  double m_aspect = 1.5;
};

/// A record that the host does not model (views, UCS, dimension styles): name and flags, the rest as it was.
class ARX_API AcDbOtherTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbOtherTableRecord)
  ACDB_DECLARE_COPY(AcDbOtherTableRecord)
public:
  AcDbOtherTableRecord() = default;
  /// @param type name in the file ("DIMSTYLE")  @param subclass marker of its own section
  AcDbOtherTableRecord(std::string type, std::string subclass)
      : m_type(std::move(type)), m_subclass(std::move(subclass)) {}
  [[nodiscard]] std::string_view dxfName() const override { return m_type; }
  /// Its groups but name and flags, as in the file.
  using AcDbObject::keptSections;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbOtherTableRecord& other);

private:
  std::string m_type;
  std::string m_subclass;
};
