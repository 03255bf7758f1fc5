#pragma once

#include "ui/control.h"

#include <memory>
#include <utility>

/// What is pressed: buttons and menus.
namespace veltora::ui {

/// A button. One without `onClick` ends the dialog when its role says so, and is inert otherwise.
class VELTORA_API Button : public Control {
public:
  /// Ok: the Enter key, calls the dialog's `onOk`. Cancel: the Escape key, calls `onCancel`, and leaves no
  /// field, so that a field that insists on a value never holds the user back.
  enum class Role { Normal, Ok, Cancel };
  Button(Container* parent, std::wstring caption, Role role = Role::Normal);
  Button(Container* parent, std::wstring caption, std::function<void()> action);
  [[nodiscard]] Role role() const { return m_role; }
  [[nodiscard]] std::wstring kindName() const override { return L"Bouton"; }
  [[nodiscard]] Kind kind() override { return this; }

  bool userPress();

  std::function<void()> onClick;  ///< in place of what the role does

private:
  Role m_role;
};

/// One drop-down menu of the dialog's menu bar; several stand in their order.
class VELTORA_API Menu : public Control {
public:
  /// An entry, a separator, or a submenu when it has entries of its own.
  class VELTORA_API Entry {
  public:
    explicit Entry(Menu& menu) : m_menu(menu) {}
    [[nodiscard]] const std::wstring& caption() const { return m_caption; }
    void setCaption(const std::wstring& caption);
    [[nodiscard]] bool enabled() const { return m_enabled; }
    void enable(bool enabled = true);
    [[nodiscard]] bool checked() const { return m_checked; }
    void setChecked(bool checked);
    [[nodiscard]] bool separator() const { return m_separator; }
    [[nodiscard]] const std::vector<std::unique_ptr<Entry>>& entries() const { return m_entries; }

    Entry& add(const std::wstring& caption, std::function<void()> action);
    Entry& addSubmenu(const std::wstring& caption);
    void addSeparator();

    std::function<void()> onClick;

  private:
    Menu& m_menu;
    std::wstring m_caption;
    bool m_enabled = true;
    bool m_checked = false;
    bool m_separator = false;
    std::vector<std::unique_ptr<Entry>> m_entries;
  };

  Menu(Container* parent, const std::wstring& caption);
  Entry& add(const std::wstring& caption, std::function<void()> action) {
    return m_root.add(caption, std::move(action));
  }
  Entry& addSubmenu(const std::wstring& caption) { return m_root.addSubmenu(caption); }
  void addSeparator() { m_root.addSeparator(); }
  [[nodiscard]] const std::vector<std::unique_ptr<Entry>>& entries() const { return m_root.entries(); }
  [[nodiscard]] std::wstring kindName() const override { return L"Menu"; }
  [[nodiscard]] Kind kind() override { return this; }
  [[nodiscard]] bool focusable() const override { return false; }

  /// False also when the entry is disabled, a separator or a submenu. The focus stays where it is.
  bool userPress(const Entry& entry);

private:
  Entry m_root{*this};
};

}  // namespace veltora::ui
