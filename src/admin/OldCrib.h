#pragma once

#include "admin/ImportStatus.h"
#include "platform/jet/JetFile.h"

#include <QSet>

#include <map>

/// What a column of the new database holds, and how its values are handed over: yes/no as -1 or 0, money in
/// ten-thousandths, a date as its stored text.
enum class ImportKind { Number, YesNo, Money, Date, Text, Fraction, Bytes };

/// Of money in one of its whole units.
inline constexpr qint64 moneyUnits = 10'000;

struct ImportColumn {
    QString name;
    ImportKind kind;
    int source; ///< column of the old table; -1 where it has none
    bool isKey = false;
    bool isCounter = false;
    bool isRequired = false;
    bool isOurs = false;
};

struct ImportTable {
    QString name;
    const JetTable *source; ///< null where the old file has none
    bool isOurs;
    std::vector<ImportColumn> columns;
};

/// An old Jet file seen as a crib: its tables and columns under the names of the schema, its values as they are stored
/// in a new database. What does not fit is refused with table, column and row (Refusal); nothing is guessed.
class OldCrib
{
public:
    /// @throws Refusal also with all tables and columns that are missing, JetError.
    OldCrib(const QString &file, const JetFile::Options &options);

    /// The tables of the schema in its order, then the others of the file; each with its own columns, then the others.
    const std::vector<ImportTable> &tables() const { return m_tables; }
    JetPages::Version version() const { return m_file.version(); }

    /// The rows of a table, a value for each of its columns. @throws Refusal, JetError
    void read(const ImportTable &table, const std::function<void(const std::vector<JetValue> &)> &visit);

    /// How many rows there are in all tables, by their heads.
    qint64 rowCount() const;
    /// What the shop should know of the file, as far as it has been read: what was missing, added, unreadable.
    QStringList notes() const;

private:
    void matchTables();
    void matchColumns(ImportTable &table, QStringList &missing);
    JetValue converted(const JetValue &value, JetType type, const ImportTable &table, const ImportColumn &column);

    JetFile m_file;
    std::vector<ImportTable> m_tables;
    QStringList m_notes;
    std::map<QString, int> m_respelled; ///< by column: texts in it that are numbers, but not as we would write them
};
