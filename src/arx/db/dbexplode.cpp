#include "arx/db/dbexplode.h"

#include "arx/db/dballents.h"
#include "arx/db/dbclone.h"
#include "arx/db/dbmain.h"
#include "arx/ge/geangle.h"

#include <cmath>
#include <memory>
#include <numbers>

namespace {

constexpr int kOfAnotherFile = 4;  // flag of a block

using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

double inOneTurn(double angle) {
  const double rest = std::fmod(angle, kTurn);
  return rest < 0 ? rest + kTurn : rest;
}

/// An arc goes counter-clockwise about its normal, from the X axis that the normal gives.
std::unique_ptr<AcDbArc> arcOf(const AcGeCurvePiece& piece) {
  const AcGeVector3d normal = piece.xAxis.crossProduct(piece.yAxis).normal();
  const AcGeVector3d zero = AcGeMatrix3d::worldToPlane(normal) * piece.xAxis;
  const double start = piece.startAngle + std::fmin(piece.sweep, 0.0) + std::atan2(zero.y, zero.x);
  return std::make_unique<AcDbArc>(piece.center, normal, piece.radius, inOneTurn(start),
                                   inOneTurn(start + std::fabs(piece.sweep)));
}

Parts partsOfCurve(const AcDbCurve& curve, double thickness) {
  Parts parts;
  for (const AcGeCurvePiece& piece : curve.pieces()) {
    if (piece.isArc) {
      std::unique_ptr<AcDbArc> arc = arcOf(piece);
      arc->setThickness(thickness);
      parts.push_back(std::move(arc));
    } else if (piece.start != piece.end) {
      auto line = std::make_unique<AcDbLine>(piece.start, piece.end);
      line->setThickness(thickness);
      parts.push_back(std::move(line));
    }
  }
  return parts;
}

Parts partsOfMText(const AcDbMText& text) {
  Parts parts;
  const std::vector<AcString> lines = text.lines();
  const AcGeVector3d along = text.direction();
  const AcGeVector3d up = text.normal().crossProduct(along).normal();
  const int place = text.attachment() - AcDbMText::kTopLeft;
  const double top = text.actualHeight() * (place / 3) / 2;
  const AcDbObjectPointer<AcDbTextStyleTableRecord> style(text.textStyle());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].empty()) continue;
    const double down = text.textHeight() + static_cast<double>(i) * text.linePitch() - top;
    const AcGePoint3d base = text.location() - up * down;
    auto line = std::make_unique<AcDbText>(AcGePoint3d(), lines[i].c_str(), text.textStyle(),
                                           text.textHeight(), text.rotation());
    line->setNormal(text.normal());
    line->setPosition(base);
    if (style && style->xScale() > 0) line->setWidthFactor(style->xScale());
    if (place % 3 != 0) {
      line->setHorizontalMode(place % 3 == 1 ? AcDb::kTextCenter : AcDb::kTextRight);
      line->setAlignmentPoint(base);
    }
    parts.push_back(std::move(line));
  }
  return parts;
}

/// The parts of what is no block reference.
Parts partsOf(const AcDbEntity& entity) {
  if (const AcDbPolyline* light = AcDbPolyline::cast(&entity))
    return partsOfCurve(*light, light->thickness());
  if (const AcDb2dPolyline* heavy = AcDb2dPolyline::cast(&entity))
    return partsOfCurve(*heavy, heavy->thickness());
  if (const AcDb3dPolyline* spatial = AcDb3dPolyline::cast(&entity)) return partsOfCurve(*spatial, 0.0);
  if (const AcDbMText* text = AcDbMText::cast(&entity)) return partsOfMText(*text);
  return {};
}

/// Adds new entities to a space. @param model  gives layer, colour and line type; null for their own
void add(Parts made, const AcDbEntity* model, AcDbObjectId space, std::vector<AcDbObjectId>& parts) {
  const AcDbObjectPointer<AcDbBlockTableRecord> owner(space, AcDb::kForWrite);
  if (!owner) return;
  for (std::unique_ptr<AcDbEntity>& part : made) {
    if (model) part->setPropertiesFrom(model);
    AcDbObjectId id;
    if (owner->appendAcDbEntity(id, part.get()) != Acad::eOk) continue;
    part.release()->close();
    parts.push_back(id);
  }
}

/// Whether an entity of a block can be placed by a matrix, tried on a copy.
bool follows(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
  if (!entity.isTransformable()) return false;
  const std::unique_ptr<AcDbEntity> copy(static_cast<AcDbEntity*>(entity.cloneAlone()));
  return copy->transformBy(matrix) == Acad::eOk;
}

/// What a circle or an arc becomes under a matrix that it cannot follow; null for any other entity.
std::unique_ptr<AcDbEllipse> ellipseOf(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
  const bool round = AcDbCircle::cast(&entity) || AcDbArc::cast(&entity);
  if (!round) return nullptr;
  const AcGeCurvePiece piece = static_cast<const AcDbCurve&>(entity).pieces().front();
  auto ellipse = std::make_unique<AcDbEllipse>();
  const bool made =
      ellipse->set(piece.center, piece.xAxis.crossProduct(piece.yAxis), piece.xAxis * piece.radius, 1.0,
                   piece.startAngle, piece.startAngle + piece.sweep) == Acad::eOk;
  return made && ellipse->transformBy(matrix) == Acad::eOk ? std::move(ellipse) : nullptr;
}

/// The texts of a reference's attributes, and of the constant ones of its block.
Parts textsOf(const AcDbBlockReference& reference, const std::vector<AcDbObjectId>& constants,
              const AcGeMatrix3d& matrix) {
  Parts texts;
  const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
  for (; !attributes->done(); attributes->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribute(attributes->objectId());
    if (attribute && !attribute->isHidden() && !attribute->textString().empty())
      texts.push_back(attribute->plainText());
  }
  for (const AcDbObjectId id : constants) {
    const AcDbObjectPointer<AcDbAttributeDefinition> definition(id);
    if (!definition || definition->textString().empty()) continue;
    texts.push_back(definition->plainText());
    texts.back()->transformBy(matrix);
  }
  return texts;
}

Acad::ErrorStatus explodeBlock(const AcDbBlockReference& reference, std::vector<AcDbObjectId>& parts) {
  const AcGeMatrix3d matrix = reference.blockTransform();
  std::vector<AcDbObjectId> shown;
  std::vector<AcDbObjectId> constants;
  std::vector<std::pair<AcDbObjectId, std::unique_ptr<AcDbEllipse>>> squeezed;
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(reference.blockTableRecord());
    const AcDbBlockReference::Grid grid = reference.grid();
    if (!block || (block->flags() & kOfAnotherFile) || grid.columns > 1 || grid.rows > 1)
      return Acad::eNotApplicable;
    for (const AcDbObjectId id : block->entities()) {
      const AcDbObjectPointer<AcDbEntity> entity(id);
      if (!entity) continue;
      const bool definition = AcDbAttributeDefinition::cast(entity.object()) != nullptr;
      if (definition && !entity->isShownByReferences()) continue;
      if (!follows(*entity, matrix)) {
        std::unique_ptr<AcDbEllipse> ellipse = ellipseOf(*entity, matrix);
        if (!ellipse) return Acad::eCannotScaleNonUniformly;
        squeezed.emplace_back(id, std::move(ellipse));
        continue;
      }
      (definition ? constants : shown).push_back(id);
    }
  }
  for (const AcDbObjectId id : acdbCopyEntities(shown, reference.blockId())) {
    const AcDbObjectPointer<AcDbEntity> part(id, AcDb::kForWrite);
    if (!part) continue;
    part->transformBy(matrix);
    parts.push_back(id);
  }
  for (auto& [id, ellipse] : squeezed) {
    const AcDbObjectPointer<AcDbEntity> round(id);
    Parts one;
    one.push_back(std::move(ellipse));
    add(std::move(one), round.object(), reference.blockId(), parts);
  }
  add(textsOf(reference, constants, matrix), nullptr, reference.blockId(), parts);
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus acdbExplode(AcDbObjectId id, std::vector<AcDbObjectId>& parts) {
  parts.clear();
  const AcDbObjectPointer<AcDbEntity> entity(id);
  if (!entity) return entity.openStatus();
  if (const AcDbBlockReference* reference = AcDbBlockReference::cast(entity.object()))
    return explodeBlock(*reference, parts);
  Parts made = partsOf(*entity);
  if (made.empty()) return Acad::eNotApplicable;
  add(std::move(made), entity.object(), entity->blockId(), parts);
  return Acad::eOk;
}
