// Tables: rows, selection, sorting, and what happens when they change under the user's hand.
#include "sample_dialog.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::wstring column(const ui::List& list, int index) {
  std::wstring text;
  for (int row = 0; row < list.rowCount(); ++row) text += list.cell(row, index) + L" ";
  return text;
}

TEST(List, SortsStablyWithSelectionAndChecks) {
  SampleDialog dialog;
  ui::List& list = dialog.points;
  list.select(0);
  list.setChecked(1, true);
  list.sort([](long long a, long long b) { return static_cast<int>(b % 2 - a % 2); });
  EXPECT_EQ(column(list, 0), L"P1 P3 P5 P2 P4 ");
  EXPECT_EQ(list.selection(), std::vector<int>{0});
  EXPECT_TRUE(list.checked(3));
  EXPECT_EQ(list.findData(4), 4);
  EXPECT_EQ(list.findData(9), -1);
}

TEST(List, ASortThatFailsOrContradictsItselfLosesNoRow) {
  SampleDialog dialog;
  ui::List& list = dialog.points;
  for (int i = 6; i <= 200; ++i) list.addRow({L"P"}, i);
  unsigned state = 7;
  list.sort([&](long long, long long) {
    return static_cast<int>((state = state * 1103515245U + 12345U) >> 16U) % 3 - 1;
  });
  int calls = 0;
  EXPECT_THROW(list.sort([&](long long, long long) -> int {
    if (++calls == 20) throw std::runtime_error("");
    return -1;
  }),
               std::runtime_error);
  long long sum = 0;
  for (int row = 0; row < list.rowCount(); ++row) sum += list.data(row);
  EXPECT_EQ(list.rowCount(), 200);
  EXPECT_EQ(sum, 200 * 201 / 2);
}

TEST(List, ClicksSelectAsAMouseDoes) {
  SampleDialog dialog;
  ui::List& list = dialog.points;
  list.userClick(1);
  list.userClick(3, true);
  EXPECT_EQ(list.selection(), (std::vector<int>{1, 3}));
  list.userClick(3, true);
  EXPECT_EQ(list.selection(), (std::vector<int>{1}));
  list.userClick(0);
  EXPECT_EQ(list.selection(), (std::vector<int>{0}));
  list.setSelectionMode(ui::List::Selection::Single);
  list.userClick(2, true);
  EXPECT_EQ(list.selection(), (std::vector<int>{2}));
  EXPECT_FALSE(list.userSelectAll());
}

TEST(List, ARowMaySelectItsGroup) {
  SampleDialog dialog;
  ui::List& list = dialog.points;  // rows 0 and 1 belong together, and rows 2 to 4
  list.onClick = [&](int row, bool) {
    for (int i = row < 2 ? 0 : 2; i < (row < 2 ? 2 : 5); ++i) list.select(i);
  };
  list.userSelect({0, 1});
  EXPECT_EQ(list.selection(), (std::vector<int>{0, 1}));
  list.userSelect({1, 4});
  EXPECT_EQ(list.selection(), (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(List, RowsMayGoWhileTheyAreClicked) {
  SampleDialog dialog;
  ui::List& list = dialog.points;
  list.onClick = [&](int, bool) { list.clear(); };
  EXPECT_TRUE(list.userDoubleClick(4));
  EXPECT_EQ(dialog.log, "choix 0") << "no double click on a row that has gone";
  dialog.code.onLeave = [&] { list.clear(); };
  list.addRow({L"a"});
  dialog.code.userEnter();
  EXPECT_FALSE(list.userClick(0)) << "the field that was left has emptied the list";
}

TEST(List, OutsideIsHarmless) {
  SampleDialog dialog;
  ui::List& list = dialog.points;
  for (const int row : {-1, 5, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    list.setCell(row, 0, L"x");
    list.setChecked(row, true);
    list.setData(row, 1);
    list.select(row);
    list.removeRow(row);
    EXPECT_EQ(list.cell(row, 0) + list.cell(0, row), L"");
    EXPECT_EQ(list.data(row), 0);
    EXPECT_FALSE(list.userClick(row) || list.userDoubleClick(row) || list.userCheck(row, true) ||
                 list.userColumn(row) || list.userEdit(row, 1, L"1") || list.userEdit(0, row, L"1"));
  }
  EXPECT_TRUE(list.userEdit(1, 1, L"7"));
  EXPECT_FALSE(list.userEdit(2, 1, L"non")) << "refused";
  EXPECT_FALSE(list.userEdit(1, 0, L"1")) << "a column that is only shown";
  EXPECT_EQ(column(list, 0) + column(list, 1), L"P1 P2 P3 P4 P5 10.0 7.0 30.0 40.0 50.0 ");
  list.setCell(1, 1, L"20.0");
  list.setCell(0, 1, L"x");
  list.addRow({});
  list.setCell(5, 1, L"y");
  EXPECT_EQ(column(list, 1), L"x 20.0 30.0 40.0 50.0 y ");
}

TEST(Control, GroupsHideAndDisableWhatTheyHold) {
  SampleDialog dialog;
  dialog.station.disable();
  EXPECT_FALSE(dialog.stationX.userType(L"1"));
  EXPECT_TRUE(dialog.directionX.userType(L"1"));
  dialog.direction.hide();
  EXPECT_FALSE(dialog.directionX.userType(L"2"));
  dialog.direction.show();
  EXPECT_TRUE(dialog.directionX.userType(L"2"));
}

TEST(Control, WhatCodeSetsCallsNothingBack) {
  SampleDialog dialog;
  dialog.code.setText(L"1");
  dialog.angles.setIndex(2);
  dialog.placerX.setChecked(false);
  dialog.mode.setIndex(1);
  dialog.points.select(1);
  dialog.onglets.setIndex(1);
  EXPECT_EQ(dialog.log, "");
}

TEST(Control, MayComeAndGo) {
  SampleDialog dialog;
  const std::size_t count = dialog.controls().size();
  {
    ui::TextField extra(&dialog, L"De plus");
    extra.userEnter();
    EXPECT_EQ(dialog.controls().size(), count + 1);
  }
  EXPECT_EQ(dialog.controls().size(), count);
  EXPECT_EQ(dialog.focus(), nullptr);
  EXPECT_THROW(ui::TextField(nullptr, L"Perdu"), std::invalid_argument);
}

TEST(ComboBox, KnowsItsTextAndIndex) {
  SampleDialog dialog;
  dialog.angles.setText(L"degres");
  EXPECT_EQ(dialog.angles.index(), 1);
  dialog.angles.setText(L"tours");
  EXPECT_EQ(dialog.angles.index(), 1) << "no such item";
  dialog.angles.setIndex(3);
  EXPECT_EQ(dialog.angles.index(), -1);
  EXPECT_EQ(dialog.angles.text(), L"");
  EXPECT_FALSE(dialog.angles.userType(L"grades"));
  dialog.echelle.setText(L"123");
  EXPECT_EQ(dialog.echelle.index(), -1);
  EXPECT_EQ(dialog.echelle.text(), L"123");
}

}  // namespace
