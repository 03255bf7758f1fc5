#pragma once

#include "arx/rx/rxclass.h"

class AcDbObjectId;
class AcGiWorldDraw;

/// What the layer of something does to it.
struct AcGiLayerState {
  bool hidden = false;  ///< the layer is off or frozen
  bool locked = false;
};

/// Something that can be seen: it says once what it looks like, to whoever asks.
class ARX_API AcGiDrawable : public AcRxObject {
  ACRX_DECLARE_MEMBERS(AcGiDrawable)
public:
  [[nodiscard]] virtual AcDbObjectId id() const = 0;
  /// Hands its look to the geometry of `draw`, in its own coordinates; nothing for what has none.
  virtual void subWorldDraw(AcGiWorldDraw& draw) const;
  /// Not drawn, wherever its layer stands.
  [[nodiscard]] virtual bool isHidden() const { return false; }
  [[nodiscard]] virtual AcGiLayerState layerState() const { return {}; }
  /// Seen where it stands by itself: what blocks show of their parts does not depend on layers.
  [[nodiscard]] bool isSeen() const { return !isHidden() && !layerState().hidden; }
};
