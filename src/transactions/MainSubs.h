#pragma once

#include <QString>

#include <functional>

class BoundCombo;
class QDialog;
class QWidget;

/// Procedures that several windows share: the commands on the selected tool, validations, the filter of typed keys.
namespace MainSubs {

/// The check-out command on the tool selected in the explorer: says why it cannot be lent, or opens the dialog.
void CheckOutSelectedTool();
/// The check-in command, likewise.
void CheckInSelectedTool();
/// The restore command on the scrapped tool selected there.
void RestoreSelectedScrap();

/// Deletes the scrap record `id` for good, with the loans of its tool. Each statement that fails is shown, the same
/// words once, and the next one is run all the same. True when all went well; false as well, with nothing done, unless
/// `kind` is "Tool". Whoever deletes several records stops at the first false: what stopped this one stops the next.
bool PurgeScrapped(const QString &kind, qint32 id);

/// Does the deed of a dialog over the explorer, `steps`, and says when it was not done: `notDone` and why. The dialog
/// stays open then, with what was chosen, unless the tool is not any more as it was shown: that closes the dialog, and
/// the list shows the present state. @returns whether it was done.
bool did(QDialog *dialog, const QString &notDone, const std::function<void()> &steps);

/// Shows the tool selected in the explorer as back in the crib; the view of tools that are out no longer lists it.
void showReturned(qint16 toolId);

/// The code of a pressed key if it may pass, else 0: `allowed` are the characters that may ("*": all), `disallowed`
/// those that may not in any case; letters of either case count.
int FilterKey(int keyAscii, const QString &allowed, bool allowBackspace, const QString &disallowed);

/// Makes names that look alike one name: in the boxes of one line, blanks and line breaks at the ends of a text are
/// cut, those inside become single blanks. Before a text is compared or saved.
void tidyTexts(QWidget *form);

/// Whether a tool may be stored with these data; if not, says what is wrong.
bool ValidData(const QString &location, const QString &type, const QString &manufacturer, const QString &description);

/// Whether something is chosen in the box. If not, says why what stands there is none, then `message`, and puts the
/// focus there.
bool isFilled(BoundCombo *box, const QString &message);

}
