#pragma once

#include <QString>

class BoundCombo;

/// Procedures that several windows share: the commands on the selected tool, validations, the filter of typed keys.
namespace MainSubs {

/// The check-out command on the tool selected in the explorer: says why it cannot be lent, or opens the dialog.
void CheckOutSelectedTool();
/// The check-in command, likewise.
void CheckInSelectedTool();
/// The restore command on the scrapped tool selected there.
void RestoreSelectedScrap();

/// Deletes the scrap record `id` for good, with the loans of its tool. Each statement that fails is shown, and the
/// next one is run all the same. True when all went well; false as well, with nothing done, unless `kind` is "Tool".
bool PurgeScrapped(const QString &kind, qint32 id);

/// Ends every open loan of the tool at the present moment and takes its "out" flag away.
void closeLoans(qint16 toolId);
/// Shows the tool selected in the explorer as back in the crib; the view of tools that are out no longer lists it.
void showReturned(qint16 toolId);

/// The code of a pressed key if it may pass, else 0: `allowed` are the characters that may ("*": all), `disallowed`
/// those that may not in any case; letters of either case count.
int FilterKey(int keyAscii, const QString &allowed, bool allowBackspace, const QString &disallowed);

/// Whether a tool may be stored with these data; if not, says what is wrong.
bool ValidData(const QString &location, const QString &type, const QString &manufacturer, const QString &description);

/// Whether something stands in the box. If not, says `message` and puts the focus there.
bool isFilled(BoundCombo *box, const QString &message);

}
