#include "desk/StockTakeReport.h"

#include "platform/engine/Workspace.h"
#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/ReportControl.h"

StockTakeReport::StockTakeReport(const StockTake &stockTake, QWidget *owner)
{
    using dialect::ValueKind;
    constexpr auto table = "StockTake";
    const QStringList texts{"Heading", "Number", "Description", "PartNumber", "Note"};
    TableDefinition definition{.name = table, .columns = {{"Line", ValueKind::Long}, {"Result", ValueKind::Long}}};
    for (const QString &name : texts)
        definition.columns.push_back({name, ValueKind::Text});
    m_database = Workspace::first().createDatabase(m_folder.filePath("stocktake.mdb"));
    m_database->createTable(definition);
    RowStore rows(int(definition.columns.size()));
    int number = 0;
    for (const StockTake::Line &line : stockTake.result()) {
        rows.beginRow();
        rows.addInteger(++number);
        rows.addInteger(line.order);
        for (const QString &text : {line.heading, line.number, line.description, line.partNumber, line.note})
            rows.add(text);
    }
    {
        Transaction transaction(*m_database);
        m_database->append(table, rows);
        transaction.commit();
    }
    m_control = std::make_unique<ReportControl>(*m_database, owner);
    m_control->reportFile = "StockTake.rpt";
    m_control->windowTitle = "Stock-take of " + stockTake.name() + ": " + stockTake.summary();
}

StockTakeReport::~StockTakeReport()
{
    delete m_control->preview(); // it reads from the database
}
