#include "queries/Criterion.h"

#include "db/Session.h"
#include "platform/engine/dialect/DateLiteral.h"
#include "platform/text/Format.h"
#include "platform/text/Numbers.h"

namespace {

// Up to the first blank of a name shown as "MILLER ANNA". Where there is none, the name is no last name.
QString lastName(const QString &shown)
{
    const qsizetype blank = shown.trimmed().indexOf(' ');
    return blank < 0 ? QString() : shown.left(blank).trimmed();
}

// A formula knows whole days only: with a time of day it would pick other rows than the statement.
QString formulaDate(const QString &shown)
{
    const QString stored = dialect::storedDate(shown);
    if (stored.isEmpty() || shown.contains(':'))
        throw NumberError("Type mismatch");
    return Format::shortDate(stored).replace('-', ',');
}

// The list shows prices as currency, while a price may also be typed in.
QString price(const Entry &entry, int box)
{
    if (!entry.bound[box].isEmpty())
        return entry.bound[box];
    QString shown = entry.shown[box].trimmed();
    // Before one or two digits a comma is a decimal sign: 85,50 is never 8550.
    if (const qsizetype comma = shown.lastIndexOf(','); comma >= 0 && comma >= shown.size() - 3)
        shown[comma] = '.';
    const std::optional<double> number = numberIn(shown);
    return number ? Format::plainNumber(*number) : shown;
}

// One value fills a text without %2.
QString filled(const char *text, const QString values[2], bool isRange)
{
    return isRange ? QString(text).arg(values[0], values[1]) : QString(text).arg(values[0]);
}

Condition subFolderAlternatives(const SubFolders &folders, const QString &folder)
{
    const qint16 id = toInteger(openRecordset(QString(folders.parentId).arg(folder)).text(u"Id"));
    Condition alternatives;
    for (Recordset below = openRecordset(QString(folders.descriptions).arg(id)); !below.atEnd(); below.moveNext()) {
        const QString description = below.text(u"Description");
        alternatives.statement += QString(folders.alternative.statement).arg(description);
        alternatives.formula += QString(folders.alternative.formula).arg(description);
    }
    return alternatives;
}

}

Condition conditionOf(const Criterion &criterion, const Entry &entry)
{
    const int boxes = entry.isRange ? 2 : 1;
    QString inStatement[2], inFormula[2];
    for (int box = 0; box < boxes; ++box) {
        inStatement[box] = inFormula[box] = entry.shown[box].trimmed();
        switch (criterion.value) {
        case Criterion::AsShown:
            break;
        case Criterion::Employee:
            inStatement[box] = inFormula[box] = entry.isRange ? lastName(entry.shown[box]) : entry.bound[box].trimmed();
            break;
        case Criterion::ShortDate:
            inFormula[box] = formulaDate(entry.shown[box]);
            break;
        case Criterion::Price:
            inStatement[box] = inFormula[box] = price(entry, box);
            break;
        }
    }
    const Fragment &fragment = entry.isRange ? criterion.range : criterion.single;
    Condition condition{filled(fragment.statement, inStatement, entry.isRange),
                        filled(fragment.formula, inFormula, entry.isRange)};
    if (criterion.subFolders && !entry.isRange) {
        // They are not put into brackets: a criterion before or after combines with them as "and" and "or" do.
        const Condition alternatives = subFolderAlternatives(*criterion.subFolders, inStatement[0]);
        condition.statement += alternatives.statement;
        condition.formula += alternatives.formula;
    }
    return condition;
}
