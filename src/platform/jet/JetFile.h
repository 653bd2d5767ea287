#pragma once

#include "platform/jet/JetPages.h"
#include "platform/jet/JetText.h"

#include <QString>

#include <functional>
#include <variant>
#include <vector>

/// One value: empty, a number, a fraction, a text, or bytes. What a number means its column says: yes/no is -1 or 0,
/// money is counted in ten-thousandths. A date is a fraction, see JetFile::dateText().
using JetValue = std::variant<std::monostate, qint64, double, QString, QByteArray>;

/// The kinds of columns, by the numbers that stand in the file.
enum class JetType : quint8 {
    YesNo = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Money = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
};

struct JetColumn {
    QString name;
    JetType type; ///< one that this enum does not name is read as bytes
    // Where a row has its value.
    bool isFixed;
    int number; ///< among all columns that the table ever had
    int variableNumber; ///< among those of variable width
    int offset;
    int size;
};

struct JetTable {
    QString name;
    qint64 rowCount; ///< as the table's head has it
    qint32 lastNumber; ///< that its counter gave out
    std::vector<JetColumn> columns;
    // For the reader.
    quint32 page;
    bool hasVariableColumns;
    quint32 usageMap;
};

/// A database file of the Jet 3 or Jet 4 format, as a source of rows. The file is not changed. Everything that is not
/// as it should be is thrown as a JetError; nothing is guessed.
class JetFile
{
public:
    struct Options {
        QString password = {};
        /// Takes tables whose head counts more or fewer rows than there are, as in a file that was not closed properly.
        bool trustRows = false;
    };
    JetFile(const QString &file, const Options &options);

    JetPages::Version version() const { return m_pages.version(); }
    /// All tables but the engine's own, in the order of the catalogue.
    const std::vector<JetTable> &tables() const { return m_tables; }
    /// Names of tables that lie in another file, to which this one only refers.
    const QStringList &linkedTables() const { return m_linked; }

    /// Hands each row to `visit`, a value for every column. @returns how many there were.
    qint64 read(const JetTable &table, const std::function<void(const std::vector<JetValue> &)> &visit);

    /// How many characters the file's code page does not have were met in texts; they became U+FFFD.
    qint64 unknownCharacters() const { return m_text.unknownCharacters(); }

    /// A table whose head does not count its rows right; there are none but with Options::trustRows.
    struct Miscount {
        QString table;
        qint64 found;
        qint64 stated;
    };
    /// Those that have been read.
    const std::vector<Miscount> &miscounts() const { return m_miscounts; }

    /// A date as "yyyy-mm-dd hh:mm:ss", to the nearest second; empty for what is outside the years 100 to 9999.
    static QString dateText(double date);

private:
    void checkPassword(const QString &given);
    void readCatalogue();
    QByteArray definitionBytes(quint32 page);
    JetTable definition(quint32 page, const QString &name);
    std::vector<quint32> pagesOf(const JetTable &table);
    void readRow(const Bytes &row, const JetTable &table, std::vector<JetValue> &values);
    Bytes variableValue(const Bytes &row, qint64 maskAt, int number) const;
    JetValue value(const JetColumn &column, const Bytes &bytes);
    QByteArray longValue(const Bytes &bytes);
    void spend(qint64 bytes);
    QString text(const Bytes &bytes) { return m_text.decoded(bytes); }
    bool isJet3() const { return m_pages.version() == JetPages::Version::Jet3; }

    JetPages m_pages;
    JetText m_text;
    bool m_trustRows;
    std::vector<JetTable> m_tables;
    QStringList m_linked;
    std::vector<Miscount> m_miscounts;
    qint64 m_unspent = 0; ///< bytes that the rows of a table may still take
};
