#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"
#include "tests/support/Files.h"

#include <algorithm>

namespace {

/// What a statement gave: its rows under their field names, the number of rows that it touched, or its error.
QStringList outcome(Database &database, const QString &statement)
{
    try {
        if (!statement.trimmed().startsWith("select", Qt::CaseInsensitive))
            return {QString::number(database.execute(statement)) + " rows"};
        const Recordset rows = database.openRecordset(statement);
        QStringList lines;
        for (int row = -1; row < rows.recordCount(); ++row) {
            QStringList fields;
            for (int column = 0; column < rows.fieldCount(); ++column) {
                const Value value = row < 0 ? rows.fieldName(column) : rows.at(row, column);
                fields.append(value.isNull() ? "null" : value.toText().isEmpty() ? "''" : value.toText());
            }
            lines.append(fields.join(" | "));
        }
        return lines;
    } catch (const EngineError &error) {
        return {QStringLiteral("error %1 %2").arg(error.number()).arg(error.text())};
    }
}

// Without an order the engine is free to list the rows as it finds them.
QStringList comparable(const QString &statement, QStringList lines)
{
    if (!statement.contains("order by", Qt::CaseInsensitive) && lines.size() > 1)
        std::sort(lines.begin() + 1, lines.end());
    return lines;
}

}

/// Runs the statements of statements.txt. A block there begins with what it shows, and for which engine alone; below
/// stand statements, each with its outcome behind two blanks. The blocks know nothing of each other.
class TestStatements : public QObject
{
    Q_OBJECT

private slots:
    void outcomes_data()
    {
        for (const QString &text :
             QString::fromUtf8(contentOf(TEST_DATA "/statements.txt")).split("\n\n", Qt::SkipEmptyParts)) {
            const QStringList lines = text.split('\n', Qt::SkipEmptyParts);
            QVERIFY2(lines.first().startsWith("# "), qPrintable(text));
            // A server gives no number out again even where the row was not stored.
            if (!ServerDatabase::isWanted() || !lines.first().startsWith("# (file)"))
                row(qPrintable(lines.first().mid(2)), lines.mid(1));
        }
    }

    void outcomes()
    {
        auto [block] = fetched<QStringList>();
        const Transaction undoneAtTheEnd(*m_database);
        while (!block.isEmpty()) {
            const QString statement = block.takeFirst();
            QStringList expected;
            while (!block.isEmpty() && block.first().startsWith("  "))
                expected.append(block.takeFirst().mid(2));
            QVERIFY2(!expected.isEmpty(), qPrintable(statement));
            QCOMPARE(comparable(statement, outcome(*m_database, statement)).join('\n'),
                     comparable(statement, expected).join('\n'));
        }
    }

    void largeAndHostileStatements_data()
    {
        const QString tools = "Select Count(*) as cnt from Tools where ";
        const auto repeated = [](const char *text, int times) { return QString(text).repeated(times); };
        QStringList numbers;
        for (int i = 5; i < 5005; ++i)
            numbers.append(QString::number(i));
        QString manyOr = "ID = 1";
        for (int i = 2; i <= 20'000; ++i)
            manyOr += " or ID = " + QString::number(i);

        row("a list of 5,000 numbers", tools + "ID in (" + numbers.join(",") + ")", "cnt\n5");
        row("a chain of 20,000 alternatives", tools + manyOr, "cnt\n9");
        const QString tooComplex = "error 3360 Query is too complex.";
        row("100,000 brackets within one another", tools + repeated("(", 100'000) + "ID = 1" + repeated(")", 100'000),
            tooComplex);
        row("100,000 joins within one another",
            "Select ID from " + repeated("(", 100'000) + "Tools" + repeated(")", 100'000), tooComplex);
        row("100,000 comparisons in a row", tools + "ID" + repeated(" = 1", 100'000), tooComplex);
        row("conditions within conditions that would double each time",
            tools + repeated("ID between (", 40) + "1" + repeated(") and 2", 40), tooComplex);
        row("100,000 signs in a row", tools + "ID = " + repeated("- ", 100'000) + "1", "cnt\n1");
        row("a long pattern", tools + "Description like '" + repeated("*a", 50'000) + "'",
            ServerDatabase::isWanted() ? tooComplex : "cnt\n0");
        const QChar nul = u'\0';
        row("a NUL behind the statement", tools + "ID = 1" + nul + "; DELETE FROM Tools",
            QString("error 3075 Syntax error in query expression '") + nul + "; DELETE FROM Tools'.");
    }

    void largeAndHostileStatements()
    {
        const auto [statement, expected] = fetched<QString, QString>();
        QCOMPARE(outcome(*m_database, statement).join('\n'), expected);
        QCOMPARE(outcome(*m_database, "Select Count(*) as cnt from Tools").last(), "9");
    }

private:
    const EngineFile m_database{QString::fromUtf8(contentOf(TEST_DATA "/crib.sql"))};
};

QTEST_GUILESS_MAIN(TestStatements)
#include "tst_statements.moc"
