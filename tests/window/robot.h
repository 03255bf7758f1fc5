#pragma once

#include "ui/script_driver.h"
#include "window/widget_hand.h"

/// Works the window driver by the lines of a script: what is printed and asked is that of the script driver,
/// what is done is done to the widgets.
class Robot : public veltora::ui::ScriptDriver {
public:
  Robot(veltora::base::LineSource& source, veltora::base::OutputSink& sink);
  void runModal(veltora::ui::Dialog& dialog) override;
  void setVisible(veltora::ui::Dialog& dialog, bool visible) override;
  void showModeless(veltora::ui::Dialog& dialog) override;
  void update(veltora::ui::Dialog& dialog) override;
  void closeModeless(veltora::ui::Dialog& dialog) override;
  int messageBox(const std::wstring& text, const std::wstring& title, veltora::ui::Buttons buttons) override;
  void copyText(const std::wstring& text) override;

  /// Each window leaves its picture in this folder, dialogs as they were when they ended; none for an empty
  /// name.
  static void takePictures(const std::string& folder);

protected:
  veltora::ui::Hand& hand() override { return m_hand; }
  std::optional<veltora::base::FileAnswer> acceptFile(const veltora::base::FileRequest& request,
                                                      const std::wstring& line) override;

private:
  /// The window driver, in which the lines stand for the user.
  class Screen : public veltora::app::WindowDriver {
  public:
    explicit Screen(Robot& robot) : WindowDriver(nullptr), m_robot(robot) {}
    void failed(veltora::app::DialogWindow&, std::exception_ptr thrown) override;
    void took(bool taken) override;
    int messageBox(const std::wstring& text, const std::wstring& title,
                   veltora::ui::Buttons buttons) override;
    std::optional<std::wstring> typed;  ///< the one answer to a choice of files
    int filterIndex = 1;

  protected:
    void attend(veltora::app::DialogWindow& window) override;
    int attend(QMessageBox& box) override;
    bool attend(QFileDialog& choice) override;

  private:
    Robot& m_robot;
    veltora::ui::Buttons m_buttons = veltora::ui::Buttons::Ok;
  };

  Screen m_screen;
  WidgetHand m_hand;
};
