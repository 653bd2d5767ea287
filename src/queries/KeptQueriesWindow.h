#pragma once

#include "queries/KeptQueries.h"
#include "ui_KeptQueriesWindow.h"

class QComboBox;

/// Where the criteria of a query form are kept under a name, and taken again.
class KeptQueriesWindow : public QDialog
{
    Q_OBJECT
public:
    /// A row of the form that is switched on.
    struct Row {
        const Criterion &criterion;
        Entry entry;
    };
    KeptQueriesWindow(const QString &form, const std::vector<Row> &rows, QWidget *owner);

    /// Of the query that was taken; there is one when the window was accepted.
    const std::vector<KeptCriterion> &taken() const { return m_taken; }

    Ui::KeptQueriesWindow ui;

private:
    void showNames(const QString &current = {});
    void showDefaultButton();
    void cmdTake_Click();
    void cmdDelete_Click();
    void cmdKeep_Click();

    KeptQueries m_queries;
    std::vector<KeptCriterion> m_criteria; ///< of the form
    std::vector<QComboBox *> m_periods; ///< of each, null where it is no date
    std::vector<KeptCriterion> m_taken;
};
