#include "admin/Command.h"
#include "admin/CsvPlan.h"
#include "admin/ImportStatus.h"
#include "admin/ProgressLine.h"
#include "admin/Refusal.h"
#include "platform/engine/Workspace.h"
#include "platform/reportengine/OutputFile.h"
#include "platform/reportengine/ResultCode.h"
#include "platform/system/ProgramFolder.h"
#include "platform/text/TextCompare.h"

#include <QDir>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

/// Tables of a crib as CSV.
class CsvTables
{
public:
    explicit CsvTables(Database &database)
        : m_database(database), m_types("Types", &database), m_locations("Locations", &database)
    {
    }

    /// Lines without their ends, the headings first.
    QStringList linesOf(const CsvKind &kind) const;

private:
    QString cell(const CsvColumn &column, const Value &value) const;

    Database &m_database;
    FolderTree m_types, m_locations;
};

/// A text that import-csv reads back as it is.
QString textCell(const QString &text)
{
    const QString guarded = csvGuarded(text);
    return text.isEmpty() || text != text.simplified() ? csvQuoted(guarded) : csvField(guarded);
}

/// With two or four places it cannot be taken for thousands.
QString priceCell(double price)
{
    const bool isWholeCents = std::llround(price * 10'000) % 100 == 0;
    return QString::number(price, 'f', isWholeCents ? 2 : 4);
}

QString CsvTables::cell(const CsvColumn &column, const Value &value) const
{
    if (value.isNull())
        return {};
    switch (column.kind) {
    case CsvColumn::TypePath:
        return textCell(m_types.pathOf(value.toInteger()));
    case CsvColumn::LocationPath:
        return textCell(m_locations.pathOf(value.toInteger()));
    case CsvColumn::Price:
        return priceCell(value.toNumber());
    case CsvColumn::YesNo:
        return value.toBool() ? "yes" : "no";
    case CsvColumn::Text:
        return textCell(value.toText());
    default:
        return value.toText();
    }
}

QStringList CsvTables::linesOf(const CsvKind &kind) const
{
    QStringList headings, names;
    std::vector<CsvColumn> columns;
    for (const CsvColumn &column : kind.columns) {
        if (column.kind == CsvColumn::Quantity)
            continue;
        columns.push_back(column);
        headings << column.heading;
        names << '[' + column.column + ']';
    }
    QStringList lines{headings.join(',')};
    const Recordset rows =
        m_database.openRecordset("SELECT " + names.join(',') + " FROM " + kind.table + " ORDER BY " + kind.key);
    std::vector<int> order(rows.recordCount());
    std::iota(order.begin(), order.end(), 0);
    if (kind.isFolders()) {
        const FolderTree &tree = kind.columns.front().kind == CsvColumn::TypePath ? m_types : m_locations;
        const auto path = [&](int row) { return tree.pathOf(rows.at(row, 0).toInteger()); };
        std::ranges::stable_sort(
            order, [](const QString &a, const QString &b) { return compareText(a, b) < 0; }, path);
    }
    QSet<qint64> jobs;
    for (const int row : order) {
        QStringList cells;
        for (size_t column = 0; column < columns.size(); ++column)
            cells << cell(columns[column], rows.at(row, int(column)));
        lines << cells.join(',');
        jobs.insert(rows.at(row, 0).toInteger());
    }
    // The program's own list has jobs that the suite does not know.
    if (kind.table == "Job") {
        const Recordset own = m_database.openRecordset("SELECT DISTINCT Jobno FROM JobVorlane ORDER BY Jobno");
        for (int row = 0; row < own.recordCount(); ++row)
            if (!own.at(row, 0).isNull() && !jobs.contains(own.at(row, 0).toInteger()))
                lines << own.at(row, 0).toText() + ",no";
        const auto number = [](const QString &line) { return line.section(',', 0, 0).toLongLong(); };
        std::ranges::sort(lines.begin() + 1, lines.end(), {}, number);
    }
    return lines;
}

/// Files that appear together, in a folder that is made for them where it is missing.
class NewFiles
{
public:
    explicit NewFiles(const QString &folder)
        : m_folder(ProgramFolder::toNative(folder)), m_isMade(QDir().mkdir(m_folder.path()))
    {
        if (!m_folder.exists())
            throw ReportError(ResultCode::fileError, "the folder cannot be made");
    }
    ~NewFiles()
    {
        if (m_isDone)
            return;
        m_files.clear();
        for (const QString &file : m_committed)
            QFile::remove(file);
        if (m_isMade)
            QDir().rmdir(m_folder.path());
    }
    Q_DISABLE_COPY_MOVE(NewFiles)

    QString path(const QString &name) const { return m_folder.filePath(name); }
    void add(const QString &name, const QByteArray &content)
    {
        m_files.push_back(std::make_unique<OutputFile>(path(name), false));
        QSaveFile &file = m_files.back()->file();
        file.write(content);
        file.flush();
        OutputFile::check(file);
    }
    void commit()
    {
        for (const auto &file : m_files) {
            file->commit();
            m_committed << file->file().fileName();
        }
        m_isDone = true;
    }

private:
    QDir m_folder;
    bool m_isMade;
    std::vector<std::unique_ptr<OutputFile>> m_files;
    QStringList m_committed;
    bool m_isDone = false;
};

/// What import-csv would not take back into an empty crib.
QStringList faultsOf(const QString &file, const CsvKind &kind)
{
    CsvFaults faults;
    try {
        const CsvSheet sheet(file, kind, {}, faults);
        CsvPlan(kind).take(sheet, faults);
    } catch (const Refusal &refusal) {
        return {"it " + refusal.sentence()};
    }
    return faults.list();
}

QString fileOf(const CsvKind &kind) { return kind.name + ".csv"; }

int exportTables(const QCommandLineParser &arguments, QTextStream &out)
{
    const QString name = arguments.positionalArguments().at(0), folder = arguments.positionalArguments().at(1);
    QStringList notes;
    try {
        ProgressLine line;
        const auto database = Workspace::first().openDatabase(name);
        NewFiles files(folder);
        const ReadScope sameState(*database);
        const CsvTables tables(*database);
        QStringList report;
        for (const CsvKind &kind : CsvKind::all()) {
            line.show("Writing: " + fileOf(kind));
            const QStringList lines = tables.linesOf(kind);
            files.add(fileOf(kind), byteOrderMark + (lines.join("\r\n") + "\r\n").toUtf8());
            report << fileOf(kind).leftJustified(16) + QString::number(lines.size() - 1).rightJustified(8);
        }
        files.commit();
        for (const CsvKind &kind : CsvKind::all())
            for (const QString &fault : faultsOf(files.path(fileOf(kind)), kind))
                notes << fileOf(kind) + ": " + fault;
        out << report.join('\n') << '\n';
    } catch (const EngineError &error) {
        throw Refusal(ImportStatus::NotReadable, '\'' + name + "' cannot be read: " + error.text());
    } catch (const ReportError &error) {
        throw Refusal(ImportStatus::CannotWrite, '\'' + folder + "' was not written: " + error.detail() + '.');
    }
    if (notes.isEmpty())
        return 0;
    out << "Notes: import-csv will not take this back as it is.\n  " << notes.join("\n  ") << '\n';
    return ImportStatus::WithNotes;
}

}

Command exportCommand()
{
    return {.name = "export",
            .operands = {"DATABASE", "DIRECTORY"},
            .summary = "Writes folders, tools, people, jobs, operations and reasons as CSV",
            .details =
                "One file a table, which must not exist yet; import-csv reads them back. Loans and scrapped tools "
                "are not in them.\nThe exit status is 0, or 1 with notes; 2 for wrong usage, 3 when DATABASE "
                "cannot be read, 6 when a file cannot be\nwritten.",
            .run = exportTables};
}
