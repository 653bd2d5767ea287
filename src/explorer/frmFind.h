#pragma once

#include "explorer/clsTools.h"
#include "platform/gui/ColumnWidths.h"
#include "platform/gui/SharedForm.h"
#include "ui_frmFind.h"

class frmTree;

/// Searches the explorer's current view for a text and leads from a hit to its place in the tree. It stays open
/// beside the explorer and closes with it.
class frmFind : public QDialog, public SharedForm<frmFind>
{
    Q_OBJECT
public:
    /// Prepares the dialog for the view that the explorer shows.
    void Startup();

    Ui::frmFind ui;

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void reject() override;

private:
    friend class SharedForm<frmFind>;
    frmFind();

    void cmdStart_Click();
    void cmdStop_Click();
    void cmdGoto_Click();
    void lstFind_ItemClick();
    void mobjTools_ChangeList();
    void showHint(const QModelIndex &index);
    void setSearching(bool searching);

    frmTree &mfrmTree;
    clsTools mobjTools;
    KeyedList m_hits;
    ColumnWidths *m_widths = nullptr;
    bool m_inSearch = false;
    bool m_closeAfterSearch = false;
    QElapsedTimer m_sinceCountShown;
};
