#include "transactions/KeyFilter.h"

#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

void KeyFilter::watch(QWidget *box, Refusal refuses)
{
    auto *filter = new KeyFilter(box, std::move(refuses));
    box->installEventFilter(filter);
    // Keys reach a combo box by its line edit as well.
    if (auto *combo = qobject_cast<QComboBox *>(box))
        combo->lineEdit()->installEventFilter(filter);
}

KeyFilter::KeyFilter(QWidget *box, Refusal refuses) : QObject(box), m_refuses(std::move(refuses)) { }

bool KeyFilter::isDropped(QChar character) const
{
    if (MainSubs::FilterKey(character.unicode(), "*", true, "|'\\\"") == 0 && !character.isNull())
        return true;
    return m_refuses && m_refuses(character);
}

bool KeyFilter::eventFilter(QObject *box, QEvent *event)
{
    const auto dropped = [this](QChar character) { return isDropped(character); };
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const QString typed = key->text();
        // With Ctrl a key types nothing, whatever text it bears.
        if (key->modifiers() != Qt::ControlModifier && std::any_of(typed.begin(), typed.end(), dropped))
            return true;
    } else if (event->type() == QEvent::InputMethod) {
        // Composed with a dead key, an apostrophe comes as the text of an input method.
        auto *composed = static_cast<QInputMethodEvent *>(event);
        QString text = composed->commitString();
        text.removeIf(dropped);
        composed->setCommitString(text, composed->replacementStart(), composed->replacementLength());
    }
    return QObject::eventFilter(box, event);
}

int MainSubs::FilterKey(int keyAscii, const QString &allowed, bool allowBackspace, const QString &disallowed)
{
    constexpr char16_t backspace = 8;
    const QChar character = QChar(keyAscii).toUpper();
    QString passing = allowed.toUpper();
    if (allowBackspace)
        passing.prepend(backspace);
    if (allowed != "*" && !passing.contains(character, Qt::CaseInsensitive))
        return 0;
    return disallowed.contains(character, Qt::CaseInsensitive) ? 0 : keyAscii;
}
