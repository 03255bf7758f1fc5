#pragma once

#include "ui/control.h"

/// Controls that hold controls.
namespace veltora::ui {

/// A frame with a title. Hidden or disabled, so is all that it holds.
class VELTORA_API Group : public Control, public Container {
public:
  explicit Group(Container* parent, std::wstring caption = {});
  [[nodiscard]] Dialog* dialogOf() override { return dialog(); }
  [[nodiscard]] Control* asControl() override { return this; }
  [[nodiscard]] std::wstring kindName() const override { return L"Groupe"; }
  [[nodiscard]] Kind kind() override { return this; }
  [[nodiscard]] bool focusable() const override { return false; }
};

class Page;

/// Property pages, of which one is in front. It holds only pages.
class VELTORA_API Pages : public Control, public Container {
public:
  explicit Pages(Container* parent, std::wstring caption = {});
  [[nodiscard]] Dialog* dialogOf() override { return dialog(); }
  [[nodiscard]] Control* asControl() override { return this; }
  [[nodiscard]] int count() const { return static_cast<int>(controls().size()); }
  /// Null outside.
  [[nodiscard]] Page* page(int index) const;
  [[nodiscard]] int indexOf(const Page& page) const;
  /// The page in front; 0 at the start.
  [[nodiscard]] int index() const { return m_index; }
  void setIndex(int index);
  [[nodiscard]] std::wstring kindName() const override { return L"Onglets"; }
  [[nodiscard]] Kind kind() override { return this; }

  /// Calls `onChange` when the page in front changed.
  bool userChoose(int index);

private:
  int m_index = 0;
};

/// One page; a class with much on its page derives from it and declares its controls as a dialog does.
class VELTORA_API Page : public Control, public Container {
public:
  Page(Pages* pages, std::wstring caption);
  [[nodiscard]] Dialog* dialogOf() override { return dialog(); }
  [[nodiscard]] Control* asControl() override { return this; }
  [[nodiscard]] Pages& pages() const { return *m_pages; }
  [[nodiscard]] bool inFront() const;
  [[nodiscard]] std::wstring kindName() const override { return L"Page"; }
  [[nodiscard]] Kind kind() override { return this; }
  [[nodiscard]] bool focusable() const override { return false; }

private:
  Pages* m_pages;
};

}  // namespace veltora::ui
