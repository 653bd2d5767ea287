#include "platform/gui/SaveDialog.h"

#include "platform/gui/WindowOwner.h"

#include <QFileDialog>
#include <QStandardPaths>

QString SaveDialog::ask(QWidget *over) const
{
    QFileDialog dialog(over, caption, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    dialog.selectFile(name + ending);
    return execOver(dialog) == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
