#include "admin/Import.h"

#include "admin/Check.h"
#include "admin/Refusal.h"
#include "admin/Shortened.h"
#include "db/Schema.h"
#include "platform/engine/Workspace.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>

namespace {

constexpr int longestList = 50;
constexpr int rowsBetweenSigns = 1000;
constexpr qint64 lowestFolder = 1; // what lies in folder 0 lies at the top

QString withThousands(qint64 number) { return QLocale::c().toString(number); }

/// With as many of its four places as it has, two at the least.
QString moneyText(qint64 tenThousandths)
{
    const int places = tenThousandths % 100 == 0 ? 2 : 4;
    return QLocale::c().toString(tenThousandths / double(moneyUnits), 'f', places);
}

QString line(const QString &label, const QString &figure)
{
    return "  " + label.leftJustified(32) + figure.rightJustified(16) + '\n';
}

int columnCalled(const ImportTable &table, const QString &name)
{
    return int(std::ranges::find(table.columns, name, &ImportColumn::name) - table.columns.begin());
}

}

Import::Import(const QString &oldFile, const QString &newFile, const Options &options, const ImportProgress &progress)
    : m_newFile(newFile), m_options(options), m_old(oldFile, options.reading), m_oldFile(oldFile), m_progress(progress)
{
}

void Import::copy()
{
    const auto database = Workspace::first().createDatabase(m_newFile);
    Transaction transaction(*database);
    NewCrib crib(*database, m_old.tables());
    startStep("Reading", m_old.rowCount());
    for (const ImportTable &table : m_old.tables())
        copyTable(crib, table);
    requireReferences();
    for (const ImportTable &table : m_old.tables()) {
        if (table.source && table.columns[0].isCounter)
            crib.setLastNumber(table.name, table.source->lastNumber);
    }
    crib.finish();
    transaction.commit();
    m_notes = m_old.notes() + m_notes;
}

void Import::copyTable(NewCrib &crib, const ImportTable &table)
{
    const bool isTools = table.isOurs && table.name == "Tools";
    const auto referred = std::ranges::find(m_references, table.name, &Reference::table);
    m_old.read(table, [&](const std::vector<JetValue> &row) {
        if (referred != m_references.end())
            referred->known.insert(std::get<qint64>(row[0]));
        if (!isTools || isStorable(crib, table, row))
            crib.append(table, row);
        countRow();
    });
    crib.flush();
}

bool Import::isStorable(NewCrib &crib, const ImportTable &tools, const std::vector<JetValue> &tool)
{
    bool isStorable = true;
    for (Reference &reference : m_references) {
        const qint64 number = std::get<qint64>(tool[columnCalled(tools, reference.column)]);
        if (reference.known.contains(number))
            continue;
        if (isMended(number) && !reference.lacking.contains(number))
            addFolder(crib, reference.table, number);
        const QString &description = std::get<QString>(tool[columnCalled(tools, "Description")]);
        reference.lacking[number] << QString("tool %1 \"%2\"").arg(std::get<qint64>(tool[0])).arg(description);
        isStorable &= isMended(number);
    }
    return isStorable;
}

bool Import::isMended(qint64 number) const { return m_options.mend && number >= lowestFolder; }

void Import::addFolder(NewCrib &crib, const QString &name, qint64 number)
{
    const ImportTable &folders = tableCalled(name);
    std::vector<JetValue> folder(folders.columns.size());
    folder[0] = number;
    folder[columnCalled(folders, "Description")] = QString("(missing %1)").arg(number);
    folder[columnCalled(folders, "Parent")] = qint64(0);
    crib.append(folders, folder);
    m_added[name].add(folder);
}

void Import::requireReferences()
{
    QStringList tools, homeless;
    for (const Reference &reference : m_references) {
        for (const auto &[number, lacking] : reference.lacking) {
            if (isMended(number))
                m_notes << QString("%1 %2 did not exist; it was added at the top for %3 of the tools.")
                               .arg(reference.table, QString::number(number), QString::number(lacking.size()));
            for (const QString &tool : lacking)
                (number < lowestFolder ? homeless : tools)
                    << QString("%1 (%2 %3)").arg(tool, reference.column.toLower(), QString::number(number));
        }
    }
    if (!homeless.isEmpty())
        throw Refusal(ImportStatus::Content,
                      "cannot be imported as it is: no folder can have the number that these tools name; give them a "
                      "type and a location in the old program: "
                          + shortened(homeless, longestList, "and %1 more").join(", "));
    if (!m_options.mend && !tools.isEmpty())
        throw Refusal(ImportStatus::Content,
                      "cannot be imported as it is: the types or locations of these tools do not exist (--mend adds "
                      "them): "
                          + shortened(tools, longestList, "and %1 more").join(", "));
}

void Import::compare()
{
    startStep("Comparing", 2 * m_old.rowCount());
    std::map<QString, Tally> tallies = m_added;
    OldCrib old(m_oldFile, m_options.reading);
    for (const ImportTable &table : old.tables()) {
        old.read(table, [&](const std::vector<JetValue> &row) {
            tallies[table.name].add(row);
            countRow();
        });
    }

    const auto database = Workspace::first().openDatabase(m_newFile);
    database->executeNative("PRAGMA query_only = 1");
    NewCrib::keepSmall(*database);
    for (const ImportTable &table : m_old.tables()) {
        NewCrib::read(*database, table, [&](const std::vector<JetValue> &row) {
            m_stored[table.name].add(row);
            countRow();
        });
        requireEqual(table, tallies[table.name], m_stored[table.name]);
    }
    if (!database->openNative("PRAGMA foreign_key_check").isEmpty() || !database->damage().isEmpty())
        throw Refusal(ImportStatus::Differs, "could not be copied: the new file is not sound; it was removed");
    m_notes +=
        shortened(faultsIn(*database), longestList, "There are %1 more of these; vorlane-admin check lists them.");
}

void Import::requireEqual(const ImportTable &table, const Tally &old, const Tally &stored) const
{
    const std::optional<int> column = old.differenceTo(stored);
    if (!column)
        return;
    const QString where = *column < 0 ? "the number of rows in " + table.name
                                      : table.name + '.'
            + (size_t(*column) < table.columns.size() ? table.columns[*column].name : QString::number(*column));
    throw Refusal(ImportStatus::Differs,
                  "could not be copied: read a second time, it differs from the new file in " + where
                      + "; the new file was removed");
}

QString Import::report() const
{
    QString text = "Rows\n";
    for (const ImportTable &table : m_old.tables())
        text += line(table.name, withThousands(m_stored.at(table.name).rows()));

    // Yes is -1.
    const auto yes = [this](const char *table, const char *column) {
        return withThousands(-qint64(total(table, column).sum));
    };
    text += "\nFigures that the old program shows as well\n";
    text += line("Open loans", yes("CheckOutIn", "Active")) + line("Tools that are out", yes("Tools", "Out"));
    for (const char *table : {"Tools", "Scrap"})
        text += line(QString("Sum of PricePer, %1").arg(table), moneyText(qint64(total(table, "PricePer").sum)));

    if (!m_notes.isEmpty())
        text += "\nNotes\n";
    for (const QString &note : m_notes)
        text += "  " + note + '\n';
    return text;
}

const ImportTable &Import::tableCalled(const QString &name) const
{
    return *std::ranges::find(m_old.tables(), name, &ImportTable::name);
}

Tally::Column Import::total(const QString &table, const QString &column) const
{
    return m_stored.at(table).column(columnCalled(tableCalled(table), column));
}

void Import::startStep(const QString &step, qint64 rows)
{
    m_step = step;
    m_rowsOfStep = std::max<qint64>(rows, 1);
    m_rowsDone = 0;
}

void Import::countRow()
{
    if (m_rowsDone++ % rowsBetweenSigns == 0)
        m_progress(m_step, int(std::min<qint64>(100 * m_rowsDone / m_rowsOfStep, 100)));
}
