#include "queries/KeptQueriesWindow.h"

#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"

#include <QApplication>
#include <QComboBox>
#include <QScreen>
#include <QShortcut>

KeptQueriesWindow::KeptQueriesWindow(const QString &form, const std::vector<Row> &rows, QWidget *owner)
    : QDialog(owner), m_queries(form)
{
    ui.setupUi(this);
    for (const Row &row : rows) {
        QComboBox *period = nullptr;
        if (row.criterion.value == Criterion::ShortDate) {
            period = new QComboBox;
            period->addItem(row.entry.isRange ? "these days" : "this day");
            period->addItems(KeptQueries::periods());
            period->setAccessibleName(row.criterion.caption);
            ui.periods->addRow(QString("%1:").arg(row.criterion.caption), period);
            setTabOrder(m_periods.empty() || !m_periods.back() ? static_cast<QWidget *>(ui.txtName) : m_periods.back(),
                        period);
        }
        m_criteria.push_back({row.criterion.useBox, row.entry});
        m_periods.push_back(period);
    }
    ui.grpKeep->setEnabled(!rows.empty());
    // Names that differ in their last words only are told apart.
    ui.lstNames->setMinimumWidth(fontMetrics().averageCharWidth() * 44);
    showNames();
    resize(sizeHint().boundedTo(screen()->availableSize() * 0.9));
    connect(qApp, &QApplication::focusChanged, this, &KeptQueriesWindow::showDefaultButton);
    onUserAction(ui.cmdTake, &QPushButton::clicked, this, &KeptQueriesWindow::cmdTake_Click);
    onUserAction(ui.lstNames, &QListWidget::itemDoubleClicked, [this] { cmdTake_Click(); });
    onUserAction(ui.cmdDelete, &QPushButton::clicked, this, &KeptQueriesWindow::cmdDelete_Click);
    onUserAction(new QShortcut(QKeySequence::Delete, ui.lstNames, nullptr, nullptr, Qt::WidgetShortcut),
                 &QShortcut::activated, this, &KeptQueriesWindow::cmdDelete_Click);
    onUserAction(ui.cmdKeep, &QPushButton::clicked, this, &KeptQueriesWindow::cmdKeep_Click);
    onUserAction(ui.cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void KeptQueriesWindow::showNames(const QString &current)
{
    ui.lstNames->clear();
    ui.lstNames->addItems(m_queries.names());
    const QList<QListWidgetItem *> found = ui.lstNames->findItems(current, Qt::MatchExactly);
    ui.lstNames->setCurrentItem(found.isEmpty() ? ui.lstNames->item(0) : found.front());
    const bool hasAny = ui.lstNames->count() > 0;
    ui.cmdTake->setEnabled(hasAny);
    ui.cmdDelete->setEnabled(hasAny);
    (hasAny ? static_cast<QWidget *>(ui.lstNames) : ui.txtName)->setFocus();
}

// What Enter does hangs on what the user is at: nobody who types a name wants another query taken over the criteria.
void KeptQueriesWindow::showDefaultButton()
{
    if (focusWidget() == ui.lstNames)
        ui.cmdTake->setDefault(true);
    else if (ui.periods->indexOf(focusWidget()) >= 0)
        ui.cmdKeep->setDefault(true);
}

void KeptQueriesWindow::cmdTake_Click()
{
    if (!ui.lstNames->currentItem())
        return;
    const QString name = ui.lstNames->currentItem()->text();
    m_taken = m_queries.criteria(name);
    if (!m_taken.empty()) {
        accept();
        return;
    }
    inform("The query \"" + name + "\" was deleted meanwhile.");
    showNames();
}

void KeptQueriesWindow::cmdDelete_Click()
{
    if (!ui.lstNames->currentItem())
        return;
    const QString name = ui.lstNames->currentItem()->text();
    if (!confirmed("Delete the query \"" + name + "\"?"))
        return;
    m_queries.remove(name);
    showNames();
}

void KeptQueriesWindow::cmdKeep_Click()
{
    const QString name = ui.txtName->text().simplified();
    if (name.isEmpty()) {
        inform("Type a name for the query first.");
        ui.txtName->setFocus();
        return;
    }
    for (size_t i = 0; i < m_criteria.size(); ++i)
        if (m_periods[i])
            m_criteria[i].period = m_periods[i]->currentIndex() > 0 ? m_periods[i]->currentText() : QString();
    if (!m_queries.keep(name, m_criteria, false)) {
        if (!confirmed("There is a query \"" + name + "\" already. Replace it?"))
            return;
        m_queries.keep(name, m_criteria, true);
    }
    ui.txtName->clear();
    showNames(name);
}
