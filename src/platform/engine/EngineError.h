#pragma once

#include <QString>

#include <algorithm>
#include <stdexcept>

/// What the database engine refused, by its number and in its own words.
class EngineError : public std::runtime_error
{
public:
    EngineError(int number, const QString &text)
        : std::runtime_error(text.toStdString()), m_number(number), m_text(text)
    {
    }
    int number() const { return m_number; }
    const QString &text() const { return m_text; }

    /// Numbers that the program or its tests tell apart; the suite's other programs know them too.
    enum Number {
        internalError = 3000,
        updateWithoutEdit = 3020,
        noCurrentRecord = 3021,
        duplicateKey = 3022,
        fileNotFound = 3024,
        diskFull = 3026,
        readOnly = 3027,
        wrongAccount = 3029,
        noPermission = 3033,
        diskError = 3043,
        damagedFile = 3049,
        cannotOpenFile = 3051,
        cancelled = 3059,
        unknownColumn = 3061,
        duplicateDestination = 3063,
        notAnAction = 3065,
        syntaxError = 3075,
        unknownTable = 3078,
        ambiguousColumn = 3079,
        sameTableTwice = 3081,
        notJoined = 3082,
        unknownFunction = 3085,
        orderConflictsWithDistinct = 3093,
        aggregateInCondition = 3096,
        notAggregated = 3122,
        invalidBracketing = 3126,
        unknownField = 3127,
        textAfterStatement = 3142,
        connectionFailed = 3151,
        tooMuchData = 3163,
        recordDeleted = 3167,
        noServerEngine = 3170,
        relatedRecords = 3200,
        relatedRecordRequired = 3201,
        fileExists = 3204,
        notASelect = 3219,
        tooManyUsers = 3239,
        lockedFile = 3260,
        noSuchField = 3265,
        valueRequired = 3314,
        notADatabase = 3343,
        valueCount = 3346,
        numericOverflow = 3349,
        tooComplex = 3360,
        typeMismatch = 3464,
    };

    /// The error of a number that means one thing wherever it comes up, in the words that go with it. `name` is the
    /// file's, where they name one.
    static EngineError of(Number number, const QString &name = {})
    {
        const Words &words = *std::ranges::find(allWords, number, &Words::number);
        return {number, QString::fromLatin1(words.text).replace(QLatin1String("%1"), name)};
    }

private:
    struct Words {
        Number number;
        const char *text; ///< "%1" is the file's name
    };
    static constexpr Words allWords[] = {
        {noCurrentRecord, "No current record."},
        {duplicateKey,
         "The changes you requested to the table were not successful because they would create duplicate values in the "
         "index, primary key, or relationship. Change the data in the field or fields that contain duplicate data, "
         "remove the index, or redefine the index to permit duplicate entries and try again."},
        {diskFull, "Not enough space on disk."},
        {readOnly, "Cannot update. Database or object is read-only."},
        {wrongAccount, "Not a valid account name or password."},
        {noPermission,
         "You do not have the necessary permissions to use this object. Have your system administrator or the person "
         "who created the object establish the appropriate permissions for you."},
        {diskError, "Disk or network error."},
        {damagedFile,
         "Cannot open database '%1'. It may not be a database that your application recognizes, or the file may be "
         "corrupt."},
        {cannotOpenFile,
         "The database engine cannot open the file '%1'. It is already opened exclusively by another user, or you need "
         "permission to view its data."},
        {tooMuchData, "The field is too small to accept the amount of data you attempted to add."},
        {noServerEngine, "This program was built without the engine for servers."},
        {fileExists, "Database '%1' already exists."},
        {tooManyUsers, "Too many active users."},
        {notADatabase, "Unrecognized database format '%1'."},
        {tooComplex, "Query is too complex."},
        {typeMismatch, "Data type mismatch in criteria expression."},
    };

    int m_number;
    QString m_text;
};
