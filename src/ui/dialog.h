#pragma once

#include "base/uncopyable.h"
#include "ui/buttons.h"
#include "ui/choices.h"
#include "ui/control.h"
#include "ui/fields.h"
#include "ui/groups.h"
#include "ui/list.h"
#include "ui/views.h"

namespace veltora::ui {

/// How a dialog ended, and what a message box answers.
inline constexpr int kOk = 1;
inline constexpr int kCancel = 2;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;

/// Base of all dialogs. A dialog declares its controls as members, in the order in which they appear:
///
///     class CModeNumerotation : public ui::Dialog {
///     public:
///       CModeNumerotation() : Dialog(L"Numérotation") { prefixe.onChange = [this] { montrerExemple(); }; }
///       ui::TextField prefixe{this, L"Préfixe"};
///       ui::NumberField depart{this, L"Numéro de départ", 1, L"%d", ui::NumberField::kInteger};
///       ui::Label exemple{this, L"Exemple:"};
///       ui::Button ok{this, L"OK", ui::Button::Role::Ok};
///       ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};
///     };
///
/// It can be shown any number of times; the controls keep their state in between. What a driver does
/// not take care of leaves `doModal`, with the dialog closed.
class VELTORA_API Dialog : public Container {
public:
  explicit Dialog(std::wstring title);
  ~Dialog() override;

  [[nodiscard]] const std::wstring& title() const { return m_title; }
  void setTitle(const std::wstring& title);

  /// Shows the dialog until it is ended.
  /// @return the result given to `endDialog`
  /// @throws NoDriver when no driver is installed; std::logic_error when the dialog is open already
  int doModal();
  /// Ends the dialog; `doModal` returns when the callback in progress has returned.
  /// Without effect when it is closed.
  void endDialog(int result);
  [[nodiscard]] bool isOpen() const { return m_open; }
  [[nodiscard]] int result() const { return m_result; }

  /// Takes the dialog off the screen for a prompt on the command line, and brings it back. See
  /// `HiddenDialog`.
  void hide();
  void show();
  [[nodiscard]] bool hidden() const { return m_hidden; }

  /// Shows the dialog and returns at once (progress). Without a driver nothing is shown, and the work goes
  /// on.
  void openModeless();
  void closeModeless();

  /// By default: `validateFields`, then the dialog ends with `kOk`.
  virtual void onOk();
  /// By default the dialog ends with `kCancel`.
  virtual void onCancel();

  [[nodiscard]] Dialog* dialogOf() override { return this; }
  [[nodiscard]] Control* focus() const { return m_focus; }
  void setFocus(Control* control);
  /// The user's focus moves: the control that had it is left.
  /// @return false when it was called back meanwhile.
  bool moveFocus(Control* control);
  /// The button of the Enter key: the first of `Role::Ok` that can be used; null for none.
  [[nodiscard]] Button* defaultButton() const;

  /// Grows when the title or the focus changes.
  [[nodiscard]] unsigned revision() const { return m_revision; }
  [[nodiscard]] Observer* observer() const { return m_observer; }
  /// Null for none. The observer lives until it is taken off or the dialog has told it its end.
  void setObserver(Observer* observer) { m_observer = observer; }

private:
  friend class Control;
  class OpenScope;
  void forget(Control& control);
  void touch();

  std::wstring m_title;
  Control* m_focus = nullptr;
  int m_result = 0;
  unsigned m_revision = 0;
  Observer* m_observer = nullptr;
  bool m_open = false;
  bool m_modeless = false;
  bool m_hidden = false;
};

/// Keeps a dialog hidden for a scope: it comes back however the scope is left.
class VELTORA_API HiddenDialog : private Uncopyable {
public:
  explicit HiddenDialog(Dialog& dialog) : m_dialog(dialog) { m_dialog.hide(); }
  ~HiddenDialog();

private:
  Dialog& m_dialog;
};

}  // namespace veltora::ui
