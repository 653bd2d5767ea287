#include "queries/QueryKind.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"

Q_DECLARE_METATYPE(Entry)

/// What the rows of the query forms add to statements and formulas, to the letter.
class TestCriterion : public QObject
{
    Q_OBJECT

private slots:
    void condition_data()
    {
        m_crib.insert("Locations (Description,Parent)", {"'Shelf 1',1", "'Shelf 2',1", "'Box',3"});
        const QueryKind *loans = &QueryKind::frmQueryCheckedOut;
        row("from a text to a text", loans, "Part #", Entry{.isRange = true, .shown = {"%2", "B 1"}},
            " and CheckOutIn.CheckOutPartNo between '%2' and 'B 1'",
            " and {CheckOutIn.CheckOutPartNo} in '%2' to 'B 1'");
        row("employees by last name, none in a name without a blank", loans, "Employee",
            Entry{.isRange = true, .shown = {"CHER", " MILLER ANNA"}, .bound = {"1", "17"}},
            " and Employee.LastName between '' and 'MILLE'", " and {Employee.LastName} in '' to 'MILLE'");
        row("jobs", loans, "Job #", Entry{.isRange = true, .shown = {"1", "9"}},
            " and CheckOutIn.JobOrOh between 1 and 9 and CheckOutIn.LineItemTypeId=4",
            " and {CheckOutIn.JobOrOh} in 1 to 9 and {CheckOutIn.LineItemTypeId} = 4");
        row("the day it came back", loans, "Check In", Entry{.shown = {"1999-03-04"}},
            " and format(CheckOutIn.DateIn,'short date') = #1999-03-04#",
            " and {CheckOutIn.DateIn} = date(1999,03,04)");
        row("days", loans, "Check Out", Entry{.isRange = true, .shown = {"1999-03-04", "2026-12-31"}},
            " and format(CheckOutIn.DateOut,'short date') between #1999-03-04# and #2026-12-31#",
            " and {CheckOutIn.DateOut} in date(1999,03,04) to date(2026,12,31)");

        const QueryKind *tools = &QueryKind::frmQueryTypeLoc;
        row("a location with those right below it, as the database gives them", tools, "Location",
            Entry{.shown = {"Cabinet A"}},
            " and locations.description = 'Cabinet A' OR  locations.description = 'Shelf 1'"
            " OR  locations.description = 'Shelf 2'",
            " and {locations.description} = 'Cabinet A' OR  {locations.description} = 'Shelf 1'"
            " OR  {locations.description} = 'Shelf 2'");

        const QueryKind *prices = &QueryKind::frmReportAllTools;
        row("prices as typed", prices, "Price", Entry{.isRange = true, .shown = {"10", "$1,225.50"}},
            " and PricePer between 10 and 1225.5", " and {tools.PricePer} in 10 to 1225.5");
        row("a price chosen, to its last place", prices, "Price", Entry{.shown = {"$0.13"}, .bound = {"0.125"}},
            " and PricePer = 0.125", " and {tools.PricePer} = 0.125");

        row("the day of scrapping", &QueryKind::frmQueryScrap, "Scrap Date", Entry{.shown = {"2026-03-04"}},
            " and format(Scrap.ScrapDate,'short date') = #2026-03-04#", " and {Scrap.ScrapDate}= date(2026,03,04)");
    }

    void condition()
    {
        const auto [form, caption, entry, statement, formula] =
            fetched<const QueryKind *, QString, Entry, QString, QString>();
        const Condition built = conditionOf(criterion(*form, caption), entry);
        QCOMPARE(built.statement, statement);
        QCOMPARE(built.formula, formula);
    }

private:
    static const Criterion &criterion(const QueryKind &form, const QString &caption)
    {
        for (const Criterion &row : form.criteria)
            if (caption == row.caption)
                return row;
        qFatal("no such criterion");
    }

    CribDatabase m_crib;
};

QTEST_GUILESS_MAIN(TestCriterion)
#include "tst_criterion.moc"
