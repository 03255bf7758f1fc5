#include "arx/gi/gigeometry.h"

#include <algorithm>
#include <utility>

void AcGiGeometry::show(const AcGiDrawable& drawable) {
  if (m_finished) return;
  const AcGiDrawable* const around = std::exchange(m_drawn, &drawable);
  const AcGeMatrix3d aroundToWorld = std::exchange(m_drawnToWorld, m_toWorld);
  AcGiWorldDraw draw(*this);
  drawable.subWorldDraw(draw);
  m_drawn = around;
  m_drawnToWorld = aroundToWorld;
}

void AcGiGeometry::draw(const AcGiDrawable& drawable) {
  if (!drawable.isHidden()) show(drawable);
}

void AcGiGeometry::block(const AcGiBlockPlace& place) {
  if (mayEnter(place.block)) enter(place.block, m_toWorld * place.toOuter);
}

bool AcGiGeometry::mayEnter(const AcGiDrawable& block) const {
  return m_blocks.size() < m_deepest && std::find(m_blocks.begin(), m_blocks.end(), &block) == m_blocks.end();
}

void AcGiGeometry::enter(const AcGiDrawable& block, const AcGeMatrix3d& matrix) {
  m_references.push_back(m_drawn);
  m_blocks.push_back(&block);
  const AcGeMatrix3d outer = std::exchange(m_toWorld, matrix);
  show(block);
  m_toWorld = outer;
  m_blocks.pop_back();
  m_references.pop_back();
}

void AcGiGeometry::pushModelTransform(const AcGeMatrix3d& matrix) {
  m_pushed.push_back(std::exchange(m_toWorld, m_toWorld * matrix));
}

void AcGiGeometry::popModelTransform() {
  m_toWorld = m_pushed.back();
  m_pushed.pop_back();
}
