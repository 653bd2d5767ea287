#include "transactions/JobPicker.h"

#include "common/ProgramState.h"
#include "db/Session.h"
#include "platform/gui/BoundCombo.h"
#include "platform/gui/UserAction.h"
#include "transactions/LoanChoices.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace {

const QString overheadLabel = QStringLiteral("Overhead Operation");

// A young crib has nobody to lend to; the manual tells where they come from.
void offer(BoundCombo *box, Recordset choices, const QString &shown, const QString &bound)
{
    box->lineEdit()->setPlaceholderText(choices.isEmpty() ? QStringLiteral("None yet: see F1") : QString());
    box->setSource(std::move(choices), shown, bound);
}

}

JobPicker::JobPicker(const Boxes &boxes, const Wording &wording, QObject *parent)
    : QObject(parent), m_boxes(boxes), m_wording(wording)
{
    offer(m_boxes.dbcEmp, openRecordset(LoanChoices::employees()), "Name", "empid");
    m_boxes.dbcEmp->setTakesBoundValue(true);
    m_boxes.dbcJobType->setSource(openRecordset(LoanChoices::chargeKinds()), "Code", "index");
    GetJobOverheadList();
    // The boxes stay where they are when the label gets its text.
    for (const QString &text : {m_wording.jobLabel, overheadLabel}) {
        const int width = m_boxes.lblJob->fontMetrics().horizontalAdvance(text);
        m_boxes.lblJob->setMinimumWidth(qMax(m_boxes.lblJob->minimumWidth(), width));
    }
    onUserAction(m_boxes.dbcEmp, &BoundCombo::chosen, this, &JobPicker::dbcEmp_Change);
    onUserAction(m_boxes.dbcJobType, &BoundCombo::chosen, this, &JobPicker::GetJobOverheadList);
    for (BoundCombo *box : {m_boxes.dbcEmp, m_boxes.dbcJobType})
        box->installEventFilter(this);
}

// A badge reader ends a number with Enter: that goes on to the next box as long as nothing is charged.
bool JobPicker::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    auto *box = static_cast<BoundCombo *>(watched);
    if ((key != Qt::Key_Return && key != Qt::Key_Enter) || box->text().isEmpty() || !m_boxes.dbcJob->text().isEmpty())
        return QObject::eventFilter(watched, event);
    (box == m_boxes.dbcEmp ? m_boxes.dbcJobType : m_boxes.dbcJob)->setFocus(Qt::TabFocusReason);
    return true;
}

void JobPicker::GetJobOverheadList()
{
    const QString jobType = m_boxes.dbcJobType->text();
    BoundCombo *dbcJob = m_boxes.dbcJob;
    if (jobType == "Job") {
        offer(dbcJob, openRecordset(LoanChoices::jobs()), "JobNo", ProgramState::SuiteInstalled ? "JobNo" : "ID");
        m_boxes.lblJob->setText(m_wording.jobLabel);
    } else if (jobType == "Overhead") {
        offer(dbcJob, openRecordset(LoanChoices::operations(m_wording.overheadOrder)), "Description", "OperNo");
        m_boxes.lblJob->setText(overheadLabel);
    } else {
        dbcJob->lineEdit()->setPlaceholderText({});
        dbcJob->clearSource();
        m_boxes.lblJob->clear();
    }
}

void JobPicker::dbcEmp_Change() { m_boxes.txtEmpNo->setText(m_boxes.dbcEmp->boundValue().toText()); }
