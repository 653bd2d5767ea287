#include "admin/OldCrib.h"

#include "admin/Refusal.h"
#include "db/Schema.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

// Above that a stored amount no longer has its fourth place.
constexpr qint64 highestMoney = 1LL << 53;

/// Came with later versions of the suite; a file without them is whole. A column's name is empty for the table.
struct Optional {
    const char *table;
    const char *column;
};
constexpr Optional optionals[] = {{"JobVorlane", ""}, {"Scrap", "Job"}, {"Scrap", "Date"}, {"Reports", "oem"}};

bool isOptional(const QString &table, const QString &column = {})
{
    return std::ranges::any_of(optionals, [&](const Optional &one) {
        return table == QLatin1String(one.table) && column == QLatin1String(one.column);
    });
}

ImportKind kindOf(dialect::ValueKind kind)
{
    switch (kind) {
    case dialect::ValueKind::YesNo:
        return ImportKind::YesNo;
    case dialect::ValueKind::Currency:
        return ImportKind::Money;
    case dialect::ValueKind::Date:
        return ImportKind::Date;
    case dialect::ValueKind::Text:
        return ImportKind::Text;
    default:
        return ImportKind::Number;
    }
}

ImportKind kindOf(JetType type)
{
    switch (type) {
    case JetType::YesNo:
        return ImportKind::YesNo;
    case JetType::Byte:
    case JetType::Integer:
    case JetType::Long:
        return ImportKind::Number;
    case JetType::Money:
        return ImportKind::Money;
    case JetType::Single:
    case JetType::Double:
        return ImportKind::Fraction;
    case JetType::Date:
        return ImportKind::Date;
    case JetType::Text:
    case JetType::Memo:
        return ImportKind::Text;
    default:
        return ImportKind::Bytes;
    }
}

template<typename List, typename Projection>
auto findName(const List &list, const QString &name, Projection projection)
{
    return std::ranges::find_if(
        list, [&](const QString &other) { return other.compare(name, Qt::CaseInsensitive) == 0; }, projection);
}

bool isWholeNumber(JetType type)
{
    return type == JetType::YesNo || type == JetType::Byte || type == JetType::Integer || type == JetType::Long;
}

/// A whole number of 32 bits, whatever it was stored as; nothing for anything else.
std::optional<qint64> wholeNumber(const JetValue &value, JetType type)
{
    std::optional<qint64> number;
    if (const auto *fraction = std::get_if<double>(&value);
        fraction && type != JetType::Date && std::fabs(*fraction) < 1e10 && std::trunc(*fraction) == *fraction)
        number = qint64(*fraction);
    if (const auto *whole = std::get_if<qint64>(&value); whole && isWholeNumber(type))
        number = *whole;
    if (const auto *text = std::get_if<QString>(&value)) {
        bool isNumber = false;
        const qint64 read = text->trimmed().toLongLong(&isNumber);
        if (isNumber)
            number = read;
    }
    if (number
        != std::clamp<qint64>(number.value_or(0), std::numeric_limits<qint32>::min(),
                              std::numeric_limits<qint32>::max()))
        return {};
    return number;
}

/// Money in ten-thousandths; nothing where it has more places or is too large.
std::optional<qint64> money(const JetValue &value, JetType type)
{
    std::optional<qint64> amount;
    if (const auto *whole = std::get_if<qint64>(&value); whole && type == JetType::Money)
        amount = *whole;
    else if (whole && isWholeNumber(type))
        amount = *whole * moneyUnits;
    if (const auto *fraction = std::get_if<double>(&value); fraction && type != JetType::Date) {
        const double units = std::nearbyint(*fraction * moneyUnits);
        if (std::fabs(units) < double(highestMoney) && units / moneyUnits == *fraction)
            amount = qint64(units);
    }
    const bool isTooLarge = amount && (*amount >= highestMoney || *amount <= -highestMoney);
    return isTooLarge ? std::nullopt : amount;
}

QString asText(const JetValue &value)
{
    if (const auto *text = std::get_if<QString>(&value))
        return '"' + text->left(40) + '"';
    if (const auto *number = std::get_if<qint64>(&value))
        return QString::number(*number);
    if (const auto *fraction = std::get_if<double>(&value))
        return QString::number(*fraction);
    return std::holds_alternative<QByteArray>(value) ? "bytes" : "nothing";
}

/// Numbers that have been met. They are mostly small and many, and then take a bit each.
class NumberSet
{
public:
    /// @returns whether it is a new one.
    bool insert(qint64 number)
    {
        if (number < 0 || number >= mostBits) {
            const qsizetype before = m_others.size();
            m_others.insert(number);
            return m_others.size() > before;
        }
        if (size_t(number) >= m_bits.size())
            m_bits.resize(std::max<size_t>(number + 1, 2 * m_bits.size()));
        const bool isNew = !m_bits[number];
        m_bits[number] = true;
        return isNew;
    }

private:
    static constexpr qint64 mostBits = 1 << 24;
    std::vector<bool> m_bits;
    QSet<qint64> m_others;
};

/// Why a value cannot go into its column: what stands behind the column's name.
struct Misfit {
    QString words;
};

QString shouldBe(ImportKind kind)
{
    switch (kind) {
    case ImportKind::Number:
        return "no whole number of 32 bits";
    case ImportKind::YesNo:
        return "neither yes nor no";
    case ImportKind::Money:
        return "no amount of money with four places";
    case ImportKind::Date:
        return "no date of the years 100 to 9999";
    case ImportKind::Text:
        return "no text";
    default:
        return "no number";
    }
}

}

OldCrib::OldCrib(const QString &file, const JetFile::Options &options) : m_file(file, options) { matchTables(); }

void OldCrib::matchTables()
{
    QStringList missing;
    QSet<const JetTable *> taken;
    for (const TableDefinition &ours : Schema::tables()) {
        ImportTable table{.name = ours.name, .source = nullptr, .isOurs = true, .columns = {}};
        if (const auto found = findName(m_file.tables(), table.name, &JetTable::name); found != m_file.tables().end()) {
            table.source = &*found;
            taken.insert(table.source);
        } else if (findName(m_file.linkedTables(), table.name, std::identity()) != m_file.linkedTables().end()) {
            missing << "the table " + table.name + " (it lies in another file)";
        } else if (!isOptional(table.name)) {
            missing << "the table " + table.name;
        } else {
            m_notes << "There was no table " + table.name + "; it is empty.";
        }
        for (const TableDefinition::Column &column : ours.columns) {
            const bool isCounter = column.rule == TableDefinition::Counter;
            table.columns.push_back({.name = column.name,
                                     .kind = kindOf(column.kind),
                                     .source = -1,
                                     .isKey = isCounter || column.rule == TableDefinition::Key,
                                     .isCounter = isCounter,
                                     .isRequired = column.rule != TableDefinition::Optional && !isCounter,
                                     .isOurs = true});
        }
        if (table.source)
            matchColumns(table, missing);
        m_tables.push_back(std::move(table));
    }
    if (!missing.isEmpty())
        throw Refusal(ImportStatus::Content, "is not a whole crib: it lacks " + missing.join(", "));

    for (const JetTable &other : m_file.tables()) {
        if (taken.contains(&other))
            continue;
        if (other.name.startsWith("sqlite_", Qt::CaseInsensitive))
            throw Refusal(ImportStatus::Content,
                          "has a table " + other.name + "; a new database keeps such names for itself");
        m_tables.push_back({.name = other.name, .source = &other, .isOurs = false, .columns = {}});
        matchColumns(m_tables.back(), missing);
        m_notes << "The table " + other.name + " is not the program's; it was copied as it is.";
    }
    for (const QString &linked : m_file.linkedTables())
        m_notes << "The table " + linked + " lies in another file; it was not copied.";
}

void OldCrib::matchColumns(ImportTable &table, QStringList &missing)
{
    const std::vector<JetColumn> &sources = table.source->columns;
    QSet<int> taken;
    for (ImportColumn &column : table.columns) {
        const auto found = findName(sources, column.name, &JetColumn::name);
        if (found != sources.end())
            taken.insert(column.source = int(found - sources.begin()));
        else if (isOptional(table.name, column.name))
            m_notes << QString("There was no column %1.%2; it is empty.").arg(table.name, column.name);
        else
            missing << QString("the column %1.%2").arg(table.name, column.name);
    }
    for (int source = 0; source < int(sources.size()); ++source) {
        const JetColumn &other = sources[source];
        if (taken.contains(source))
            continue;
        table.columns.push_back({.name = other.name, .kind = kindOf(other.type), .source = source});
        if (table.isOurs)
            m_notes << QString("The column %1.%2 is not the program's; it was copied as it is.")
                           .arg(table.name, other.name);
    }
}

JetValue OldCrib::converted(const JetValue &value, JetType type, const ImportTable &table, const ImportColumn &column)
{
    if (std::holds_alternative<std::monostate>(value)) {
        if (column.isKey || column.isRequired)
            throw Misfit{"is empty"};
        return {};
    }
    const auto misfit = [&] { return Misfit{QString("holds %1, %2,").arg(asText(value), shouldBe(column.kind))}; };
    switch (column.kind) {
    case ImportKind::Number:
        if (const std::optional<qint64> number = wholeNumber(value, type)) {
            if (const auto *text = std::get_if<QString>(&value); text && *text != QString::number(*number))
                ++m_respelled[table.name + '.' + column.name];
            return *number;
        }
        throw misfit();
    case ImportKind::YesNo:
        if (const std::optional<qint64> number = wholeNumber(value, type); number == 0 || number == -1)
            return *number;
        throw misfit();
    case ImportKind::Money:
        if (const std::optional<qint64> amount = money(value, type))
            return *amount;
        throw misfit();
    case ImportKind::Date:
        if (const auto *date = std::get_if<double>(&value); date && type == JetType::Date) {
            if (const QString text = JetFile::dateText(*date); !text.isEmpty())
                return text;
        }
        throw misfit();
    case ImportKind::Text:
        if (std::holds_alternative<QString>(value))
            return value;
        if (const auto *number = std::get_if<qint64>(&value); number && isWholeNumber(type))
            return QString::number(*number);
        throw misfit();
    case ImportKind::Fraction:
        // Adding zero leaves no negative one, which the database does not know.
        if (const auto *fraction = std::get_if<double>(&value); fraction && std::isfinite(*fraction))
            return *fraction + 0.0;
        throw misfit();
    case ImportKind::Bytes:
        break;
    }
    return value;
}

void OldCrib::read(const ImportTable &table, const std::function<void(const std::vector<JetValue> &)> &visit)
{
    if (!table.source)
        return;
    std::vector<JetValue> values(table.columns.size());
    NumberSet keys;
    qint64 rowNumber = 0;
    m_file.read(*table.source, [&](const std::vector<JetValue> &row) {
        ++rowNumber;
        size_t at = 0;
        try {
            for (; at < values.size(); ++at) {
                const ImportColumn &column = table.columns[at];
                if (column.source >= 0)
                    values[at] =
                        converted(row[column.source], table.source->columns[column.source].type, table, column);
                else if (column.kind == ImportKind::YesNo)
                    values[at] = qint64(0);
                if (column.isKey && !keys.insert(std::get<qint64>(values[at])))
                    throw Misfit{"has the number " + asText(values[at]) + " a second time"};
            }
        } catch (const Misfit &misfit) {
            const bool isNumbered = at > 0 && table.columns[0].isKey;
            throw Refusal(
                ImportStatus::Content,
                "cannot be imported as it is: " + table.name + '.' + table.columns[at].name + ' ' + misfit.words
                    + " in row " + QString::number(rowNumber)
                    + (isNumbered ? " (" + table.columns[0].name + ' ' + asText(values[0]) + ')' : QString()));
        }
        visit(values);
    });
}

qint64 OldCrib::rowCount() const
{
    return std::accumulate(m_tables.begin(), m_tables.end(), qint64(0), [](qint64 sum, const ImportTable &table) {
        return sum + (table.source ? table.source->rowCount : 0);
    });
}

QStringList OldCrib::notes() const
{
    QStringList notes = m_notes;
    for (const auto &[column, count] : m_respelled)
        notes << QString("In %1 %2 numbers were texts with leading zeros or blanks; they are plain numbers.")
                     .arg(column, QString::number(count));
    for (const JetFile::Miscount &miscount : m_file.miscounts())
        notes << QString("The table %1 has %2 rows, but its head counts %3; all that were found were taken.")
                     .arg(miscount.table, QString::number(miscount.found), QString::number(miscount.stated));
    if (m_file.unknownCharacters() > 0)
        notes << QString("Characters that could not be read: %1. They are \"%2\".")
                     .arg(m_file.unknownCharacters())
                     .arg(QChar(QChar::ReplacementCharacter));
    return notes;
}
