#pragma once

#include "arx/db/dbents.h"
#include "arx/db/dbmtextlayout.h"

#include <vector>

/// Text of several lines with formatting codes in it.
class ARX_API AcDbMText : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbMText)
  ACDB_DECLARE_COPY(AcDbMText)
public:
  /// Place of the location within the text's box.
  enum AttachmentPoint {
    kTopLeft = 1,
    kTopCenter,
    kTopRight,
    kMiddleLeft,
    kMiddleCenter,
    kMiddleRight,
    kBottomLeft,
    kBottomCenter,
    kBottomRight
  };

  AcDbMText() = default;
  /// With its formatting codes.
  [[nodiscard]] const AcString& contents() const { return m_contents; }
  Acad::ErrorStatus setContents(const ACHAR* text);
  /// What is read when it is drawn: codes resolved or left out, paragraphs apart by "\n".
  [[nodiscard]] AcString text() const;
  [[nodiscard]] AcGePoint3d location() const { return m_location; }
  Acad::ErrorStatus setLocation(const AcGePoint3d& location);
  [[nodiscard]] AcGeVector3d normal() const { return m_normal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  [[nodiscard]] AcGeVector3d direction() const;
  Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
  [[nodiscard]] double rotation() const;  ///< radians, in the text's plane
  Acad::ErrorStatus setRotation(double radians);
  [[nodiscard]] double textHeight() const { return m_height; }
  Acad::ErrorStatus setTextHeight(double height);
  [[nodiscard]] double width() const { return m_width; }  ///< of the column; 0 for no wrapping
  Acad::ErrorStatus setWidth(double width);
  [[nodiscard]] AttachmentPoint attachment() const { return static_cast<AttachmentPoint>(m_attachment); }
  Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
  [[nodiscard]] AcDbObjectId textStyle() const { return m_style; }
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  [[nodiscard]] double lineSpacingFactor() const { return m_spacing; }
  /// From one base line to the next.
  [[nodiscard]] double linePitch() const;
  /// What is read, line by line as broken between words at the column's width.
  [[nodiscard]] std::vector<AcString> lines() const;
  /// Size of the text as measured, lines wrapped at the column's width.
  [[nodiscard]] double actualWidth() const;
  [[nodiscard]] double actualHeight() const;

  void setDatabaseDefaults(AcDbDatabase* database) override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbMText& other);

private:
  [[nodiscard]] AcDbMTextLayout layout() const;
  AcString m_contents;
  AcGePoint3d m_location;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  AcGeVector3d m_direction = AcGeVector3d::kXAxis;  // 11, world; used when m_byDirection
  double m_rotation = 0.0;                          // 50, degrees
  double m_height = 0.0;
  double m_width = 0.0;
  double m_definedHeight = 0.0;     // 46
  double m_horizontalExtent = 0.0;  // 42 and 43, as other programs measured
  double m_verticalExtent = 0.0;
  double m_spacing = 1.0;
  AcDbObjectId m_style;
  Adesk::Int16 m_attachment = kTopLeft;
  Adesk::Int16 m_flow = 5;  // 72
  Adesk::Int16 m_spacingStyle = 1;
  bool m_byDirection = false;
  bool m_hasExtent = false;
  bool m_hasDefinedHeight = false;
};
