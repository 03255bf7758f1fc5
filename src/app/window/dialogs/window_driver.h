#pragma once

#include "ui/driver.h"

#include <exception>
#include <memory>
#include <optional>
#include <vector>

class QFileDialog;
class QMessageBox;
class QWidget;

namespace veltora::app {

class DialogWindow;

/// Shows the dialogs of the module as windows of native widgets, laid out from their declarations
/// (dialog_layout.h). A dialog that hides for a pick hides those below it too. What a callback throws never
/// crosses the toolkit: a standard exception is told in a message, and the dialog stays; anything else ends
/// the dialog and is thrown again by `runModal`.
class WindowDriver : public ui::Driver {
public:
  /// @param window  that the dialogs belong to; null for none
  explicit WindowDriver(QWidget* window);
  ~WindowDriver() override;

  void runModal(ui::Dialog& dialog) override;
  void setVisible(ui::Dialog& dialog, bool visible) override;
  void showModeless(ui::Dialog& dialog) override;
  void update(ui::Dialog& dialog) override;
  void closeModeless(ui::Dialog& dialog) override;
  int messageBox(const std::wstring& text, const std::wstring& title, ui::Buttons buttons) override;
  std::optional<base::FileAnswer> chooseFile(const base::FileRequest& request) override;
  void copyText(const std::wstring& text) override;

  /// What the user has decided before a dialog is there.
  struct Prepared {
    std::wstring line;  ///< of a script, worked in the next dialog once it is open
    std::wstring file;  ///< the answer when that line asks for a file to read
  };
  void prepare(std::optional<Prepared> prepared) { m_prepared = std::move(prepared); }
  /// The dialog on top, which the user works in; null for none.
  [[nodiscard]] DialogWindow* front() const;
  /// A dialog is open, and nothing is done but to wait for the user.
  [[nodiscard]] bool rests() const;
  [[nodiscard]] bool isFront(const DialogWindow& window) const;
  /// What a deed of the user in this window threw.
  virtual void failed(DialogWindow& window, std::exception_ptr thrown);
  /// Whether a control took what the user did.
  virtual void took(bool) {}

protected:
  /// The user works until the dialog has ended.
  virtual void attend(DialogWindow& window);
  /// @return the index of the button that was pressed, the last for none
  virtual int attend(QMessageBox& box);
  /// @return false when the user cancels
  virtual bool attend(QFileDialog& choice);

private:
  struct Open {
    std::unique_ptr<DialogWindow> window;
    std::exception_ptr thrown;
  };
  class Running;
  [[nodiscard]] QWidget* parent() const;
  void arrange();
  void catchUpAll();
  void workPrepared(DialogWindow& window);

  QWidget* m_window;
  std::vector<Open*> m_open;  ///< one upon the other
  std::vector<std::unique_ptr<DialogWindow>> m_modeless;
  std::optional<Prepared> m_prepared;
  std::optional<std::wstring> m_nextFile;  ///< answers the choice of the prepared line
};

}  // namespace veltora::app
