#include "explorer/StatusLine.h"

#include "common/MainFrame.h"
#include "db/Session.h"
#include "explorer/ListItems.h"
#include "explorer/ListPane.h"
#include "explorer/Panes.h"
#include "explorer/clsTools.h"
#include "platform/text/Format.h"
#include "transactions/Lending.h"
#include "transactions/LoanChoices.h"

namespace {

constexpr int restAfter = 150; // milliseconds; an arrow key that is held down repeats faster

QString pathOf(clsTools::Kind kind, const Recordset &row, QStringView column)
{
    try {
        return clsTools::path(kind, qint32(row.field(column).toInteger()));
    } catch (const BrokenChain &broken) {
        return broken.what();
    }
}

// The suite may have deleted the employee.
QString whoOf(const Recordset &row)
{
    return row.text(u"LastName").isEmpty() ? "employee " + row.text(u"Employee") : ListItems::personName(row);
}

QString inOneLine(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join("  |  ");
}

QString loanOf(const QString &toolId)
{
    const Recordset loan = openRecordset("SELECT CheckOutIn.*, Employee.LastName, Employee.FirstName"
                                         " FROM CheckOutIn LEFT JOIN Employee ON CheckOutIn.Employee = Employee.EmpID"
                                         " WHERE CheckOutIn.Active=true AND CheckOutIn.Tool_Id="
                                         + toolId);
    if (loan.isEmpty())
        return QString("out to ") + Lending::nobody;
    return "out to " + whoOf(loan) + " since " + loan.text(u"DateOut") + " for "
        + LoanChoices::chargeText(qint32(loan.field(u"LineItemTypeId").toInteger()),
                                  qint32(loan.field(u"JobOrOH").toInteger()));
}

QString toolLine(const QString &id)
{
    const Recordset tool = openRecordset("SELECT * FROM Tools WHERE ID=" + id);
    if (tool.isEmpty())
        return {};
    // Who has it comes before the paths: a narrow window cuts the end.
    return inOneLine({tool.text(u"Description"), tool.text(u"PartNumber"),
                      tool.field(u"Out").toInteger() ? loanOf(id) : "in the crib",
                      pathOf(clsTools::Kind::types, tool, u"Type"),
                      pathOf(clsTools::Kind::locations, tool, u"Location")});
}

QString scrapLine(const QString &id)
{
    const Recordset scrap = openRecordset("SELECT Scrap.*, Employee.LastName, Employee.FirstName"
                                          " FROM Scrap LEFT JOIN Employee ON Scrap.Employee = Employee.EmpID"
                                          " WHERE Scrap.ID="
                                          + id);
    if (scrap.isEmpty())
        return {};
    return inOneLine({scrap.text(u"Description"), scrap.text(u"PartNumber"), scrap.text(u"TypeDescription"),
                      "scrapped by " + whoOf(scrap) + " on " + Format::listDate(scrap.text(u"ScrapDate"))});
}

}

StatusLine::StatusLine(const Panes &panes, const ListPane &list) : m_panes(panes), m_list(list)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(restAfter);
    connect(&m_rest, &QTimer::timeout, this, &StatusLine::tell);
    connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, this, &StatusLine::selectionChanged);
    connect(list.selectionModel(), &QItemSelectionModel::currentRowChanged, this, &StatusLine::selectionChanged);
    connect(&list.items(), &QAbstractItemModel::dataChanged, this, &StatusLine::selectionChanged);
    connect(&list.items(), &QAbstractItemModel::modelReset, this, &StatusLine::selectionChanged);
}

const ListItem *StatusLine::selected() const
{
    const int row = m_list.model()->rowCount() == 0 ? -1 : m_list.selectedRow();
    return row < 0 ? nullptr : &m_list.items().item(row);
}

void StatusLine::selectionChanged()
{
    const ListItem *item = selected();
    show(item ? item->text : QString());
    if (item)
        m_rest.start();
    else
        m_rest.stop();
}

void StatusLine::tell()
{
    const ListItem *item = selected();
    if (!item)
        return;
    const ItemId id = m_panes.view()->idOf(*item);
    if (!id.isTool() && id.kind != ItemId::scrapRecord)
        return;
    try {
        const ReadScope scope(Session::database());
        const QString line = id.isTool() ? toolLine(id.digits()) : scrapLine(id.digits());
        show(line.isEmpty() ? item->text + "  |  gone meanwhile; Refresh shows what is there" : line);
    } catch (const std::exception &) { // the description stands there
    }
}

void StatusLine::show(const QString &text) const
{
    if (auto *frame = qobject_cast<MainFrame *>(m_list.window()))
        frame->showStatus(text);
}
