#pragma once

#include "queries/QueryForm.h"
#include "ui_ResultsWindow.h"

struct ResultsKind;
struct TemplateList;
class ReportControl;

/// The results windows: what a query found, to be sorted by its headings and printed, all of it or what is selected,
/// through one of the module's report templates.
class ResultsWindow : public QDialog
{
    Q_OBJECT
public:
    /// Shows the window of that kind, in place of the one that is open, over what `query` found. It is deleted when it
    /// is closed.
    static void open(const ResultsKind &kind, const Query &query, Recordset found);
    /// Null when none of that kind is open.
    static ResultsWindow *opened(const ResultsKind &kind);

    Ui::ResultsWindow ui;

private:
    ResultsWindow(const ResultsKind &kind, const Query &query, Recordset found);
    void showRows(Recordset rows);
    void chooseDefaultTemplate();
    void dbcReport_Change();
    void headingClicked(int column);
    void showOrder();
    void showTotals();
    void saveRows();
    void cmdPrintScr_Click();
    void cmdPrintSel_Click();
    void cmdRedo_Click();
    QString templateFile();
    /// What the formula for selected rows calls the row. @throws NumberError when it has no number, or one above the 16
    /// bits that the suite's reports take.
    qint16 recordNumber(int row) const;

    const ResultsKind &m_kind;
    const TemplateList &m_templates;
    Query m_query;
    std::shared_ptr<Recordset> datReports;
    int m_sortedColumn = -1;
    bool m_descending = false;
    QString m_totalShown; ///< of the rows shown, which selecting does not change
    ReportControl *crpMain;
};
