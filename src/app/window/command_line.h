#pragma once

#include "base/console.h"

#include <QWidget>
#include <functional>

class QCompleter;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QStringListModel;

namespace veltora::app {

/// What was printed, and below it the line where the user types: with the prompt in front, what was typed
/// before by the arrow keys, and the words that fit what is asked.
class CommandLine : public QWidget {
public:
  explicit CommandLine(QWidget* parent = nullptr);

  /// Shows the prompt and its words; nothing for no question.
  void ask(const base::Request* request);
  /// Appends to what was printed.
  void print(const QString& text);
  /// On a line of its own.
  void printLine(const QString& text);
  /// What was printed so far appears.
  void flush();
  /// Keys typed elsewhere in the window belong here.
  void type(QKeyEvent* event);
  [[nodiscard]] QLineEdit& edit() { return *m_edit; }
  [[nodiscard]] QString printed() const;
  [[nodiscard]] const QStringList& history() const { return m_history; }
  void setHistory(const QStringList& lines);

  std::function<void(const QString& line)> entered;
  /// Whether a question waits; what is typed ahead of one stays in the line.
  std::function<bool()> accepts;
  std::function<void()> escaped;
  /// The delete key, while nothing is typed.
  std::function<void()> erased;

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void enter();
  void recall(int step);

  QPlainTextEdit* m_printed;
  QLabel* m_prompt;
  QLineEdit* m_edit;
  QCompleter* m_completer;
  QStringListModel* m_words;
  QString m_pending;        ///< printed and not shown yet
  bool m_lineOpen = false;  ///< what was printed last ends within a line
  QStringList m_history;
  qsizetype m_recalled = 0;  ///< place in the history; behind its end for the line being typed
};

}  // namespace veltora::app
