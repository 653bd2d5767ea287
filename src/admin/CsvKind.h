#pragma once

#include <QStringList>

#include <vector>

/// A heading of a CSV file, and the column that the cells below it go to.
struct CsvColumn {
    enum Kind {
        Text,
        Number,
        Price,
        YesNo,
        TypePath, ///< the number of a folder, in the file its path
        LocationPath,
        Quantity, ///< of equal tools; there is no column
    };
    QString heading;
    QString column;
    Kind kind = Text;
    bool isRequired = false; ///< the heading must be there, and something in each cell below it
    QStringList otherHeadings = {}; ///< that mean the same
    QString whenAbsent = {}; ///< what every row has where the heading is not there
    int longest = 0; ///< characters, where they are bounded
    int longestTyped = 0; ///< characters of which more are told of, for the windows take no more
    bool isUnique = false; ///< no two rows may share it, in any case of letters
};

/// What a CSV file may hold. Every file's rows go to one table; those of tools also make folders.
struct CsvKind {
    QString name; ///< "tools", also the name of its file
    QString table;
    std::vector<CsvColumn> columns;
    QString key; ///< the column by which the rows are put in order

    /// In an order in which they can be imported one after the other.
    static const std::vector<CsvKind> &all();
    /// Whether it has a column of that sort.
    bool has(CsvColumn::Kind sort) const;
    /// Whether the rows are folders.
    bool isFolders() const { return columns.front().column == "ID"; }
    /// Whether the engine numbers its rows.
    bool isCounted() const { return key == "ID"; }
};
