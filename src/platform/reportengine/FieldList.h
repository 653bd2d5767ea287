#pragma once

#include <QHash>
#include <QList>
#include <QString>

/// What a column holds, by its declared type.
enum class FieldKind { Text, Number, YesNo, DateTime };

/// One column of one table, as a template or a formula names it: "Table.Column".
struct Field {
    QString table;
    QString column;
    /// Where the template mentions it first; 0 for a field that only the caller's formula names.
    int line = 0;
    /// The template prints it, adds it up or sorts by it; other fields only hold records together.
    bool isData = false;
    /// Known once the database's schema has been read.
    FieldKind kind = FieldKind::Text;
    /// The path of a folder, which no column has.
    bool isPath = false;
    /// Whether a statement may pick records by it.
    bool isInStatement = true;

    QString name() const { return table + '.' + column; }
    /// @returns a field without a table when `name` is not of the form "Table.Column".
    static Field fromName(QStringView name);
};

/// The fields of a report, each once. A field's number is its column in the records.
class FieldList
{
public:
    /// The number of the field called `name`, "Table.Column" in any case; a new one is added at the end, as mentioned
    /// in the template's `line`. -1 for a name of any other form.
    int add(QStringView name, int line, bool isData = false);
    /// The number of that column, -1 where the report has none of it.
    int find(const QString &table, const QString &column) const;
    int count() const { return int(m_fields.size()); }
    const Field &at(int number) const { return m_fields[number]; }
    Field &at(int number) { return m_fields[number]; }
    auto begin() const { return m_fields.begin(); }
    auto end() const { return m_fields.end(); }

private:
    QList<Field> m_fields;
    QHash<QString, int> m_numbers;
};
