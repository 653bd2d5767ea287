#pragma once

#include <QString>

#include <span>

/// What a scanner reads, or somebody types: the number of a thing behind a letter, a command, or a text to search for.
struct Code {
    enum Kind {
        Nothing, ///< an empty text
        Unreadable, ///< half a code, or what a scanner makes of dirt
        Tool,
        Employee,
        Job,
        Operation,
        Location,
        Reason,
        Out,
        In,
        Undo,
        Done,
        Count,
        Text,
    };
    Kind kind = Nothing;
    qint64 number = 0; ///< -1 where it has more digits than any number here
    QString text = {};

    bool operator==(const Code &) const = default;
    bool isCommand() const { return kind >= Out && kind <= Count; }
    static Code of(const QString &scanned);
    /// As labels bear it: "T12", "OUT".
    QString label() const;
};

/// One row of the table of codes.
struct CodeForm {
    const char *beginning; ///< letters before the number, or the whole command; in any case
    bool isNumbered;
    Code::Kind kind;
};
/// All forms of codes; the templates of labels and cards print these.
std::span<const CodeForm> codeForms();
