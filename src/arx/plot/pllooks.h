#pragma once

#include "arx/db/dbents.h"
#include "arx/plot/plpen.h"

#include <string>
#include <unordered_map>
#include <vector>

class AcDbLinetypeTableRecord;

/// What an entity is drawn with, nothing of it ByLayer or ByBlock any more.
struct AcPlLook {
  AcDbObjectId layer;
  AcCmColor color{7};
  int weight = -3;                                    ///< hundredths of a millimetre; -3 for the usual one
  const AcDbLinetypeTableRecord* linetype = nullptr;  ///< null for whole lines
  double linetypeScale = 1.0;
  bool hidden = false;  ///< its layer is off or frozen, or left out by the call
};

/// Resolves what entities leave to their layer and to the reference of the block that they are in.
class ARX_API AcPlLooks {
public:
  /// @param layers  the only ones that are drawn, by name whatever the case; all for none
  /// @param unwanted  further ones that are not
  /// @param printed  on paper, where layers that are not to be plotted, and Defpoints, do not show
  explicit AcPlLooks(std::vector<std::wstring> layers, std::vector<std::wstring> unwanted = {},
                     bool printed = false)
      : m_wanted(std::move(layers)), m_unwanted(std::move(unwanted)), m_printed(printed) {}
  /// @param outer  the look of the reference around it; null outside of blocks
  [[nodiscard]] AcPlLook of(const AcDbEntity& entity, const AcPlLook* outer);
  /// Whether it stands on a layer that is drawn, outside of blocks.
  [[nodiscard]] bool isShown(const AcDbEntity& entity) {
    return !entity.isHidden() && !ofLayer(entity.layerId()).hidden;
  }
  [[nodiscard]] const std::string& layerName(AcDbObjectId layer) { return ofLayer(layer).name; }

private:
  struct Layer {
    std::string name;  // UTF-8
    AcCmColor color{7};
    int weight = -3;
    const AcDbLinetypeTableRecord* linetype = nullptr;
    bool hidden = false;
    bool zero = false;
  };
  const Layer& ofLayer(AcDbObjectId id);
  std::vector<std::wstring> m_wanted;
  std::vector<std::wstring> m_unwanted;
  bool m_printed;
  std::unordered_map<const AcDbStub*, Layer> m_layers;
};
