#pragma once

#include "arx/db/dbents.h"
#include "arx/db/dbrarely.h"
#include "arx/db/dbshorttext.h"
#include "arx/db/dbtextsize.h"

#include <memory>

class AcGiGeometry;

/// One line of text.
///
/// Points are kept in the coordinates of the text's own plane, as drawing files hold them, and offered in
/// world coordinates. A text that is left aligned on its base line stands at `position`; any other at
/// `alignmentPoint`, and its position follows from that with the measure above.
class ARX_API AcDbText : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbText)
  ACDB_DECLARE_COPY(AcDbText)
public:
  AcDbText() = default;
  AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = {}, double height = 0.0,
           double rotation = 0.0);

  [[nodiscard]] AcGePoint3d position() const;
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  [[nodiscard]] AcGePoint3d alignmentPoint() const;
  /// Also computes the position anew.
  Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
  [[nodiscard]] bool isDefaultAlignment() const { return m_horizontal == 0 && m_vertical == 0; }
  [[nodiscard]] AcGeVector3d normal() const { return m_look->normal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);  ///< the points stay in the world
  [[nodiscard]] double thickness() const { return m_look->thickness; }
  Acad::ErrorStatus setThickness(double thickness);
  [[nodiscard]] double oblique() const;  ///< radians
  Acad::ErrorStatus setOblique(double radians);
  [[nodiscard]] double rotation() const;  ///< radians
  Acad::ErrorStatus setRotation(double radians);
  [[nodiscard]] double height() const { return m_height; }
  Acad::ErrorStatus setHeight(double height);  ///< `eInvalidInput` unless above 0
  [[nodiscard]] double widthFactor() const { return m_look->widthFactor; }
  Acad::ErrorStatus setWidthFactor(double factor);  ///< `eInvalidInput` for 0 or not finite
  [[nodiscard]] AcString textString() const { return AcString(m_text.view()); }
  [[nodiscard]] const ACHAR* textStringConst() const { return m_text.c_str(); }
  Acad::ErrorStatus setTextString(const ACHAR* text);
  Acad::ErrorStatus setTextString(const AcString& text);
  [[nodiscard]] AcDbObjectId textStyle() const { return m_style; }
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  [[nodiscard]] bool isMirroredInX() const { return (m_generation & 2) != 0; }  ///< backward
  Acad::ErrorStatus mirrorInX(bool mirrored);
  [[nodiscard]] bool isMirroredInY() const { return (m_generation & 4) != 0; }  ///< upside down
  Acad::ErrorStatus mirrorInY(bool mirrored);
  [[nodiscard]] AcDb::TextHorzMode horizontalMode() const {
    return static_cast<AcDb::TextHorzMode>(m_horizontal);
  }
  /// Leaving the default alignment takes the position as alignment point until one is set.
  Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
  [[nodiscard]] AcDb::TextVertMode verticalMode() const {
    return static_cast<AcDb::TextVertMode>(m_vertical);
  }
  Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
  /// Computes the position of an aligned text anew from its alignment point, measured with its style; for the
  /// aligned and fitted modes also height or width factor and rotation. `eNotApplicable` for the default
  /// alignment.
  Acad::ErrorStatus adjustAlignment(const AcDbDatabase* database = nullptr);
  /// Size at rotation 0.
  [[nodiscard]] AcDbTextSize measure() const;
  /// A text that looks the same, without place in a drawing: of an attribute or its definition too.
  [[nodiscard]] std::unique_ptr<AcDbText> plainText() const;

  void setDatabaseDefaults(AcDbDatabase* database) override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  /// The groups that texts, attributes and their definitions share.
  bool takeTextGroup(AcDbDxfReader& in);
  bool takeVerticalMode(AcDbDxfReader& in);
  void writeTextSection(AcDbDxfWriter& out) const;
  void writeVerticalMode(AcDbDxfWriter& out, int code) const;
  void exchangeFields(AcDbText& other);
  /// Everything but what entities have in common.
  void copyLook(const AcDbText& other);
  /// As `transformBy`, also under a map that would skew the text: then the base line and the upward direction
  /// are mapped and the skew is left out.
  Acad::ErrorStatus placeBy(const AcGeMatrix3d& matrix);

private:
  struct Look {
    AcGePoint3d alignment;  // own plane
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    double widthFactor = 1.0;
    double oblique = 0.0;  // degrees, as in the file
    double thickness = 0.0;
  };
  /// Sets one of the rare fields of a text that is open for writing; the status otherwise.
  template <class Value>
  Acad::ErrorStatus changeLook(Value Look::*field, const std::type_identity_t<Value>& value) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_look.set(field, value);
    return status;
  }
  [[nodiscard]] AcGePoint3d basePoint() const;  // start of the base line, own plane
  struct Run {
    double rotation;  // degrees
    double height;
    double widthFactor;
  };
  [[nodiscard]] bool runsBetweenPoints() const {
    return m_horizontal == AcDb::kTextAlign || m_horizontal == AcDb::kTextFit;
  }
  /// As the text runs: aligned and fitted ones between their points, whatever their fields say.
  [[nodiscard]] Run run() const;
  void drawInPlane(AcGiGeometry& geometry) const;
  Acad::ErrorStatus setModes(int horizontal, int vertical);
  Acad::ErrorStatus moveBy(const AcGeMatrix3d& matrix, bool dropSkew);
  AcGePoint3d m_position;  // own plane
  double m_height = 0.0;
  double m_rotation = 0.0;  // degrees, as in the file
  AcDbObjectId m_style;
  AcDbRarely<Look> m_look;
  AcDbShortText<9> m_text;
  Adesk::Int16 m_generation = 0;
  Adesk::Int8 m_horizontal = 0;
  Adesk::Int8 m_vertical = 0;
  bool m_hasAlignment = false;
};
