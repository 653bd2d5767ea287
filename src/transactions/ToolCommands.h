#pragma once

/// The commands on the item selected in the explorer, for buttons and menus alike.
namespace MainSubs {

/// The check-out command on the tool selected in the explorer: says why it cannot be lent, or opens the dialog.
void CheckOutSelectedTool();
/// The check-in command, likewise.
void CheckInSelectedTool();
/// The restore command on the scrapped tool selected there.
void RestoreSelectedScrap();

}
