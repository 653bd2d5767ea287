#include "platform/gui/KeyedList.h"

#include "platform/text/TextCompare.h"

#include <algorithm>
#include <numeric>

void ListItem::setSubItem(int number, const QString &text)
{
    while (subItems.size() < number)
        subItems.append(QString());
    subItems[number - 1] = text;
}

KeyedList::KeyedList(IconSource icons, QObject *parent) : FillableModel(parent), m_icons(std::move(icons)) { }

void KeyedList::filled()
{
    if (isSorted())
        takeOrder(sortedRows());
}

void KeyedList::setColumns(std::vector<ListColumn> columns)
{
    const Filling filling(*this);
    m_columns = std::move(columns);
    m_sortColumn = std::min(m_sortColumn, int(m_columns.size()) - 1);
}

void KeyedList::clear()
{
    const Filling filling(*this);
    m_items.clear();
}

void KeyedList::add(ListItem item)
{
    if (!isFilling())
        beginInsertRows({}, count(), count());
    m_items.push_back(std::move(item));
    if (!isFilling())
        endInsertRows();
}

void KeyedList::addAll(std::vector<ListItem> items)
{
    if (items.empty())
        return;
    if (!isFilling())
        beginInsertRows({}, count(), count() + int(items.size()) - 1);
    std::move(items.begin(), items.end(), std::back_inserter(m_items));
    if (!isFilling())
        endInsertRows();
}

void KeyedList::replace(int row, const ListItem &item)
{
    m_items[size_t(row)] = item;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void KeyedList::remove(int row)
{
    beginRemoveRows({}, row, row);
    m_items.erase(m_items.begin() + row);
    endRemoveRows();
}

int KeyedList::find(const QString &key) const
{
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [&](const ListItem &item) { return item.key == key; });
    return found == m_items.end() ? -1 : int(found - m_items.begin());
}

void KeyedList::clickHeading(int column)
{
    m_sortOrder = m_sortOrder == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_sortColumn = column;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const std::vector<int> rows = sortedRows();
    std::vector<int> newRow(rows.size());
    for (size_t row = 0; row < rows.size(); ++row)
        newRow[size_t(rows[row])] = int(row);
    // The selection follows its items.
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex &old : before)
        after.append(index(newRow[size_t(old.row())], old.column()));
    takeOrder(rows);
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

int KeyedList::rowCount(const QModelIndex &parent) const { return parent.isValid() || isFilling() ? 0 : count(); }

int KeyedList::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_columns.size()); }

QVariant KeyedList::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) // a view without a current item asks so when its text is copied
        return {};
    if (role == Qt::DisplayRole)
        return text(item(index.row()), index.column());
    if (index.column() != 0)
        return {};
    const ListItem &shown = item(index.row());
    if (role == Qt::DecorationRole)
        return m_icons(shown.icon).icon;
    if (role == Qt::AccessibleTextRole)
        if (const QString meaning = m_icons(shown.icon).meaning; !meaning.isEmpty())
            return shown.text + ", " + meaning;
    return {};
}

QVariant KeyedList::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromLatin1(m_columns[size_t(section)].caption);
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags KeyedList::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() ? flags | Qt::ItemNeverHasChildren | Qt::ItemIsDragEnabled : flags;
}

QString KeyedList::text(const ListItem &item, int column) { return column == 0 ? item.text : item.subItem(column); }

std::vector<int> KeyedList::sortedRows() const
{
    std::vector<int> rows(m_items.size());
    std::iota(rows.begin(), rows.end(), 0);
    const bool ascending = m_sortOrder == Qt::AscendingOrder;
    std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
        const int order = compareText(text(item(a), m_sortColumn), text(item(b), m_sortColumn));
        return ascending ? order < 0 : order > 0;
    });
    return rows;
}

void KeyedList::takeOrder(const std::vector<int> &rows)
{
    std::vector<ListItem> ordered;
    ordered.reserve(rows.size());
    for (const int row : rows)
        ordered.push_back(std::move(m_items[size_t(row)]));
    m_items = std::move(ordered);
}
