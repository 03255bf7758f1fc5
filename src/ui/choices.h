#pragma once

#include "ui/control.h"

#include <utility>

/// Choices among a few: combo box, check box, radio buttons.
namespace veltora::ui {

/// A drop-down list of texts; when editable, any text can be typed.
class VELTORA_API ComboBox : public Control {
public:
  /// Item 0 is in force when there is one.
  explicit ComboBox(Container* parent, std::wstring caption = {},
                    const std::vector<std::wstring>& items = {});
  [[nodiscard]] int count() const { return static_cast<int>(m_items.size()); }
  /// Text and user number of an item; an empty text and 0 outside.
  [[nodiscard]] std::wstring item(int index) const;
  [[nodiscard]] long long data(int index) const;
  /// @return the index of the new item
  int addItem(const std::wstring& text, long long data = 0);
  void clear();
  /// The index in force, -1 for none.
  [[nodiscard]] int index() const { return m_index; }
  /// An index outside means none.
  void setIndex(int index);
  /// The item in force, or the text typed.
  [[nodiscard]] const std::wstring& text() const { return m_text; }
  /// Takes the first item of that very text; else, when editable, the text itself with index -1.
  void setText(const std::wstring& text);
  [[nodiscard]] int find(const std::wstring& text) const;
  [[nodiscard]] bool editable() const { return m_editable; }
  void setEditable(bool editable = true);
  [[nodiscard]] std::wstring kindName() const override { return L"Choix"; }
  [[nodiscard]] Kind kind() override { return this; }

  bool userChoose(int index);
  /// Only in an editable box.
  bool userType(const std::wstring& text);

private:
  struct Item {
    std::wstring text;
    long long data;
  };
  std::vector<Item> m_items;
  std::wstring m_text;
  int m_index = -1;
  bool m_editable = false;
};

/// A check box, or a button that stays pressed and whose caption names the state in force.
class VELTORA_API CheckBox : public Control {
public:
  CheckBox(Container* parent, std::wstring caption, bool checked = false);
  /// Push-like: `caption` while not pressed, `pressedCaption` while pressed.
  CheckBox(Container* parent, std::wstring caption, std::wstring pressedCaption, bool checked);
  // A text literal is no truth value.
  CheckBox(Container* parent, std::wstring caption, const wchar_t* pressedCaption) = delete;
  [[nodiscard]] bool checked() const { return m_checked; }
  void setChecked(bool checked);
  [[nodiscard]] bool pushLike() const { return m_pushLike; }
  [[nodiscard]] std::wstring caption() const override;
  [[nodiscard]] std::wstring pressedCaption() const { return m_pressedCaption; }
  [[nodiscard]] std::vector<std::wstring> names() const override;
  [[nodiscard]] std::wstring kindName() const override { return L"Case"; }
  [[nodiscard]] Kind kind() override { return this; }

  /// A click. Calls `onChange`, then `onClick`.
  bool userToggle();
  /// Toggles when the state differs.
  bool userSet(bool checked);

  std::function<void()> onClick;

private:
  bool m_checked;
  bool m_pushLike = false;
  std::wstring m_pressedCaption;
};

/// Buttons of which one is pressed. The caption is the frame's, and may be empty.
class VELTORA_API RadioGroup : public Control {
public:
  RadioGroup(Container* parent, std::wstring caption, std::vector<std::wstring> items, int index = 0);
  [[nodiscard]] const std::vector<std::wstring>& items() const { return m_items; }
  /// The index in force, -1 for none.
  [[nodiscard]] int index() const { return m_index; }
  void setIndex(int index);
  /// An item outside counts as disabled.
  [[nodiscard]] bool itemEnabled(int index) const;
  void enableItem(int index, bool enabled = true);
  /// Image files shown in place of the items' texts where a screen is, one an item; none without.
  void setPictures(std::vector<std::wstring> paths);
  [[nodiscard]] const std::vector<std::wstring>& pictures() const { return m_pictures; }
  [[nodiscard]] std::wstring kindName() const override { return L"Choix"; }
  [[nodiscard]] Kind kind() override { return this; }

  /// A click on an item, also on the one in force. Calls `onChange` when the index changed, then `onClick`.
  bool userChoose(int index);

  std::function<void()> onClick;

private:
  std::vector<std::wstring> m_items;
  std::vector<bool> m_itemEnabled;
  std::vector<std::wstring> m_pictures;
  int m_index;
};

}  // namespace veltora::ui
