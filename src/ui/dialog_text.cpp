#include "ui/dialog_text.h"

#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "ui/kinds.h"
#include "ui/report_text.h"
#include "ui/script_names.h"

#include <algorithm>
#include <limits>
#include <sstream>

namespace veltora::ui {
namespace {

constexpr int kRowsShown = 50;
constexpr std::size_t kCellShown = 40;

/// A text that may have several lines, for one line of print.
std::wstring oneLine(const std::wstring& text) {
  std::wstring result;
  for (const wchar_t c : text) {
    if (c == L'\n')
      result += L"\\n";
    else if (c != L'\r')
      result += c;
  }
  return result;
}

std::wstring choices(const std::vector<std::wstring>& items) {
  std::wstring result = L"   {";
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i == kRowsShown) return result + L" | …}";
    result += (i ? L" | " : L"") + plainText(items[i]);
  }
  return result + L"}";
}

std::wstring padded(std::wstring text, std::size_t width, Align align) {
  if (text.size() > kCellShown) text = text.substr(0, kCellShown - 1) + L"…";
  const std::size_t blanks = width > text.size() ? width - text.size() : 0;
  const std::size_t before = align == Align::Right ? blanks : align == Align::Center ? blanks / 2 : 0;
  return std::wstring(before, L' ') + text + std::wstring(blanks - before, L' ');
}

std::wstring listHead(const List& list, const std::wstring& name) {
  std::wstring text = base::formater(std::wstring(L"%s : %d ligne%s"), name, list.rowCount(),
                                     std::wstring(list.rowCount() > 1 ? L"s" : L""));
  const auto selected = static_cast<int>(list.selection().size());
  if (selected > 0)
    text +=
        base::formater(std::wstring(L", %d choisie%s"), selected, std::wstring(selected > 1 ? L"s" : L""));
  return text;
}

/// "> " marks a selected row, "[x]" a checked one; rows count from 1.
std::wstring listRows(const List& list, const std::wstring& indent, int limit) {
  const int rows = std::min(list.rowCount(), limit);
  std::vector<std::size_t> widths;
  for (const List::Column& column : list.columns()) {
    std::size_t width = plainText(column.caption).size();
    for (int row = 0; row < rows; ++row)
      width = std::max(width, list.cell(row, static_cast<int>(widths.size())).size());
    widths.push_back(std::min(width, kCellShown));
  }
  const std::wstring margin = list.checkBoxes() ? L"          " : L"      ";
  std::wstring text = indent + margin;
  for (std::size_t c = 0; c < widths.size(); ++c) {
    text += L" | " + padded(plainText(list.columns()[c].caption), widths[c], list.columns()[c].align);
  }
  text = base::trimRight(text) + L"\n";
  for (int row = 0; row < rows; ++row) {
    text += indent +
            base::formater(std::wstring(L"%s%4d"), std::wstring(list.selected(row) ? L"> " : L"  "), row + 1);
    if (list.checkBoxes()) text += list.checked(row) ? L" [x]" : L" [ ]";
    for (std::size_t c = 0; c < widths.size(); ++c) {
      text +=
          L" | " + padded(oneLine(list.cell(row, static_cast<int>(c))), widths[c], list.columns()[c].align);
    }
    text = base::trimRight(text) + L"\n";
  }
  if (rows < list.rowCount())
    text += base::formater(indent + L"  … %d autres lignes\n", list.rowCount() - rows);
  return text;
}

std::wstring comboLine(const ComboBox& combo, const std::wstring& name) {
  std::vector<std::wstring> items;
  for (int i = 0; i < combo.count(); ++i) items.push_back(combo.item(i));
  return name + L" = " + oneLine(combo.text()) + choices(items);
}

std::wstring radioLine(const RadioGroup& radio, const std::wstring& name) {
  const auto index = static_cast<std::size_t>(radio.index());
  const std::wstring chosen = radio.index() < 0 ? std::wstring() : plainText(radio.items()[index]);
  return name + L" = " + chosen + choices(radio.items());
}

std::wstring pagesLine(const Pages& pages, const std::wstring& name) {
  std::vector<std::wstring> captions;
  for (int i = 0; i < pages.count(); ++i) captions.push_back(pages.page(i)->caption());
  const Page* front = pages.page(pages.index());
  return name + L" = " + (front ? front->plainCaption() : std::wstring()) + choices(captions);
}

std::wstring menuLine(const std::vector<std::unique_ptr<Menu::Entry>>& entries, const std::wstring& path) {
  std::wstring text;
  for (const auto& entry : entries) {
    if (entry->separator()) continue;
    const std::wstring name = path + L"/" + plainText(entry->caption());
    if (!text.empty()) text += L"  ";
    if (!entry->entries().empty()) {
      text += menuLine(entry->entries(), name);
      continue;
    }
    text += L"[" + name + L"]" + (entry->checked() ? L" (coché)" : L"");
    if (!entry->enabled()) text += L" (désactivé)";
  }
  return text;
}

std::wstring labelLine(const Label& label) {
  const std::wstring caption = label.plainCaption();
  if (caption.empty() || label.text().empty()) return oneLine(caption + label.text());
  return caption + (caption.back() == L':' ? L" " : L" : ") + oneLine(label.text());
}

/// A text of several lines that nobody types is printed as it is, below its name.
bool printedBelow(const TextField& field) {
  return field.multiline() && field.readOnly() && field.text().find(L'\n') != std::wstring::npos;
}

std::wstring fieldRows(const TextField& field, const std::wstring& indent, int limit) {
  std::wistringstream lines(field.text());
  std::wstring text;
  std::wstring line;
  int rows = 0;
  for (; std::getline(lines, line); ++rows) {
    if (rows < limit) text += indent + L"  " + base::trimRight(line, L"\r") + L"\n";
  }
  if (rows > limit) text += base::formater(indent + L"  … %d autres lignes\n", rows - limit);
  return text;
}

std::wstring fieldLine(const TextField& field, const std::wstring& name) {
  if (printedBelow(field)) return name + L" :   (lecture seule)";
  return name + L" = " + oneLine(field.text()) + (field.readOnly() ? L"   (lecture seule)" : L"");
}

/// The control in one line, without its state.
std::wstring plainLine(Control& control) {
  std::wstring name = readableText(control.caption());
  if (name.empty()) name = control.names().front();
  if (control.neighbour()) name = control.neighbour()->names().front() + L"/" + name;
  return visit(
      control, [&](const Label* label) { return labelLine(*label); },
      [&](const TextField* field) { return fieldLine(*field, name); },
      [&](const ComboBox* combo) { return comboLine(*combo, name); },
      [&](const RadioGroup* radio) { return radioLine(*radio, name); },
      [&](const Pages* pages) { return pagesLine(*pages, name); },
      [&](const List* list) { return listHead(*list, name); },
      [&](const Menu* menu) { return menuLine(menu->entries(), name); },
      [&](const CheckBox* check) {
        return check->pushLike() ? L"[" + name + L"]   (bascule)"
                                 : name + L" = " + (check->checked() ? L"oui" : L"non");
      },
      [&](const ProgressBar* bar) {
        return base::formater(std::wstring(L"%s : %d %%"), name, bar->percent());
      },
      [&](const WebView* view) { return name + L" : " + view->path(); },
      [&](const Preview* preview) { return L"[" + name + L"] " + preview->path(); },
      [&](const Button*) { return L"[" + name + L"]"; }, [&](const Group*) { return name; },
      [&](const Page*) { return name; });
}

std::wstring lineOf(Control& control) {
  const wchar_t* state = !control.visible() ? L"   (masqué)" : !control.enabled() ? L"   (désactivé)" : L"";
  return base::trimRight(plainLine(control)) + state;
}

/// The report that a view shows, as text; nothing when its file cannot be read.
std::wstring reportOf(const WebView& view) {
  const auto html = base::lireFichier(base::cheminDuTexte(view.path()));
  return html ? L"\n" + reportText(*html) : std::wstring();
}

std::wstring textOf(Control& control, const std::wstring& indent, int rows);

std::wstring textOfAll(const Container& container, const std::wstring& indent, int rows) {
  std::wstring text;
  for (Control* control : container.controls()) text += textOf(*control, indent, rows);
  return text;
}

std::wstring textOf(Control& control, const std::wstring& indent, int rows) {
  std::wstring text = indent + lineOf(control) + L"\n";
  if (!control.visible()) return text;
  if (const auto* list = dynamic_cast<List*>(&control)) return text + listRows(*list, indent, rows);
  if (const auto* field = dynamic_cast<TextField*>(&control); field && printedBelow(*field)) {
    return text + fieldRows(*field, indent, rows);
  }
  if (const auto* pages = dynamic_cast<Pages*>(&control)) {
    const Page* front = pages->page(pages->index());
    return front ? text + textOfAll(*front, indent + L"  ", rows) : text;
  }
  if (const auto* inner = dynamic_cast<Container*>(&control)) text += textOfAll(*inner, indent + L"  ", rows);
  return text;
}

}  // namespace

std::wstring titleLine(const std::wstring& title) { return L"\n=== " + title + L" ===\n"; }

std::wstring dialogText(const Dialog& dialog) {
  return titleLine(dialog.title()) + textOfAll(dialog, {}, kRowsShown);
}

std::wstring shownReports(const Container& container) {
  std::wstring text;
  for (const Control* control : container.controls()) {
    if (const auto* view = dynamic_cast<const WebView*>(control); view && view->visible())
      text += reportOf(*view);
    if (const auto* inner = dynamic_cast<const Container*>(control)) text += shownReports(*inner);
  }
  return text;
}

std::wstring controlText(Control& control) {
  if (const auto* view = dynamic_cast<const WebView*>(&control))
    return lineOf(control) + L"\n" + reportOf(*view);
  const bool whole = dynamic_cast<List*>(&control) || dynamic_cast<TextField*>(&control);
  return textOf(control, {}, whole ? std::numeric_limits<int>::max() : kRowsShown);
}

std::wstring controlSummary(Control& control) { return lineOf(control) + L"\n"; }

}  // namespace veltora::ui
