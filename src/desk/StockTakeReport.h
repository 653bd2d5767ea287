#pragma once

#include "desk/StockTake.h"

#include <QTemporaryDir>

class Database;
class ReportControl;
class QWidget;

/// The result of a count for the template StockTake.rpt: a small database of its own, whose one table holds the lines,
/// and a report control that reads it. Lives as long as its preview may be looked at.
class StockTakeReport
{
public:
    StockTakeReport(const StockTake &stockTake, QWidget *owner);
    ~StockTakeReport();
    Q_DISABLE_COPY_MOVE(StockTakeReport)

    ReportControl &control() { return *m_control; }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<ReportControl> m_control;
};
