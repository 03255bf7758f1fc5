#pragma once

#include "base/export.h"

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The neutral dialog layer: dialogs and their controls as plain objects, without any toolkit. A driver shows
/// them (ui/driver.h). Two kinds of operation stand side by side on a control:
/// - what the dialog's own code calls (`setText`, `setIndex`, ...) changes the state and calls nothing back;
/// - what the user does, told by a driver or a test (`userType`, `userPress`, ...), moves the focus, changes
///   the state and then calls the callbacks. It gives false, with nothing changed, when the control is
///   hidden or disabled, or when the control that was left took the focus back.
namespace veltora::ui {

class Button;
class CheckBox;
class ComboBox;
class Control;
class Dialog;
class Group;
class Label;
class List;
class Menu;
class NumberField;
class Observer;
class Page;
class Pages;
class Preview;
class ProgressBar;
class RadioGroup;
class TextField;
class WebView;

/// A control as what it is; see ui/kinds.h.
using Kind = std::variant<Button*, CheckBox*, ComboBox*, Group*, Label*, List*, Menu*, NumberField*, Page*,
                          Pages*, Preview*, ProgressBar*, RadioGroup*, TextField*, WebView*>;

/// What holds controls, in their order of appearance: a dialog, a group, a page. The controls belong to the
/// class that declares them as members; a container only knows them.
class VELTORA_API Container {
public:
  Container(const Container&) = delete;
  Container& operator=(const Container&) = delete;
  virtual ~Container();
  [[nodiscard]] const std::vector<Control*>& controls() const { return m_controls; }
  /// The dialog that this container is or lies in.
  [[nodiscard]] virtual Dialog* dialogOf() = 0;
  /// The container as a control; a dialog is none.
  [[nodiscard]] virtual Control* asControl() { return nullptr; }
  /// Checks the number fields in it that can be used, in order. The first fault is shown and takes the focus.
  bool validateFields();

protected:
  Container() = default;
  /// Runs each time the dialog opens, before it is shown: the dialog's own first, then those of its groups
  /// and pages.
  virtual void onInit() {}
  void initAll();

private:
  friend class Control;
  std::vector<Control*> m_controls;
};

/// One control. It registers itself with its container when it is constructed.
class VELTORA_API Control {
public:
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  /// The text beside or on the control, accelerator (`&`) included; may be empty.
  [[nodiscard]] virtual std::wstring caption() const { return m_caption; }
  void setCaption(const std::wstring& caption);
  /// The caption as a person reads it: no `&`, no outer blanks.
  [[nodiscard]] std::wstring plainCaption() const;
  /// What a script calls the control: its caption, or for want of one the word for its kind ("Liste").
  [[nodiscard]] virtual std::vector<std::wstring> names() const;
  [[nodiscard]] virtual std::wstring kindName() const = 0;
  [[nodiscard]] virtual Kind kind() = 0;

  void show(bool visible = true);
  void hide() { show(false); }
  void enable(bool enabled = true);
  void disable() { enable(false); }
  /// The control's own state, whatever its containers are.
  [[nodiscard]] bool visible() const { return m_visible; }
  [[nodiscard]] bool enabled() const { return m_enabled; }
  /// True when the control and all that it lies in is visible (a page that is not in front does not count as
  /// hidden).
  [[nodiscard]] bool shown() const;
  /// Likewise visible and enabled.
  [[nodiscard]] bool usable() const;

  /// Places the control on the line of `neighbour`, which lives as long; a script may then say
  /// `Voisin/Légende`.
  void beside(Control& neighbour);
  [[nodiscard]] Control* neighbour() const { return m_neighbour; }

  /// Gives the control the keyboard without leaving another one; inside an `onLeave` it undoes the user's
  /// move.
  void setFocus();
  /// The user goes to this control: the one that had the focus is left.
  /// @return false when he does not get there.
  bool userEnter();
  /// True for what the keyboard can go to.
  [[nodiscard]] virtual bool focusable() const { return true; }

  [[nodiscard]] Container* parent() const { return m_parent; }
  [[nodiscard]] Dialog* dialog() const;
  /// Grows with each change that a user can see: a driver redraws the control when it differs from what it
  /// has shown. `Observer` tells it without being asked.
  [[nodiscard]] unsigned revision() const { return m_revision; }

  std::function<void()> onChange;  ///< the user changed the value
  std::function<void()> onLeave;   ///< the user leaves the control for another one

protected:
  /// @throws std::invalid_argument when `parent` is null
  Control(Container* parent, std::wstring caption);
  void touch();
  void touchCell(List& list, int row, int column);
  static void call(const std::function<void()>& callback) {
    if (callback) callback();
  }

private:
  friend class Container;
  Container* m_parent;
  std::wstring m_caption;
  Control* m_neighbour = nullptr;
  bool m_visible = true;
  bool m_enabled = true;
  unsigned m_revision = 0;
};

/// A caption without its accelerator marks (`&&` is one `&`) and outer blanks.
VELTORA_API std::wstring plainText(std::wstring_view caption);
/// The same without a final colon: what a script calls it.
VELTORA_API std::wstring readableText(std::wstring_view caption);
/// The form in which captions are compared: readable, runs of blanks as one, lower case.
VELTORA_API std::wstring comparable(std::wstring_view caption);

}  // namespace veltora::ui
