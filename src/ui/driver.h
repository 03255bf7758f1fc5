#pragma once

#include "base/console.h"
#include "base/suivi.h"
#include "ui/dialog.h"

#include <atomic>
#include <stdexcept>

namespace veltora::ui {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
struct MessageButton {
  const wchar_t* caption;
  int answer;  ///< kOk, kCancel, kYes or kNo
};
/// In their order; the last one answers the Escape key.
VELTORA_API std::vector<MessageButton> buttonsOf(Buttons buttons);

/// Shows dialogs, message boxes, file choices and progress. One driver is in force at a time.
class VELTORA_API Driver : public base::FileChooser, public base::PortSuivi {
public:
  /// Lets the user work in the dialog until it is no longer open. Called by `Dialog::doModal` after `onInit`.
  virtual void runModal(Dialog& dialog) = 0;
  /// Hides or shows a dialog that is being run.
  virtual void setVisible(Dialog& dialog, bool visible) = 0;
  virtual void showModeless(Dialog& dialog) = 0;
  /// Redraws a modeless dialog, and lets the user's clicks through.
  virtual void update(Dialog& dialog) = 0;
  virtual void closeModeless(Dialog& dialog) = 0;
  /// @return kOk, kCancel, kYes or kNo
  virtual int messageBox(const std::wstring& text, const std::wstring& title, Buttons buttons) = 0;

  /// Puts a text onto the clipboard, in the place of what it held.
  virtual void copyText(const std::wstring& text) = 0;

  /// The user wants the long job in progress to stop: told by the driver or by a signal handler.
  void requestStop() { m_stop.store(true, std::memory_order_relaxed); }
  /// Shows a job by `CMyProgressDlg`.
  std::unique_ptr<base::AfficheurSuivi> ouvrirSuivi() override;
  [[nodiscard]] bool arretDemande() const override { return m_stop.load(std::memory_order_relaxed); }
  void oublierArret() override { m_stop.store(false, std::memory_order_relaxed); }

private:
  std::atomic<bool> m_stop = false;
};

/// Thrown when something is to be shown and no driver is installed; `what` is French, UTF-8.
class VELTORA_API NoDriver : public std::runtime_error {
public:
  explicit NoDriver(const std::wstring& title);
};

/// The driver in force, null for none.
VELTORA_API Driver* driver();
/// Installs a driver, which the caller owns and uninstalls with null, as the port of progress too.
/// @return the former one
VELTORA_API Driver* setDriver(Driver* driver);

/// @return kOk, kCancel, kYes or kNo. @throws NoDriver
VELTORA_API int messageBox(const std::wstring& text, const std::wstring& title = {},
                           Buttons buttons = Buttons::Ok);
/// Asks for a file name by the driver in force; nothing when the user cancels. @throws NoDriver
VELTORA_API std::optional<base::FileAnswer> chooseFile(const base::FileRequest& request);
/// Puts a text onto the clipboard of the driver in force. @throws NoDriver
VELTORA_API void copyToClipboard(const std::wstring& text);

}  // namespace veltora::ui
