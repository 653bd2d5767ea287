#pragma once

#include <QString>

class BoundCombo;

/// Procedures that several windows share: the commands on the selected tool, validations, the filter of typed keys.
namespace MainSubs {

/// The check-out command on the tool selected in the explorer: says why it cannot be lent, or opens the dialog.
void CheckOutSelectedTool();
/// The check-in command, likewise.
void CheckInSelectedTool();

/// Ends every open loan of the tool at the present moment and takes its "out" flag away.
void closeLoans(qint16 toolId);

/// Whether something stands in the box. If not, says `message` and puts the focus there.
bool isFilled(BoundCombo *box, const QString &message);

}
