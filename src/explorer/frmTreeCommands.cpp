// The explorer's commands: each says why it cannot act on what is selected, or opens what does the work.
#include "explorer/frmTree.h"
#include "explorer/frmTreeSelect.h"
#include "platform/gui/MsgBox.h"

void frmTree::cmdRefresh_Click()
{
    if (!ui.tvMain->selectedNode() && !selectedItem()) {
        inform("No item selected in tree or list");
        return;
    }
    rebuildView();
}

std::optional<PickedFolder> frmTree::pickFolder(const QString &mode, QWidget *parent)
{
    return frmTreeSelect::pick(mode, parent);
}
