#pragma once

#include <algorithm>
#include <charconv>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

/// One row of a table of cases.
struct CaseRow {
  std::string place;  ///< "file:line", for messages
  std::vector<std::string> cells;

  /// A cell; throws std::out_of_range when the row is too short.
  const std::string& operator[](std::size_t column) const { return cells.at(column); }
  /// A cell, empty when the row is too short.
  [[nodiscard]] std::string at(std::size_t column) const {
    return column < cells.size() ? cells[column] : std::string();
  }
  /// A cell as the texts between " // ", the last of which may be empty.
  [[nodiscard]] std::vector<std::string> list(std::size_t column) const {
    std::vector<std::string> texts;
    std::string rest = cells.at(column) + " ";
    for (std::size_t at = 0; (at = rest.find(" // ")) != std::string::npos; rest.erase(0, at + 4))
      texts.push_back(rest.substr(0, at));
    texts.push_back(rest.empty() ? rest : rest.substr(0, rest.size() - 1));
    return texts;
  }
  /// A cell as a number, whatever the locale; throws std::invalid_argument when it is none.
  [[nodiscard]] double number(std::size_t column) const { return read<double>(column); }
  [[nodiscard]] int integer(std::size_t column) const { return read<int>(column); }

private:
  template <class Number>
  [[nodiscard]] Number read(std::size_t column) const {
    const std::string& cell = cells.at(column);
    const char* end = cell.data() + cell.size();
    Number value{};
    const auto [stop, error] = std::from_chars(cell.data() + (cell.starts_with('+') ? 1 : 0), end, value);
    if (error != std::errc() || stop != end)
      throw std::invalid_argument(place + ": \"" + cell + "\" is no number");
    return value;
  }
};

inline std::ostream& operator<<(std::ostream& out, const CaseRow& row) {
  return out << row.place << ' ' << row.cells.front();
}

/// A table of tests/<file>: the rows below the line "## table", a case a line, cells between bars, or between
/// what is named in their place. Blanks around a cell count only within quotes; "¶" is a line end. Lines that
/// are empty or begin with ";" say nothing. Throws std::runtime_error when there is no such table, or no row
/// in it.
inline std::vector<CaseRow> caseRows(const std::string& file, const std::string& table, char bar = '|') {
  std::ifstream in(VELTORA_SOURCE_DIR "/tests/" + file);
  std::vector<CaseRow> rows;
  bool inside = false;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (line.starts_with("## ")) inside = line.substr(3) == table;
    if (!inside || line.empty() || line[0] == ';' || line.starts_with("## ")) continue;
    CaseRow row{file + ":" + std::to_string(number), {}};
    for (std::size_t from = 0; from <= line.size();) {
      const std::size_t to = std::min(line.find(bar, from), line.size());
      std::string cell = line.substr(from, to - from);
      cell.erase(0, std::min(cell.find_first_not_of(' '), cell.size()));
      cell.erase(cell.find_last_not_of(' ') + 1);
      if (cell.size() > 1 && cell.front() == '"' && cell.back() == '"')
        cell = cell.substr(1, cell.size() - 2);
      for (std::size_t at = 0; (at = cell.find("¶", at)) != std::string::npos; ++at)
        cell.replace(at, 2, "\n");
      row.cells.push_back(cell);
      from = to + 1;
    }
    rows.push_back(row);
  }
  if (rows.empty()) throw std::runtime_error(file + ": no rows in the table " + table);
  return rows;
}
