#pragma once

#include <QString>

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
        diskError = 3043,
        damagedFile = 3049,
        cannotOpenFile = 3051,
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
        tooMuchData = 3163,
        recordDeleted = 3167,
        relatedRecords = 3200,
        relatedRecordRequired = 3201,
        fileExists = 3204,
        notASelect = 3219,
        lockedFile = 3260,
        noSuchField = 3265,
        valueRequired = 3314,
        notADatabase = 3343,
        valueCount = 3346,
        numericOverflow = 3349,
        tooComplex = 3360,
        typeMismatch = 3464,
    };

private:
    int m_number;
    QString m_text;
};
