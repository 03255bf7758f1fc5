#include "app/window/command_line.h"

#include "app/window/text.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStringListModel>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace veltora::app {
namespace {

constexpr int kMostBlocks = 5000;
constexpr int kMostLines = 500;
constexpr int kVisibleLines = 6;

}  // namespace

CommandLine::CommandLine(QWidget* parent)
    : QWidget(parent),
      m_printed(new QPlainTextEdit),
      m_prompt(new QLabel),
      m_edit(new QLineEdit),
      m_words(new QStringListModel(this)) {
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  m_printed->setReadOnly(true);
  m_printed->setUndoRedoEnabled(false);
  m_printed->setMaximumBlockCount(kMostBlocks);
  m_printed->setFont(fixed);
  m_printed->setFocusPolicy(Qt::ClickFocus);
  m_printed->setMinimumHeight(QFontMetrics(fixed).lineSpacing() * 2);
  m_edit->setFont(fixed);
  m_edit->setFrame(false);
  m_edit->setObjectName("ligne");
  m_prompt->setFont(fixed);
  m_prompt->setTextFormat(Qt::PlainText);
  m_completer = new QCompleter(m_words, this);
  m_completer->setCaseSensitivity(Qt::CaseInsensitive);
  m_edit->setCompleter(m_completer);

  auto* const line = new QHBoxLayout;
  line->addWidget(m_prompt);
  line->addWidget(m_edit, 1);
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(2, 2, 2, 2);
  rows->setSpacing(2);
  rows->addWidget(m_printed, 1);
  rows->addLayout(line);
  resize(width(), QFontMetrics(fixed).lineSpacing() * kVisibleLines);
  m_edit->installEventFilter(this);
  connect(m_edit, &QLineEdit::returnPressed, this, [this] { enter(); });
}

void CommandLine::ask(const base::Request* request) {
  flush();
  m_edit->setEnabled(request != nullptr);
  m_prompt->setText(request ? shown(request->prompt) : QString());
  QStringList words;
  if (request)
    for (const std::string& word : request->keywords) words.append(shown(word));
  words.sort(Qt::CaseInsensitive);
  m_words->setStringList(words);
  if (request && isActiveWindow()) m_edit->setFocus();
}

void CommandLine::print(const QString& text) {
  // Of all that is printed while the window does not turn, once.
  if (m_pending.isEmpty()) QTimer::singleShot(0, this, [this] { flush(); });
  m_pending += text;
  if (!text.isEmpty()) m_lineOpen = !text.endsWith('\n');
}

void CommandLine::printLine(const QString& text) { print((m_lineOpen ? "\n" : "") + text + "\n"); }

void CommandLine::flush() {
  if (m_pending.isEmpty()) return;
  QTextCursor end(m_printed->document());
  end.movePosition(QTextCursor::End);
  end.insertText(m_pending);
  m_pending.clear();
  m_printed->verticalScrollBar()->setValue(m_printed->verticalScrollBar()->maximum());
}

QString CommandLine::printed() const { return m_printed->toPlainText() + m_pending; }

void CommandLine::setHistory(const QStringList& lines) {
  m_history = lines;
  m_recalled = m_history.size();
}

void CommandLine::type(QKeyEvent* event) {
  m_edit->setFocus();
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return enter();
  if (!event->text().isEmpty() && event->text().front().isPrint()) m_edit->insert(event->text());
}

void CommandLine::enter() {
  if (accepts && !accepts()) return;
  const QString line = m_edit->text();
  m_completer->popup()->hide();
  m_edit->clear();
  if (!line.trimmed().isEmpty() && (m_history.isEmpty() || m_history.back() != line)) m_history.append(line);
  if (m_history.size() > kMostLines) m_history.removeFirst();
  m_recalled = m_history.size();
  if (entered) entered(line);
}

void CommandLine::recall(int step) {
  const qsizetype place = std::clamp<qsizetype>(m_recalled + step, 0, m_history.size());
  if (place == m_recalled) return;
  m_recalled = place;
  m_edit->setText(place < m_history.size() ? m_history[place] : QString());
}

bool CommandLine::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed = event->type() == QEvent::KeyPress;
  if (watched != m_edit || (!pressed && event->type() != QEvent::ShortcutOverride))
    return QWidget::eventFilter(watched, event);
  auto* const stroke = static_cast<QKeyEvent*>(event);
  const bool typed = !m_edit->text().isEmpty();
  if (!pressed) {
    // Of an empty line there is nothing to take back: the drawing is meant.
    const bool undoes = stroke->matches(QKeySequence::Undo) || stroke->matches(QKeySequence::Redo);
    if (undoes && !typed) event->ignore();
    return undoes && !typed;
  }
  const int key = stroke->key();
  const bool chooses = m_completer->popup()->isVisible();
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
      if (chooses) return false;
      recall(key == Qt::Key_Up ? -1 : 1);
      return true;
    case Qt::Key_Tab:
      m_completer->setCompletionPrefix(m_edit->text());
      if (m_completer->completionCount() == 1)
        m_edit->setText(m_completer->currentCompletion());
      else
        m_completer->complete();
      return true;
    case Qt::Key_Delete:
      if (typed || !erased) return false;
      erased();
      return true;
    case Qt::Key_Escape:
      m_edit->clear();
      if (escaped) escaped();
      return true;
    default:
      return false;
  }
}

}  // namespace veltora::app
