#pragma once

#include "arx/db/dbmain.h"
#include "arx/db/dxftags.h"

#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Brings items of files from before subclass markers into the present form: sections are marked for the
/// types that the host does not model (it reads the others without markers).
class DxfOldItems {
public:
  /// Groups with markers; the same groups when they hold some already or the type needs none. Valid until the
  /// next call.
  std::span<const DxfTag> entity(std::string_view type, std::span<const DxfTag> tags);
  /// A table record; a dimension style names its arrows by handle instead of by name.
  std::span<const DxfTag> record(std::string_view type, std::span<const DxfTag> tags, AcDbDatabase& database);

private:
  void section(std::string_view marker, std::span<const int> codes);
  void rest(std::string_view marker);
  void dimension(int kind);
  void arrowByHandle(DxfTag tag, AcDbDatabase& database);
  std::vector<DxfTag> m_source;
  std::vector<bool> m_taken;
  std::vector<DxfTag> m_result;
  std::deque<std::string> m_texts;
};

/// Name of a block in the present form ("$MODEL_SPACE" becomes "*Model_Space").
std::wstring dxfPresentBlockName(const std::wstring& name);
