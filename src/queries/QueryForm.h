#pragma once

#include "db/Session.h"
#include "platform/gui/BoundCombo.h"
#include "queries/Criterion.h"
#include "ui_QueryForm.h"

#include <QCheckBox>
#include <QLineEdit>

#include <optional>
#include <vector>

struct KeptCriterion;
struct PrintByKind;
struct QueryKind;

/// What a query form built at its last successful Generate.
struct Query {
    const QueryKind *form = nullptr;
    QString findsql = {}; ///< the statement for the results window
    QString findCrp = {}; ///< the selection formula for the same rows, for reports
    bool byLocation = false; ///< the explorer showed locations
};

/// The query forms: criteria are switched on and given values, then Generate opens the results window over the tools or
/// loans that meet them all.
class QueryForm : public QDialog
{
    Q_OBJECT
public:
    /// Shows the form until it is closed. When it found something, its results window is open then.
    static void showModal(const QueryKind &kind);
    explicit QueryForm(const QueryKind &kind);

    /// What the form of that kind built last; kept when the form is closed.
    static const Query &lastQuery(const QueryKind &kind);
    QString findsql() const { return lastQuery(m_kind).findsql; }
    QString findCrp() const { return lastQuery(m_kind).findCrp; }

    Ui::QueryForm ui;

private:
    struct Row {
        const Criterion *criterion;
        QCheckBox *useBox;
        QCheckBox *rangeBox;
        QWidget *valueBoxes[2];
        QLineEdit *texts[2]; ///< of the value boxes

        bool isEmpty(int box) const { return texts[box]->text().trimmed().isEmpty(); }
        void setText(int box, const QString &text) const;
        /// The choice behind `bound`, whatever text it has; none when it is gone, though a namesake may be there.
        void choose(const QString &bound) const;
        Entry entry() const;
    };

    void addRow(const Criterion &criterion);
    QCheckBox *addCheckBox(const char *name, int column);
    QWidget *addValueBox(const Criterion &criterion, const BoundCombo::Fetch &choices, int box);
    void chkUse_Click(const Row &row);
    void chkRange_Click(const Row &row);
    void showKeptQueries();
    void take(const std::vector<KeptCriterion> &criteria);
    void tidyUp(const QWidget *leaveOut = nullptr);
    void cmdGenerate_Click();
    bool generate();

    const QueryKind &m_kind;
    std::vector<Row> m_rows;
    std::optional<Recordset> m_found;
    const PrintByKind *m_printBy = nullptr; ///< to be opened in place of the form
};
