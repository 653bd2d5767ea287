#include "desk/ScanField.h"

#include <QKeyEvent>

namespace {

constexpr int longestText = 200;
constexpr int longestPause = 10'000; // milliseconds

}

ScanField::ScanField(QWidget *parent) : QLineEdit(parent)
{
    setMaxLength(longestText);
    setContextMenuPolicy(Qt::NoContextMenu);
    // Not every desktop's dark palette has a colour for it.
    QPalette hinted = palette();
    QColor hint = hinted.color(QPalette::Text);
    hint.setAlpha(140);
    hinted.setColor(QPalette::PlaceholderText, hint);
    setPalette(hinted);
    setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
}

// Some scanners end a code with Tab, which would lead out of the field.
bool ScanField::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Tab) {
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return true;
    }
    return QLineEdit::event(event);
}

void ScanField::keyPressEvent(QKeyEvent *event)
{
    // Half a code that a scanner left behind must not become the beginning of the next one.
    if (m_sinceKey.isValid() && m_sinceKey.elapsed() > longestPause)
        clear();
    m_sinceKey.start();
    const int key = event->text() == "\n" ? int(Qt::Key_Return) : event->key(); // a line feed is an end, too
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
        if (const QString typed = text(); !typed.isEmpty()) {
            clear();
            emit scanned(typed);
        } else if (key != Qt::Key_Tab) {
            emit steered(Qt::Key_Return);
        }
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        emit steered(key);
        return;
    case Qt::Key_Escape:
        clear();
        emit dismissed();
        return;
    case Qt::Key_Space:
        if (text().isEmpty()) {
            emit steered(Qt::Key_Space);
            return;
        }
        break;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
        QLineEdit::keyPressEvent(event);
        return;
    default:
        break;
    }
    if (event->matches(QKeySequence::Paste) || event->matches(QKeySequence::Copy)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const QString typed = event->text();
    const bool isControl = event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier);
    if (!typed.isEmpty() && (isControl || !typed[0].isPrint()))
        insert(QChar(QChar::ReplacementCharacter));
    else if (!typed.isEmpty() && !(event->modifiers() & Qt::AltModifier))
        insert(typed);
    else
        event->ignore(); // a shortcut of the window
}
