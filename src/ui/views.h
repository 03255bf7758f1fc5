#pragma once

#include "ui/control.h"

/// What is only looked at: progress bar, report, drawing preview.
namespace veltora::ui {

/// A bar from `minimum` to `maximum`.
class VELTORA_API ProgressBar : public Control {
public:
  explicit ProgressBar(Container* parent, std::wstring caption = {});
  void setRange(long long minimum, long long maximum);
  /// What `stepIt` adds; 1 at the start.
  void setStep(long long step) { m_step = step; }
  /// The position is kept within the range.
  void setPosition(long long position);
  void stepIt();
  [[nodiscard]] long long minimum() const { return m_minimum; }
  [[nodiscard]] long long maximum() const { return m_maximum; }
  [[nodiscard]] long long position() const { return m_position; }
  /// 0 to 100, rounded down; 100 for an empty range.
  [[nodiscard]] int percent() const;
  [[nodiscard]] std::wstring kindName() const override { return L"Progression"; }
  [[nodiscard]] Kind kind() override { return this; }
  [[nodiscard]] bool focusable() const override { return false; }

private:
  long long m_minimum = 0;
  long long m_maximum = 100;
  long long m_position = 0;
  long long m_step = 1;
};

/// Shows an HTML file.
class VELTORA_API WebView : public Control {
public:
  explicit WebView(Container* parent, std::wstring caption = {});
  [[nodiscard]] const std::wstring& path() const { return m_path; }
  void setPath(const std::wstring& path);
  [[nodiscard]] std::wstring kindName() const override { return L"Page web"; }
  [[nodiscard]] Kind kind() override { return this; }
  [[nodiscard]] bool focusable() const override { return false; }

private:
  std::wstring m_path;
};

/// Shows a picture of a drawing file, or an image file (.svg), and can be clicked.
class VELTORA_API Preview : public Control {
public:
  explicit Preview(Container* parent, std::wstring caption = {});
  [[nodiscard]] const std::wstring& path() const { return m_path; }
  void setPath(const std::wstring& path);
  [[nodiscard]] std::wstring kindName() const override { return L"Aperçu"; }
  [[nodiscard]] Kind kind() override { return this; }
  [[nodiscard]] bool focusable() const override { return false; }

  bool userPress();

  std::function<void()> onClick;

private:
  std::wstring m_path;
};

}  // namespace veltora::ui
