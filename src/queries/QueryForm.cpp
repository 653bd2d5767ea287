#include "queries/QueryForm.h"

#include "common/ExplorerWindow.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "platform/system/Clock.h"
#include "queries/KeptQueriesWindow.h"
#include "queries/QueryKind.h"
#include "queries/ResultsWindow.h"
#include "reports/PrintBy.h"

#include <QAction>
#include <QHash>
#include <QPainter>
#include <QScreen>
#include <QStyleOptionButton>

#include <algorithm>

namespace {

QHash<const QueryKind *, Query> lastQueries;

/// The rows of a list, read when the first of the boxes that share it needs them.
class ListSource : public QObject
{
public:
    ListSource(const char *statement, QObject *parent) : QObject(parent), m_statement(statement) { }
    std::shared_ptr<Recordset> rows()
    {
        if (!m_rows) {
            const HourGlass busy;
            m_rows = std::make_shared<Recordset>(openRecordset(m_statement));
        }
        return m_rows;
    }

private:
    const char *m_statement;
    std::shared_ptr<Recordset> m_rows;
};

/// Says by its colours whether it is ticked.
class StateBox : public QCheckBox
{
public:
    explicit StateBox(QWidget *parent) : QCheckBox(parent)
    {
        setBackgroundRole(QPalette::Window);
        setAutoFillBackground(true);
        connect(this, &QCheckBox::toggled, this, &StateBox::showState);
        showState();
    }
    QSize sizeHint() const override { return QCheckBox::sizeHint().grownBy(margins); }

protected:
    void initStyleOption(QStyleOptionButton *option) const override
    {
        QCheckBox::initStyleOption(option);
        option->rect = option->rect.marginsRemoved(margins);
    }
    void paintEvent(QPaintEvent *event) override
    {
        QCheckBox::paintEvent(event);
        if (!hasFocus())
            return;
        // The text stands out from either background, and so does a frame of its colour.
        QPainter painter(this);
        painter.setPen({palette().color(QPalette::WindowText), 2});
        painter.drawRect(rect().adjusted(2, 2, -2, -2));
    }

private:
    static constexpr QMargins margins{5, 3, 5, 3}; // for the frame

    void showState()
    {
        const QColor text = isChecked() ? Qt::black : Qt::white;
        QPalette colors = palette();
        colors.setColor(QPalette::Window, isChecked() ? QColor(0, 250, 0) : QColor(128, 0, 0));
        colors.setColor(QPalette::WindowText, text);
        // The tick is the second sign, on whatever palette the desktop has.
        colors.setColor(QPalette::Base, Qt::white);
        colors.setColor(QPalette::Disabled, QPalette::Base, colors.color(QPalette::Window));
        colors.setColor(QPalette::Text, Qt::black);
        colors.setColor(QPalette::Highlight, text);
        setPalette(colors);
    }
};

}

Entry QueryForm::Row::entry() const
{
    Entry entry{.isRange = rangeBox->isChecked()};
    for (int box = 0; box < 2; ++box) {
        entry.shown[box] = texts[box]->text();
        if (const auto *choices = qobject_cast<const BoundCombo *>(valueBoxes[box]))
            entry.bound[box] = choices->boundValue().toText();
    }
    return entry;
}

void QueryForm::Row::setText(int box, const QString &text) const
{
    if (auto *choices = qobject_cast<BoundCombo *>(valueBoxes[box]))
        choices->setText(text);
    else
        texts[box]->setText(text);
}

void QueryForm::Row::choose(const QString &bound) const
{
    auto *choices = qobject_cast<BoundCombo *>(valueBoxes[0]);
    if (const int place = choices->findData(bound); place >= 0)
        choices->setCurrentIndex(place);
    else
        choices->showUnoffered(choices->text(), "This one is not in the list.");
}

void QueryForm::showModal(const QueryKind &kind)
{
    std::optional<Recordset> found;
    const PrintByKind *printBy = nullptr;
    {
        QueryForm form(kind);
        form.exec();
        found = std::move(form.m_found);
        printBy = form.m_printBy;
    }
    if (found)
        ResultsWindow::open(kind.results, lastQuery(kind), std::move(*found));
    else if (printBy)
        PrintBy::showModal(*printBy);
}

const Query &QueryForm::lastQuery(const QueryKind &kind) { return lastQueries[&kind]; }

QueryForm::QueryForm(const QueryKind &kind) : QDialog(windowOwner()), m_kind(kind)
{
    ui.setupUi(this);
    setObjectName(kind.name);
    setWindowTitle(kind.caption);
    for (const Criterion &criterion : kind.criteria)
        addRow(criterion);
    for (const Row &row : m_rows) {
        onUserAction(row.useBox, &QCheckBox::toggled, [this, row] { chkUse_Click(row); });
        onUserAction(row.rangeBox, &QCheckBox::toggled, [this, row] { chkRange_Click(row); });
        onUserAction(row.texts[0], &QLineEdit::textChanged, [row] {
            if (!row.texts[0]->text().isEmpty())
                row.rangeBox->setEnabled(true);
        });
    }
    resize(sizeHint().boundedTo(screen()->availableSize() * 0.9));
    m_rows.front().useBox->setFocus();
    setTabOrder(m_rows.back().valueBoxes[1], ui.cmdGenerate);
    setTabOrder(ui.cmdGenerate, ui.cmdCancel);
    for (const PrintByEntry &entry : kind.printBy) {
        auto *action = new QAction(entry.kind->caption, this);
        action->setShortcut(QKeySequence(entry.key));
        // The preview could not be used while this form is open.
        onUserAction(action, &QAction::triggered, [this, &entry] {
            m_printBy = entry.kind;
            reject();
        });
        addAction(action);
    }
    auto *kept = new QAction("Kept Queries...", this);
    kept->setShortcut(QKeySequence("Ctrl+O"));
    onUserAction(kept, &QAction::triggered, this, &QueryForm::showKeptQueries);
    addAction(kept);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    onUserAction(ui.cmdGenerate, &QPushButton::clicked, this, &QueryForm::cmdGenerate_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void QueryForm::addRow(const Criterion &criterion)
{
    Row row{&criterion, addCheckBox(criterion.useBox, 0), nullptr, {}, {}};
    row.useBox->setText(criterion.caption);
    BoundCombo::Fetch choices;
    if (criterion.source) {
        auto *source = new ListSource(criterion.choices.statement, this);
        source->setObjectName(criterion.source);
        choices = [source] { return source->rows(); };
    }
    row.valueBoxes[0] = addValueBox(criterion, choices, 0);
    row.rangeBox = addCheckBox(criterion.rangeBox, 2);
    row.rangeBox->setAccessibleName(QStringLiteral("%1 Range").arg(criterion.caption));
    row.rangeBox->setEnabled(false);
    row.valueBoxes[1] = addValueBox(criterion, choices, 1);
    for (int box = 0; box < 2; ++box) {
        const auto *combo = qobject_cast<const BoundCombo *>(row.valueBoxes[box]);
        row.texts[box] = combo ? combo->lineEdit() : qobject_cast<QLineEdit *>(row.valueBoxes[box]);
    }
    m_rows.push_back(row);
}

QCheckBox *QueryForm::addCheckBox(const char *name, int column)
{
    auto *box = new StateBox(ui.Frame1);
    box->setObjectName(name);
    ui.criteria->addWidget(box, int(m_rows.size()) + 1, column);
    return box;
}

QWidget *QueryForm::addValueBox(const Criterion &criterion, const BoundCombo::Fetch &choices, int box)
{
    QWidget *made = nullptr;
    if (choices) {
        auto *combo = new BoundCombo(ui.Frame1);
        // The bound of a range need not be one of the list.
        combo->setFreeText(true);
        combo->setTakesBoundValue(criterion.value == Criterion::Employee);
        // Descriptions of tools differ in their last words.
        combo->setMinimumContentsLength(32);
        // On a small screen they may be cut.
        combo->setMinimumWidth(combo->fontMetrics().averageCharWidth() * 12);
        combo->setSource(choices, criterion.choices.shows, criterion.choices.gives);
        made = combo;
    } else {
        auto *date = new QLineEdit(ui.Frame1);
        date->setPlaceholderText("yyyy-mm-dd");
        made = date;
    }
    made->setObjectName(criterion.valueBoxes + QString::number(box + 1));
    made->setAccessibleName(QLatin1String(criterion.caption) + (box == 0 ? " Value or From" : " To"));
    made->setEnabled(false);
    ui.criteria->addWidget(made, int(m_rows.size()) + 1, box == 0 ? 1 : 3);
    return made;
}

void QueryForm::chkUse_Click(const Row &row)
{
    row.valueBoxes[0]->setEnabled(row.useBox->isChecked());
    if (row.useBox->isChecked()) {
        row.valueBoxes[0]->setFocus();
        tidyUp(row.valueBoxes[0]);
        return;
    }
    row.setText(0, {});
    row.valueBoxes[1]->setEnabled(false);
    row.setText(1, {});
    row.rangeBox->setChecked(false);
    row.rangeBox->setEnabled(false);
}

void QueryForm::chkRange_Click(const Row &row)
{
    row.valueBoxes[1]->setEnabled(row.rangeBox->isChecked());
    if (row.rangeBox->isChecked()) {
        row.valueBoxes[1]->setFocus();
        tidyUp(row.valueBoxes[1]);
        return;
    }
    row.setText(1, {});
}

// Rows that were left without a value switch themselves off, ranges without an upper bound become single values.
void QueryForm::tidyUp(const QWidget *leaveOut)
{
    for (const Row &row : m_rows) {
        if (row.isEmpty(0) && row.valueBoxes[0] != leaveOut)
            row.useBox->setChecked(false);
    }
    for (const Row &row : m_rows) {
        if (row.isEmpty(1) && row.valueBoxes[1] != leaveOut)
            row.rangeBox->setChecked(false);
    }
}

void QueryForm::showKeptQueries()
{
    tidyUp();
    std::vector<KeptQueriesWindow::Row> used;
    for (const Row &row : m_rows)
        if (row.useBox->isChecked())
            used.push_back({*row.criterion, row.entry()});
    KeptQueriesWindow window(m_kind.name, used, this);
    if (execOver(window) == QDialog::Accepted)
        take(window.taken());
}

void QueryForm::take(const std::vector<KeptCriterion> &criteria)
{
    const HourGlass busy;
    QStringList gone;
    for (const Row &row : m_rows)
        row.useBox->setChecked(false);
    for (const Row &row : m_rows) {
        const auto kept = std::ranges::find(criteria, QString(row.criterion->useBox), &KeptCriterion::useBox);
        if (kept == criteria.end())
            continue;
        const Entry entry = kept->entryOn(Clock::now().date());
        row.useBox->setChecked(true);
        row.setText(0, entry.shown[0]);
        row.rangeBox->setChecked(entry.isRange);
        row.setText(1, entry.shown[1]);
        if (row.criterion->value == Criterion::Employee && !entry.isRange) {
            row.choose(entry.bound[0]);
            if (row.entry().bound[0].isEmpty())
                gone.append(entry.shown[0]);
        }
    }
    ui.cmdGenerate->setFocus();
    if (!gone.isEmpty())
        inform(gone.join(", ") + " is not in the list of employees any more.");
}

void QueryForm::cmdGenerate_Click()
{
    const HourGlass busy;
    try {
        if (generate())
            accept();
    } catch (const std::exception &) {
        msgBox({.text = "An error ocurred while attempting to run the Query", .icon = QMessageBox::Critical});
    }
}

bool QueryForm::generate()
{
    tidyUp();
    QString where, formula;
    for (const Row &row : m_rows) {
        if (!row.useBox->isChecked())
            continue;
        const Condition condition = conditionOf(*row.criterion, row.entry());
        where += condition.statement;
        formula += condition.formula;
    }
    if (where.trimmed().isEmpty()) {
        msgBox(
            {.text = "Please Enter Criteria For Query!", .caption = "No Criteria!", .icon = QMessageBox::Information});
        return false;
    }
    const qsizetype leadingAnd = QStringLiteral(" and ").size();
    const QString statement = m_kind.statement + (" where " + where.mid(leadingAnd));
    Recordset found = openRecordset(statement);
    if (found.isEmpty()) {
        msgBox(
            {.text = "No Records satisfy your Criteria!", .caption = "No Records Found", .icon = QMessageBox::Warning});
        return false;
    }
    const ExplorerWindow *explorer = explorerIfOpen();
    lastQueries[&m_kind] = {&m_kind, statement, formula.mid(leadingAnd),
                            explorer && explorer->TreeMode() == QLatin1String("location")};
    m_found = std::move(found);
    return true;
}
