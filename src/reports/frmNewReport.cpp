#include "reports/frmNewReport.h"

#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "platform/system/ProgramFolder.h"
#include "reports/frmImportSelected.h"

#include <QDir>

frmNewReport::frmNewReport() : QDialog(windowOwner())
{
    ui.setupUi(this);
    QStringList files;
    for (const QString &folder : ProgramFolder::folders())
        files += QDir(folder).entryList({"*.rpt"}, QDir::Files);
    files.removeDuplicates();
    files.sort(Qt::CaseInsensitive);
    ui.filReport->addItems(files);
    onUserAction(ui.cmdSelect, &QPushButton::clicked, this, &frmNewReport::cmdSelect_Click);
    onUserAction(ui.filReport, &QListWidget::itemDoubleClicked, this, &frmNewReport::cmdSelect_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmNewReport::cmdSelect_Click()
{
    const QList<QListWidgetItem *> selected = ui.filReport->selectedItems();
    if (selected.isEmpty()) {
        msgBox({.text = "Nothing Selected To Delete!", .caption = "Selection Error", .icon = QMessageBox::Information});
        return;
    }
    if (frmImportSelected(selected.first()->text()).exec() == Accepted)
        accept();
}
