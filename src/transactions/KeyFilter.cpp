#include "transactions/KeyFilter.h"

#include "transactions/MainSubs.h"

#include <QComboBox>
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
    // A combo box hands keys on to its line edit without asking the line edit's filters, but not every key comes so.
    if (auto *combo = qobject_cast<QComboBox *>(box))
        combo->lineEdit()->installEventFilter(filter);
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
    }
    return QObject::eventFilter(box, event);
}
