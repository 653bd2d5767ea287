#pragma once

#include "platform/reportengine/FieldFormat.h"
#include "platform/reportengine/Formula.h"
#include "platform/reportengine/ResultCode.h"

#include <QColor>
#include <QPageLayout>

/// A number over the rows of one group, or over all rows of the report.
struct Aggregate {
    enum Function { Count, Sum, Minimum, Maximum, Average };
    Function function = Count;
    int field = -1; ///< -1: the rows themselves are counted
    int level = -1; ///< the group, outermost 0; -1: the report
    int line = 0; ///< of the template

    bool operator==(const Aggregate &other) const
    {
        return function == other.function && field == other.field && level == other.level;
    }
};

/// A stretch of a cell's text: as it stands, or filled in.
struct TextPiece {
    enum Kind {
        Literal,
        FieldValue,
        AggregateValue,
        PageNumber,
        PageCount,
        Today,
        Now,
        RowCount,
        Continued,
        Parameter
    };
    Kind kind = Literal;
    QString text; ///< the literal text, or the parameter's name
    int number = -1; ///< of the field or of the aggregate
    int line = 0; ///< of the template
    FieldFormat format = {};

    bool dependsOnPage() const { return kind == PageNumber || kind == PageCount; }
};

/// A column of the grid that every cell of the report stands in.
struct GridColumn {
    QString name;
    double width = 0; ///< relative to the other columns
    Qt::Alignment alignment = Qt::AlignLeft;
    int maxLines = 1; ///< of a text that wraps
};

struct Cell {
    int firstColumn = 0;
    int lastColumn = 0;
    Qt::Alignment alignment = Qt::AlignLeft;
    bool bold = false;
    int maxLines = 1;
    bool isBarcode = false;
    Formula when;
    int line = 0; ///< of the template
    QList<TextPiece> text;
};

/// Bars that lie below each other, one for each group of a level.
struct Chart {
    int level = 0; ///< of the groups; those of the band's own group, or of the report, are shown
    TextPiece value; ///< a number over each of the groups
    int most = 20; ///< bars
    bool largestFirst = false; ///< else in the order of the groups
    int line = 0; ///< of the template
};

/// A line of cells, a chart, or a rule over the page's width. Where cells share a column, the first whose condition
/// holds is printed; it is the same with those that name a chart's bars.
struct BandLine {
    bool isRule = false;
    int chart = -1; ///< its number in the template
    double size = 0; ///< points
    Formula when;
    QList<Cell> cells;
};

struct Band {
    Formula when;
    QList<BandLine> lines;
};

struct Group {
    enum Period { EachValue, Day, Month, Year };
    int field = -1;
    int line = 0; ///< of the template
    Period period = EachValue;
    int sortField = -1; ///< orders the groups; -1: their own field does
    int keep = 1; ///< so many rows stay with the header
    bool repeatsHeader = false;
    bool startsPage = false;
    Band header;
    Band footer;
};

/// Details that stand beside each other, each as high as the others: labels.
struct Labels {
    int across = 0; ///< 0: details stand below each other, as high as their texts
    double height = 0; ///< points, from a label to the one below; 0: all that is between header and footer of a page
    double gap = 0; ///< points, between a label and the next one beside it
};

struct SortField {
    int field = -1;
    bool descending = false;
};

/// A further table, and how its rows are found.
struct Join {
    QString table;
    bool keepsUnmatched = true; ///< rows without a partner stay
    int lastBy = -1; ///< of a row's partners only the one with the greatest value in this field counts; -1: all do
    QList<std::pair<int, int>> equalFields;
    int line = 0; ///< of the template
};

/// A report template as its file states it: nothing of it has been held against a database yet.
struct Template {
    QString fileName;
    QString title;
    QPageSize paper{QPageSize::Letter};
    bool landscape = false;
    double margin = 36; ///< points; above and below
    double sideMargin = 36;
    QString font;
    double size = 9; ///< points

    QString table; ///< empty: the report has one record, with no fields
    int tableLine = 0;
    QList<Join> joins;
    Formula where;
    QList<SortField> sorting;

    QList<GridColumn> columns;
    Band reportHeader;
    Band pageHeader;
    QList<Group> groups;
    Band detail;
    Labels labels;
    QColor shade; ///< of every second row; invalid: none
    Band reportFooter;
    Band pageFooter;
    Band noData;

    /// The whole sheet: a report keeps its margins itself.
    QPageLayout pageLayout() const;
    /// Of a label in points, or of the page between its margins.
    double detailWidth() const;

    FieldList fields;
    QList<Aggregate> aggregates;
    QList<Chart> charts;
    QHash<QString, int> parameters; ///< their names with the lines that mention them first
    /// The number of the field that the template mentions in `line` as `name`, "Table.Column".
    /// @throws ReportError 20525 for a name of any other form.
    int fieldCalled(QStringView name, int line, bool isData = false);
    /// @throws ReportError 20553 for a parameter that is not among `known`.
    void requireParameters(const QHash<QString, QString> &known) const;
};

/// An error in a template, with the place where it stands.
ReportError templateError(const QString &fileName, int line, const QString &what,
                          int code = ResultCode::cannotLoadReport);
