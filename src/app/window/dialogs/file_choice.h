#pragma once

#include "base/uncopyable.h"
#include "ui/file_filter.h"

#include <optional>

#include <QFileDialog>

namespace veltora::app {

/// A choice of files as the toolkit shows it, and what the answer means to the module.
class FileChoice : private Uncopyable {
public:
  FileChoice(const base::FileRequest& request, QWidget* parent);
  [[nodiscard]] QFileDialog& dialog() { return m_dialog; }
  /// Nothing when what was chosen is no file that can be read; `fault` says why.
  [[nodiscard]] std::optional<base::FileAnswer> answer();
  [[nodiscard]] const std::wstring& fault() const { return m_fault; }

private:
  const base::FileRequest& m_request;
  QFileDialog m_dialog;
  QStringList m_filters;
  std::wstring m_fault;
};

}  // namespace veltora::app
