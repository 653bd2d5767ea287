#include "admin/Command.h"
#include "platform/engine/Workspace.h"
#include "platform/text/Csv.h"

#include <QRegularExpression>

namespace {

// Lines end in CR LF, as RFC 4180 has them.
void writeCsv(const Recordset &rows, QTextStream &out)
{
    QStringList fields(rows.fieldCount());
    for (int column = 0; column < fields.size(); ++column)
        fields[column] = csvField(rows.fieldName(column));
    out << fields.join(',') << "\r\n";
    for (int row = 0; row < rows.recordCount(); ++row) {
        for (int column = 0; column < fields.size(); ++column)
            fields[column] = csvField(rows.at(row, column).toText());
        out << fields.join(',') << "\r\n";
    }
}

int sql(const QCommandLineParser &arguments, QTextStream &out)
{
    const auto database = Workspace::first().openDatabase(arguments.positionalArguments().at(0));
    const QString statement = arguments.positionalArguments().at(1);
    static const QRegularExpression select("^\\s*select\\b", QRegularExpression::CaseInsensitiveOption);
    if (statement.contains(select))
        writeCsv(database->openRecordset(statement), out);
    else
        out << database->execute(statement) << " rows affected\n";
    return 0;
}

}

Command sqlCommand()
{
    return {.name = "sql",
            .operands = {"FILE", "STATEMENT"},
            .summary = "Runs one statement of the query dialect",
            .details = "A SELECT is printed as CSV with a header line: yes/no as -1 and 0, dates as they are stored.",
            .run = sql};
}
