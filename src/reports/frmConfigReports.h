#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmConfigReports.h"

/// "Configure Reports": the report templates of each module, to be made the default, removed and imported.
class frmConfigReports : public QDialog, public SharedForm<frmConfigReports>
{
    Q_OBJECT
public:
    /// The names under which the catalogue's dialogs keep templates. The results windows look theirs up under names of
    /// their own; only "Junk Tools" is common to both.
    static QStringList modules();

    Ui::frmConfigReports ui;

private:
    friend class SharedForm<frmConfigReports>;
    frmConfigReports();
    void dbcRtype_Change();
    void cmdDefault_Click();
    void cmdRemove_Click();
    void cmdAdd_Click();
    bool moveToSelectedRow(const QString &messageIfNone);

    std::shared_ptr<Recordset> datReport;
};
