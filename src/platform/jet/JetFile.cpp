#include "platform/jet/JetFile.h"

#include <QDate>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

constexpr quint32 cataloguePage = 2;
constexpr quint32 longValueOwner = 0x4c41564c; // "LVAL", in the place of a table's page
constexpr qsizetype largestDefinition = 1 << 20;
constexpr int mostColumns = 255;
constexpr int mostMoves = 8;

/// Where a table's definition has what; the two versions differ in nothing else there.
struct DefinitionLayout {
    int rowCount, lastNumber, variableCount, columnCount, indexCount, usageMap, columns, indexSize;
    // Within a column's entry.
    int columnSize, number, variableNumber, flags, offset, size;
};

constexpr DefinitionLayout jet3Definition{.rowCount = 12,
                                          .lastNumber = 16,
                                          .variableCount = 23,
                                          .columnCount = 25,
                                          .indexCount = 31,
                                          .usageMap = 35,
                                          .columns = 43,
                                          .indexSize = 8,
                                          .columnSize = 18,
                                          .number = 1,
                                          .variableNumber = 3,
                                          .flags = 13,
                                          .offset = 14,
                                          .size = 16};
constexpr DefinitionLayout jet4Definition{.rowCount = 16,
                                          .lastNumber = 20,
                                          .variableCount = 43,
                                          .columnCount = 45,
                                          .indexCount = 51,
                                          .usageMap = 55,
                                          .columns = 63,
                                          .indexSize = 12,
                                          .columnSize = 25,
                                          .number = 5,
                                          .variableNumber = 7,
                                          .flags = 15,
                                          .offset = 21,
                                          .size = 23};

/// What a fixed column takes in a row, whatever its entry says; 0 where the entry alone knows.
int widthOf(JetType type)
{
    switch (type) {
    case JetType::Byte:
        return 1;
    case JetType::Integer:
        return 2;
    case JetType::Long:
    case JetType::Single:
        return 4;
    case JetType::Money:
    case JetType::Double:
    case JetType::Date:
        return 8;
    default:
        return 0;
    }
}

void requireName(const QString &name)
{
    if (name.isEmpty() || std::ranges::any_of(name, [](QChar c) { return c < u' '; }))
        throw JetError::damaged("something in it has the impossible name \"" + name + '"');
}

int columnCalled(const JetTable &table, const QString &name)
{
    const auto found = std::ranges::find(table.columns, name, &JetColumn::name);
    if (found == table.columns.end())
        throw JetError::damaged("its catalogue has no column " + name);
    return int(found - table.columns.begin());
}

}

JetFile::JetFile(const QString &file, const Options &options)
    : m_pages(file), m_text(m_pages), m_trustRows(options.trustRows)
{
    checkPassword(options.password);
    readCatalogue();
}

void JetFile::checkPassword(const QString &given)
{
    const QByteArray stored = m_pages.password();
    // It ends at the first empty character.
    const qsizetype step = isJet3() ? 1 : 2;
    qsizetype size = 0;
    while (size < stored.size() && QByteArrayView(stored).sliced(size, step) != QByteArrayView("\0\0", step))
        size += step;
    if (size == 0)
        return;
    if (given.isEmpty())
        throw JetError(JetError::WrongPassword, "has a password; it was not given");
    if (text(QByteArrayView(stored).first(size)) != given)
        throw JetError(JetError::WrongPassword, "has another password than the one that was given");
}

void JetFile::readCatalogue()
{
    // Kinds of entries and flags of tables.
    constexpr qint64 tableKind = 1, serverLink = 4, fileLink = 6;
    constexpr qint64 systemFlags = 0x80000002;

    const JetTable catalogue = definition(cataloguePage, "MSysObjects");
    const int id = columnCalled(catalogue, "Id"), name = columnCalled(catalogue, "Name"),
              kind = columnCalled(catalogue, "Type"), flags = columnCalled(catalogue, "Flags");
    std::vector<std::pair<quint32, QString>> found;
    read(catalogue, [&](const std::vector<JetValue> &row) {
        const auto number = [&](int column) {
            const auto *value = std::get_if<qint64>(&row[column]);
            return value ? *value : 0;
        };
        const auto *called = std::get_if<QString>(&row[name]);
        if (!called)
            throw JetError::damaged("something in its catalogue has no name");
        if (number(kind) == serverLink || number(kind) == fileLink)
            m_linked << *called;
        if (number(kind) == tableKind && !(number(flags) & systemFlags) && !called->startsWith("MSys"))
            found.emplace_back(quint32(number(id)) & 0xffffff, *called);
    });

    std::set<quint32> pages{cataloguePage};
    std::set<QString> names;
    for (const auto &[page, called] : found) {
        if (!pages.insert(page).second || !names.insert(called.toCaseFolded()).second)
            throw JetError::damaged("its catalogue has the table " + called + " twice");
        m_tables.push_back(definition(page, called));
    }
}

QByteArray JetFile::definitionBytes(quint32 page)
{
    constexpr int next = 4, headSize = 8;
    QByteArray bytes = m_pages.page(page, JetPages::DefinitionPage);
    for (quint32 more = Bytes(bytes).number32(next); more != 0;) {
        const QByteArray part = m_pages.page(more, JetPages::DefinitionPage);
        more = Bytes(part).number32(next);
        bytes += part.sliced(headSize);
        if (bytes.size() > largestDefinition)
            throw JetError::damaged(QString("the definition on page %1 has no end").arg(page));
    }
    return bytes;
}

JetTable JetFile::definition(quint32 page, const QString &name)
{
    requireName(name);
    const DefinitionLayout &layout = isJet3() ? jet3Definition : jet4Definition;
    const QByteArray all = definitionBytes(page);
    const Bytes bytes(all);
    JetTable table{.name = name,
                   .rowCount = bytes.number32(layout.rowCount),
                   .lastNumber = bytes.number<qint32>(layout.lastNumber),
                   .columns = {},
                   .page = page,
                   .hasVariableColumns = bytes.word(layout.variableCount) > 0,
                   .usageMap = bytes.number32(layout.usageMap)};
    const int count = bytes.word(layout.columnCount);
    if (count == 0 || count > mostColumns)
        throw JetError::damaged("the table " + name + " has " + QString::number(count) + " columns");

    const qint64 entries = layout.columns + qint64(bytes.number32(layout.indexCount)) * layout.indexSize;
    qint64 nameAt = entries + count * layout.columnSize;
    std::set<QString> names;
    for (int i = 0; i < count; ++i) {
        const Bytes entry = bytes.part(entries + i * layout.columnSize, layout.columnSize);
        const int lengthSize = isJet3() ? 1 : 2;
        const int length = isJet3() ? bytes.byte(nameAt) : bytes.word(nameAt);
        const JetType type = JetType(entry.byte(0));
        const int width = widthOf(type);
        table.columns.push_back({.name = text(bytes.part(nameAt + lengthSize, length)),
                                 .type = type,
                                 .isFixed = bool(entry.byte(layout.flags) & 1),
                                 .number = entry.word(layout.number),
                                 .variableNumber = entry.word(layout.variableNumber),
                                 .offset = entry.word(layout.offset),
                                 .size = width > 0 ? width : entry.word(layout.size)});
        nameAt += lengthSize + length;
        requireName(table.columns.back().name);
        if (!names.insert(table.columns.back().name.toCaseFolded()).second)
            throw JetError::damaged("the table " + name + " has a column twice");
    }
    return table;
}

std::vector<quint32> JetFile::pagesOf(const JetTable &table)
{
    constexpr int kindAt = 0, bitsAt = 5; // of the map itself
    constexpr int bitsOfPageAt = 4; // of a page full of bits
    const JetPages::Pointer pointer(table.usageMap);
    const JetPages::Row row = m_pages.row(m_pages.page(pointer.page, JetPages::DataPage), pointer.row);
    const Bytes map = row.bytes;
    std::vector<quint32> pages;
    const auto addPages = [&](const Bytes &bits, quint64 first) {
        for (qsizetype i = 0; i < bits.size() * 8; ++i) {
            if (!bits.bit(i))
                continue;
            if (first + i >= m_pages.pageCount())
                throw JetError::damaged("the map of its pages leads out of the file");
            pages.push_back(quint32(first + i));
        }
    };
    if (map.byte(kindAt) == 0) {
        addPages(map.from(bitsAt), map.number32(1));
    } else if (map.byte(kindAt) == 1) {
        // The bits of large tables fill pages, to which the map points.
        const qint64 bitsOfAPage = qint64(m_pages.pageSize() - bitsOfPageAt) * 8;
        for (qint64 i = 0; 1 + 4 * i + 4 <= map.size(); ++i) {
            if (const quint32 number = map.number32(1 + 4 * i); number != 0) {
                const QByteArray page = m_pages.page(number, JetPages::UsageMapPage);
                addPages(Bytes(page).from(bitsOfPageAt), i * bitsOfAPage);
            }
        }
    } else {
        throw JetError::damaged("the map of its pages is of an unknown kind");
    }
    return pages;
}

qint64 JetFile::read(const JetTable &table, const std::function<void(const std::vector<JetValue> &)> &visit)
{
    try {
        qint64 found = 0;
        m_unspent = m_pages.fileSize();
        std::vector<JetValue> values(table.columns.size());
        for (const quint32 number : pagesOf(table)) {
            const QByteArray page = m_pages.dataPage(number, table.page);
            for (int slot = 0; slot < m_pages.rowCount(page); ++slot) {
                if (m_pages.isGone(page, slot))
                    continue;
                JetPages::Row row = m_pages.row(page, slot);
                for (int moves = 0; row.isElsewhere; ++moves) {
                    if (moves == mostMoves)
                        throw JetError::damaged("a row is nowhere");
                    const JetPages::Pointer pointer(row.bytes.number32(0));
                    row = m_pages.row(m_pages.dataPage(pointer.page, table.page), pointer.row);
                }
                spend(row.bytes.size());
                readRow(row.bytes, table, values);
                visit(values);
                ++found;
            }
        }
        if (found == table.rowCount)
            return found;
        if (!m_trustRows)
            throw JetError::damaged(QString("%1 rows were found where %2 should be").arg(found).arg(table.rowCount));
        m_miscounts.push_back({table.name, found, table.rowCount});
        return found;
    } catch (const JetError &error) {
        throw JetError(error.cause(), error.text() + ", in the table " + table.name);
    }
}

// No byte of a sound file belongs to two rows. A broken one could otherwise keep us busy without end.
void JetFile::spend(qint64 bytes)
{
    m_unspent -= bytes;
    if (m_unspent < 0)
        throw JetError::damaged("rows lie one over the other");
}

void JetFile::readRow(const Bytes &row, const JetTable &table, std::vector<JetValue> &values)
{
    // First the number of columns that the table had when the row was stored, last a bit for each that has a value.
    const int columnCount = isJet3() ? row.byte(0) : row.word(0);
    const int fixedAt = isJet3() ? 1 : 2;
    const qint64 maskAt = row.size() - (columnCount + 7) / 8;
    const Bytes mask = row.from(maskAt);
    const Bytes fixed = row.part(fixedAt, maskAt - fixedAt);
    for (size_t i = 0; i < values.size(); ++i) {
        const JetColumn &column = table.columns[i];
        const bool isSet = column.number < columnCount && mask.bit(column.number);
        if (column.type == JetType::YesNo)
            values[i] = qint64(isSet ? -1 : 0);
        else if (!isSet)
            values[i] = {};
        else if (column.isFixed)
            values[i] = value(column, fixed.part(column.offset, column.size));
        else if (table.hasVariableColumns)
            values[i] = value(column, variableValue(row, maskAt, column.variableNumber));
        else
            throw JetError::damaged("a row has a value without a place");
    }
}

// Before the mask stand, from its end backwards, the number of values of variable width, and where each begins and the
// last one ends. In Jet 3 these are single bytes; a table between the two says from which value on 256 is to be added.
Bytes JetFile::variableValue(const Bytes &row, qint64 maskAt, int number) const
{
    qint64 count, table;
    int begin, end;
    if (isJet3()) {
        count = row.byte(maskAt - 1);
        const qint64 jumps = (row.size() - 1) / 256;
        table = maskAt - 2 - jumps - count;
        const auto offset = [&](int i) {
            int at = row.byte(maskAt - 2 - jumps - i);
            // The last jump may lead behind the values and is not meant then.
            for (qint64 jump = 0; jump < std::min<qint64>(jumps, table / 256); ++jump)
                at += row.byte(maskAt - 2 - jump) <= i ? 256 : 0;
            return at;
        };
        if (number >= count)
            throw JetError::damaged("a row has a value without a place");
        begin = offset(number);
        end = offset(number + 1);
    } else {
        count = row.word(maskAt - 2);
        table = maskAt - 4 - 2 * count;
        if (number >= count)
            throw JetError::damaged("a row has a value without a place");
        begin = row.word(maskAt - 4 - 2 * number);
        end = row.word(maskAt - 4 - 2 * (number + 1));
    }
    return row.part(0, table).part(begin, end - begin);
}

JetValue JetFile::value(const JetColumn &column, const Bytes &bytes)
{
    switch (column.type) {
    case JetType::Byte:
        return qint64(bytes.byte(0));
    case JetType::Integer:
        return qint64(bytes.number<qint16>(0));
    case JetType::Long:
        return qint64(bytes.number<qint32>(0));
    case JetType::Money:
        return bytes.number<qint64>(0);
    case JetType::Single:
        return double(bytes.number<float>(0));
    case JetType::Double:
    case JetType::Date:
        return bytes.number<double>(0);
    case JetType::Text:
        return text(bytes);
    case JetType::Memo:
        return text(longValue(bytes));
    case JetType::Ole:
        return longValue(bytes);
    default:
        return bytes.view().toByteArray();
    }
}

// Twelve bytes of head: a length with flags, a pointer. Short values stand right behind it, others in a row on a page
// of their own kind, the longest in a chain of such rows, each of which begins with a pointer to the next.
QByteArray JetFile::longValue(const Bytes &bytes)
{
    constexpr quint32 here = 0x80000000, inOneRow = 0x40000000, lengthBits = 0x3fffffff;
    constexpr int headSize = 12;
    if (bytes.size() == 0)
        return QByteArray("");
    const qint64 length = bytes.number32(0) & lengthBits;
    if (bytes.number32(0) & here)
        return bytes.part(headSize, length).view().toByteArray();

    const bool isChain = !(bytes.number32(0) & inOneRow);
    QByteArray whole("");
    for (JetPages::Pointer next(bytes.part(0, headSize).number32(4)); next.page != 0;) {
        const JetPages::Row row = m_pages.row(m_pages.dataPage(next.page, longValueOwner), next.row);
        const Bytes content = isChain ? row.bytes.from(4) : row.bytes;
        spend(row.bytes.size());
        whole += content.view();
        next = JetPages::Pointer(isChain ? row.bytes.number32(0) : 0);
    }
    if (whole.size() != length)
        throw JetError::damaged(QString("a long text has %1 bytes and should have %2").arg(whole.size()).arg(length));
    return whole;
}

QString JetFile::dateText(double date)
{
    constexpr int secondsOfADay = 86'400;
    // The time of day counts forwards also before the day 0.
    double day = std::trunc(date);
    int seconds = 0;
    if (std::fabs(day) < 1e7)
        seconds = int(std::lround(std::fabs(date - day) * secondsOfADay));
    if (seconds == secondsOfADay) {
        seconds = 0;
        ++day;
    }
    constexpr int firstDay = -657'434, lastDay = 2'958'465; // 0100-01-01 and 9999-12-31
    if (!(day >= firstDay && day <= lastDay))
        return {};
    int year, month, dayOfMonth;
    QDate(1899, 12, 30).addDays(qint64(day)).getDate(&year, &month, &dayOfMonth);
    QString text("0000-00-00 00:00:00");
    const auto write = [&text](int at, int digits, int number) {
        for (; digits-- > 0; number /= 10)
            text[at + digits] = QChar('0' + number % 10);
    };
    write(0, 4, year);
    write(5, 2, month);
    write(8, 2, dayOfMonth);
    write(11, 2, seconds / 3600);
    write(14, 2, seconds / 60 % 60);
    write(17, 2, seconds % 60);
    return text;
}
