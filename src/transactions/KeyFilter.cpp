#include "transactions/KeyFilter.h"

#include "transactions/MainSubs.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

namespace {

bool isDropped(QChar character)
{
    return MainSubs::FilterKey(character.unicode(), "*", true, "|'\\\"") == 0 && !character.isNull();
}

}

void KeyFilter::watch(QWidget *box)
{
    auto *filter = new KeyFilter(box);
    box->installEventFilter(filter);
    // Keys reach a combo box by its line edit as well, and by the list of completions while that is open.
    if (auto *combo = qobject_cast<QComboBox *>(box)) {
        combo->lineEdit()->installEventFilter(filter);
        if (QAbstractItemView *completions = combo->completer()->popup())
            completions->installEventFilter(filter);
    }
}

bool KeyFilter::eventFilter(QObject *box, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const QString typed = static_cast<QKeyEvent *>(event)->text();
        if (std::any_of(typed.begin(), typed.end(), isDropped))
            return true;
    } else if (event->type() == QEvent::InputMethod) {
        // Composed with a dead key, an apostrophe comes as the text of an input method.
        auto *composed = static_cast<QInputMethodEvent *>(event);
        QString text = composed->commitString();
        text.removeIf(isDropped);
        composed->setCommitString(text, composed->replacementStart(), composed->replacementLength());
    } else if (event->type() == QEvent::Show) {
        // The completer has put its own filter first.
        box->installEventFilter(this);
    }
    return QObject::eventFilter(box, event);
}
