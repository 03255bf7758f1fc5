#pragma once

#include "app/window/dialogs/control_view.h"

class QPagedPaintDevice;
class QPushButton;
class QTextBrowser;
class QToolButton;

/// Reports and previews.
namespace veltora::app {

/// The report as the toolkit's reader of HTML takes it: decoded from Windows-1252, without the comment marks
/// that hide a style sheet from old readers. @param html  the bytes of the file
QString readableReport(const std::string& html);

class ReportView : public ControlView {
public:
  ReportView(DialogWindow& window, ui::WebView& report);
  [[nodiscard]] bool grows() const override { return true; }
  [[nodiscard]] QWidget* keyboard() const override;
  /// Puts the report as it is shown onto paper.
  void print(QPagedPaintDevice& paper) const;

protected:
  void refreshContent() override;

private:
  void choosePrinter();
  void openInBrowser();

  ui::WebView& m_report;
  QTextBrowser* m_browser;
  QPushButton* m_print;
  QPushButton* m_open;
};

/// The picture of a drawing or of an image file, which can be pressed. What cannot be drawn is told in its
/// place.
class PreviewView : public ControlView {
public:
  PreviewView(DialogWindow& window, ui::Preview& preview);
  [[nodiscard]] QToolButton& button() const { return *m_button; }

protected:
  void refreshContent() override;

private:
  ui::Preview& m_preview;
  QToolButton* m_button;
  std::wstring m_path;  ///< of the picture that is shown
};

}  // namespace veltora::app
