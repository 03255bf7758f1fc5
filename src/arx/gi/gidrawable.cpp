#include "arx/gi/gidrawable.h"

ACRX_DEFINE_MEMBERS(AcGiDrawable, AcRxObject, nullptr, nullptr)

void AcGiDrawable::subWorldDraw(AcGiWorldDraw&) const {}
