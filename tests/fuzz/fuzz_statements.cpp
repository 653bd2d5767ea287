// Feeds the query dialect with whatever the fuzzer makes of the suite's statements. Nothing may crash, every refusal
// must be one of the dialect's own, and a statement means the same with its literals bound and with them written out.

#include "platform/engine/Workspace.h"
#include "platform/engine/dialect/Parser.h"
#include "platform/engine/dialect/StatementWriter.h"
#include "platform/engine/sqlite/SqliteLanguage.h"
#include "platform/text/TextCompare.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

// Joins of more tables only take longer.
constexpr int maximumTables = 3;

QString contents(const QString &name)
{
    QFile file(name);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

class Crib
{
public:
    Crib() : m_database(Workspace::first().createDatabase(m_folder.filePath("crib.mdb")))
    {
        m_database->executeNative("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF;" + contents(CRIB_SQL));
    }

    Database &database() { return *m_database; }
    dialect::Schema schema() const { return {m_database->tables()}; }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<Database> m_database;
};

int tablesOf(const dialect::Source &source)
{
    return source.isTable() ? 1 : tablesOf(*source.left) + tablesOf(*source.right);
}

[[noreturn]] void fail(const QString &statement, const QString &what)
{
    std::fprintf(stderr, "%s\n%s\n", qPrintable(statement), qPrintable(what));
    std::abort();
}

/// The first `columnCount` fields of all rows, in an order of their own and without case: which of several equal texts
/// a list of distinct ones shows is the engine's choice.
QStringList sortedRows(const Recordset &rows, int columnCount)
{
    QStringList lines;
    for (int row = 0; row < rows.recordCount(); ++row) {
        QString line;
        for (int column = 0; column < columnCount; ++column)
            line += foldCase(rows.at(row, column).toText()) + '|';
        lines.append(line);
    }
    lines.sort();
    return lines;
}

void run(Crib &crib, const QString &statement)
{
    const dialect::Statement parsed = dialect::parse(statement);
    const dialect::Translation written =
        dialect::translate(parsed, crib.schema(), dialect::Literals::Inline, sqliteLanguage);
    if (parsed.select && tablesOf(*parsed.select->from) > maximumTables)
        return;
    const Transaction undoneAtTheEnd(crib.database());
    if (parsed.kind != dialect::Statement::SelectRows) {
        crib.database().execute(statement);
        return;
    }
    const Recordset bound = crib.database().openRecordset(statement);
    const QStringList expected = sortedRows(bound, bound.fieldCount());
    const QStringList again = sortedRows(crib.database().openRecordset(statement), bound.fieldCount());
    const QStringList inlined = sortedRows(crib.database().openNative(written.sql), bound.fieldCount());
    if (again != expected || inlined != expected)
        fail(statement, expected.join('\n') + "\n---\n" + inlined.join('\n') + "\n---\n" + again.join('\n'));
}

void findIn(Recordset &rows, const QString &criteria) { rows.findFirst(criteria); }

void expectOwnRefusal(const QString &statement, const std::function<void()> &action)
{
    try {
        action();
    } catch (const EngineError &error) {
        if (error.number() == EngineError::internalError)
            fail(statement, error.text());
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Crib crib;
    static Recordset reports = crib.database().openRecordset("Select * from Reports");
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    expectOwnRefusal(text, [&] { run(crib, text); });
    expectOwnRefusal(text, [&] { findIn(reports, text); });
    return 0;
}
