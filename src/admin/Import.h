#pragma once

#include "admin/NewCrib.h"
#include "admin/Tally.h"

#include <map>

/// How a long command is told how far it is: what it does, and how much of it in a hundred.
using ImportProgress = std::function<void(const QString &step, int percent)>;

/// Takes an old Jet file into a new database and proves that both hold the same.
class Import
{
public:
    struct Options {
        JetFile::Options reading = {};
        /// Adds folders for the tools whose type or location does not exist.
        bool mend = false;
    };
    /// `newFile` must not exist. Whoever makes an Import removes it when anything is thrown.
    Import(const QString &oldFile, const QString &newFile, const Options &options, const ImportProgress &progress);

    /// Copies all rows in one transaction. @throws Refusal for content that does not fit, JetError, EngineError
    void copy();
    /// Reads the old file a second time and the new one back, and compares; then lets the engine check the file.
    /// @throws Refusal where there is any difference, JetError, EngineError
    void compare();

    /// For the shop: rows, and figures that the old program shows as well; then the notes.
    QString report() const;
    /// What was missing, added, mended, or is wrong in itself.
    const QStringList &notes() const { return m_notes; }

private:
    /// A relation that the engine enforces: a column of Tools, and the table whose numbers it holds.
    struct Reference {
        QString column;
        QString table;
        QSet<qint64> known = {};
        std::map<qint64, QStringList> lacking = {}; ///< tools, by the number that does not exist
    };

    void copyTable(NewCrib &crib, const ImportTable &table);
    bool isStorable(NewCrib &crib, const ImportTable &tools, const std::vector<JetValue> &tool);
    /// Whether a folder of this number, which the old file lacks, is added.
    bool isMended(qint64 number) const;
    void addFolder(NewCrib &crib, const QString &name, qint64 number);
    void requireReferences();
    void requireEqual(const ImportTable &table, const Tally &old, const Tally &stored) const;
    void startStep(const QString &step, qint64 rows);
    void countRow();
    const ImportTable &tableCalled(const QString &name) const;
    Tally::Column total(const QString &table, const QString &column) const;

    QString m_newFile;
    Options m_options;
    OldCrib m_old;
    QString m_oldFile;
    std::vector<Reference> m_references{{"Type", "Types"}, {"Location", "Locations"}};
    std::map<QString, Tally> m_added; ///< rows that mend the old file's, by table
    std::map<QString, Tally> m_stored; ///< all rows, by table
    QStringList m_notes;

    ImportProgress m_progress;
    QString m_step;
    qint64 m_rowsOfStep = 0;
    qint64 m_rowsDone = 0;
};
