#pragma once

#include <QString>

#include <functional>

class BoundCombo;
class QDialog;
class QWidget;

/// The steps that dialogs have in common, in their order: tidy what was typed, see that all is chosen, do it, show it.
namespace MainSubs {

/// Makes names that look alike one name: in the boxes of one line, blanks and line breaks at the ends of a text are
/// cut, those inside become single blanks. Before a text is compared or saved.
void tidyTexts(QWidget *form);

/// Whether something is chosen in the box. If not, says why what stands there is none, then `message`, and puts the
/// focus there.
bool isFilled(BoundCombo *box, const QString &message);

/// Makes the change of a dialog over the explorer, `steps`, and says when it was not done: `notDone` and why. The
/// dialog stays open then, with what was chosen, unless the tool is not any more as it was shown: that closes the
/// dialog, and the list shows the present state. @returns whether it was done.
bool did(QDialog *dialog, const QString &notDone, const std::function<void()> &steps);

/// Shows the tool selected in the explorer as back in the crib; the view of tools that are out no longer lists it.
void showReturned(qint16 toolId);

}
