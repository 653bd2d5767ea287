#include "platform/reportengine/DataSource.h"
#include "platform/reportengine/TemplateReader.h"
#include "queries/QueryKind.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"

#include <QRandomGenerator>

/// The statement and the formula of a query pick the same records, whatever is stored and whatever is asked for: what
/// is shown is what the shipped templates print.
class TestQueriesAgree : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const auto text = [this] { return m_random.bounded(8) == 0 ? QString("Null") : '\'' + anyText() + '\''; };
        const auto number = [this](int bound) {
            return m_random.bounded(8) == 0 ? QString("Null") : QString::number(m_random.bounded(bound) - 1);
        };
        const auto date = [this] {
            return m_random.bounded(5) == 0 ? QString("Null") : '#' + anyDate() + ' ' + any(m_times) + '#';
        };
        for (int name = 1; name <= m_texts.size(); ++name) {
            const QString folder = QStringLiteral("'%1',%2").arg(m_texts[name - 1]).arg(m_random.bounded(name));
            m_crib.insert("Types (Description,Parent)", {folder});
            m_crib.insert("Locations (Description,Parent)", {folder});
            m_crib.insert("ScrapReasons (Description)", {'\'' + m_texts[name - 1] + '\''});
            m_crib.insert("Operation (OperNo,Description,OperType)",
                          {QStringLiteral("%1,%2,'O'").arg(100 + name).arg(text())});
            m_crib.insert("Employee (EmpID,LastName,FirstName,EmpStatus)",
                          {QStringLiteral("%1,%2,%3,'Active'").arg(100 + name).arg(text(), text())});
            m_crib.insert("Job (JobNo,Shipped)", {QString::number(name) + ",0"});
        }
        const int names = int(m_texts.size());
        const auto employee = [&] { return QString::number(99 + m_random.bounded(names)); };
        const auto charge = [&] { return m_random.bounded(2) ? number(10) : employee(); };
        const QStringList kinds{"4", "5", "5", "Null"}, prices{"Null", "0", "10", "12.5", "0.125", "25.0001"};
        QStringList tools, loans, scrap;
        for (int i = 0; i < 400; ++i) {
            const auto folder = [&] { return QString::number(1 + m_random.bounded(names)); };
            const QString described = '\'' + anyText() + '\'', borrower = '\'' + employee() + '\'';
            tools.append(QStringList{folder(), folder(), text(), text(), described, any(prices)}.join(','));
            loans.append(QStringList{"1", m_random.bounded(6) == 0 ? text() : borrower, charge(), any(kinds), date(),
                                     date(), text(), text()}
                             .join(','));
            scrap.append(QStringList{text(), text(), text(), employee(), date(), charge(), any(kinds), number(names),
                                     number(names), date()}
                             .join(','));
        }
        m_crib.insert("Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer)", tools);
        m_crib.insert("CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,DateIn,CheckOutDesc,CheckOutPartNo)",
                      loans);
        m_crib.insert("Scrap (Manufacturer,PartNumber,Description,Employee,ScrapDate,JobOrOH,LineItemTypeId,Reason,Job,"
                      "Date)",
                      scrap);
    }

    void statementAndFormula_data()
    {
        row("loans", &QueryKind::frmQueryCheckedOut, QStringList{"ToolsCheckedOut.rpt", "LoanSheet.rpt"},
            "CheckOutIn.ID");
        const QStringList tools{"ToolsByType.rpt", "ToolsByLocation.rpt", "ToolLabels.rpt", "CountSheet.rpt"};
        row("tools by type and location", &QueryKind::frmQueryTypeLoc, tools, "Tools.ID");
        row("all tools", &QueryKind::frmReportAllTools, tools, "Tools.ID");
        row("scrapped tools", &QueryKind::frmQueryScrap, QStringList{"ToolsScrapped.rpt"}, "Scrap.ID");
        row("junk tools", &QueryKind::frmReportJunkTools, QStringList{"JunkTools.rpt"}, "Scrap.ID");
    }

    void statementAndFormula()
    {
        const auto [form, templates, id] = fetched<const QueryKind *, QStringList, QString>();
        int found = 0;
        // On a server each report connects anew, which takes longer than its records.
        const int rounds = ServerDatabase::isWanted() ? 100 : 300;
        for (int round = 0; round < rounds; ++round) {
            QString where, formula;
            for (const Criterion &criterion : form->criteria) {
                // Rather one or two criteria than all.
                if (m_random.bounded(int(form->criteria.size())) > 1)
                    continue;
                const Condition condition = conditionOf(criterion, anyEntry(criterion));
                where += condition.statement;
                formula += condition.formula;
            }
            if (where.isEmpty())
                continue;
            const Recordset rows = openRecordset(form->statement + (" where " + where.mid(5)));
            QStringList shown;
            for (int row = 0; row < rows.recordCount(); ++row)
                shown.append(rows.at(row, rows.fieldIndex(u"ID")).toText());
            QStringList onPaper = printed(any(templates), id, formula.mid(5));
            shown.sort();
            onPaper.sort();
            QVERIFY2(shown == onPaper, qPrintable(where + "\n" + formula));
            found += shown.isEmpty() ? 0 : 1;
        }
        // Not because nothing is ever found.
        QVERIFY2(found > rounds / 5, qPrintable(QString::number(found)));
    }

private:
    template<typename List>
    typename List::value_type any(const List &list)
    {
        return list[m_random.bounded(int(list.size()))];
    }
    QString anyText() { return any(m_texts); }

    QString anyDate() { return any(QStringList{"2025-12-31", "2026-01-01", "2026-02-28", "2026-03-01", "1999-03-04"}); }

    // Out of the list, mostly; a text may also be typed in, in other capitals or only its beginning.
    QString shownValue(const Criterion &criterion, Entry &entry, int box)
    {
        if (!criterion.source)
            return anyDate();
        const Recordset choices = openRecordset(criterion.choices.statement);
        const int row = m_random.bounded(choices.recordCount());
        const QString shown = choices.at(row, choices.fieldIndex(QString(criterion.choices.shows))).toText();
        entry.bound[box] = choices.at(row, choices.fieldIndex(QString(criterion.choices.gives))).toText();
        const bool isText = QString(criterion.single.statement).contains('\'') && !criterion.subFolders
            && criterion.value == Criterion::AsShown;
        const QStringList typed{shown, shown, shown.toUpper(), shown.left(2)};
        return isText ? any(typed) : shown;
    }

    Entry anyEntry(const Criterion &criterion)
    {
        Entry entry{.isRange = m_random.bounded(2) == 0};
        // The form switches rows without a value off.
        for (int box = 0; box < 2; ++box) {
            do
                entry.shown[box] = shownValue(criterion, entry, box);
            while (entry.shown[box].trimmed().isEmpty());
        }
        return entry;
    }

    static QStringList printed(const QString &file, const QString &id, const QString &formula)
    {
        Template report = TemplateReader::readFile(PROGRAM_DATA "/templates/" + file);
        const int field = report.fields.add(id, 0);
        Formula selection = Formula::parse(formula, report.fields);
        const GroupedRecords records = DataSource(Session::database(), report, selection).read([](double) {});
        QStringList ids;
        for (int row = 0; row < records.count(); ++row)
            ids.append(records.record(row)[field].toText());
        return ids;
    }

    CribDatabase m_crib;
    QRandomGenerator m_random{20260304};
    const QStringList m_times{"00:00:00", "00:00:01", "12:30:00", "23:59:59"};
    const QStringList m_texts{"Drill",   "drill", "DRILL 5 mm",    "Drill ", "10 mm", "9 mm",
                              "50%",     "5_0",   "a*b",           "[x]",    "#7",    "Ölkanne",
                              "ölkanne", "Zange", "strasse",       "straße", "{a}",   "say \"x\"",
                              "-5",      "1E3",   "\u00e9t\u00e9", "Été",    "x",     ""};
};

QTEST_GUILESS_MAIN(TestQueriesAgree)
#include "tst_queriesagree.moc"
