#pragma once

#include <QString>

/// A piece of a query, twice: as the statement that fills the results window says it and as the report engine's
/// selection formula says it. %1 and %2 stand for the values. Both must pick the same rows.
struct Fragment {
    const char *statement;
    const char *formula;
};

/// A list to choose from: its statement, the field that is shown and the one that the choice stands for.
struct ChoiceList {
    const char *statement;
    const char *shows;
    const char *gives = shows;
};

/// The folders right below a chosen one, which count as chosen with it.
struct SubFolders {
    const char *parentId; ///< statement for the number of the folder called %1
    const char *descriptions; ///< statement for what lies below the folder number %1
    Fragment alternative;
};

/// One row of a query form: a box that switches it on, a box that makes a range of its value, and the two boxes for the
/// value or the lower bound and for the upper bound.
struct Criterion {
    /// How what stands in a box becomes the value in the query.
    enum Value {
        AsShown,
        Employee, ///< a range compares last names, a single value is the employee's number
        ShortDate, ///< the statement takes it as shown, the formula as year, month and day
        Price, ///< the number, whatever form it is shown in
    };
    const char *caption;
    const char *useBox;
    const char *rangeBox;
    const char *valueBoxes; ///< the name of the two boxes up to the "1" and the "2" at its end
    const char *source; ///< name of the list; null where the boxes have none
    ChoiceList choices = {};
    Fragment single;
    Fragment range;
    Value value = AsShown;
    const SubFolders *subFolders = nullptr; ///< for a single value
};

/// What a row's boxes hold.
struct Entry {
    bool isRange = false;
    QString shown[2] = {};
    QString bound[2] = {}; ///< what the choices stand for; empty where what is shown is none of the list
};

/// What is added to a statement and to a formula.
struct Condition {
    QString statement;
    QString formula;
};

/// The condition that a row adds, with its leading " and ".
/// @throws std::exception for a date that is none, a folder that does not exist, EngineError.
Condition conditionOf(const Criterion &criterion, const Entry &entry);
