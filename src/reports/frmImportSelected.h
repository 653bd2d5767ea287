#pragma once

#include "ui_frmImportSelected.h"

/// "Importing Selected Report": enters a report template into the catalogue, under a name and a module. Its file stays
/// where it is, in the program's folder.
class frmImportSelected : public QDialog
{
    Q_OBJECT
public:
    explicit frmImportSelected(const QString &fileName);

    Ui::frmImportSelected ui;

private:
    void cmdImport_Click();
};
