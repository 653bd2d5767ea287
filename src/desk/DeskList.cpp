#include "desk/DeskList.h"

namespace {

constexpr size_t mostLines = 1000;

}

void DeskList::setContents(const QStringList &headings, QList<Row> rows, bool canBeTicked)
{
    beginResetModel();
    m_headings = headings;
    m_rows.assign(std::move_iterator(rows.begin()), std::move_iterator(rows.end()));
    m_canBeTicked = canBeTicked;
    endResetModel();
}

void DeskList::prepend(Row row)
{
    if (m_rows.size() >= mostLines) {
        beginRemoveRows({}, rowCount() - 1, rowCount() - 1);
        m_rows.pop_back();
        endRemoveRows();
    }
    beginInsertRows({}, 0, 0);
    m_rows.push_front(std::move(row));
    endInsertRows();
}

int DeskList::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_rows.size()); }

int DeskList::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_headings.size()); }

QVariant DeskList::data(const QModelIndex &index, int role) const
{
    const Row &row = m_rows[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return row.texts.value(index.column());
    case Qt::DecorationRole:
        return index.column() == 0 && !row.icon.isNull() ? QVariant(row.icon) : QVariant();
    case Qt::CheckStateRole:
        return index.column() == 0 && m_canBeTicked ? QVariant(Qt::Unchecked) : QVariant();
    case Qt::AccessibleTextRole:
        return index.column() == 0 && !row.meaning.isEmpty() ? row.texts.value(0) + ", " + row.meaning
                                                             : row.texts.value(index.column());
    default:
        return {};
    }
}

bool DeskList::setData(const QModelIndex &index, const QVariant &, int role)
{
    if (role != Qt::CheckStateRole)
        return false;
    emit ticked(index.row());
    return true;
}

QVariant DeskList::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(m_headings.value(section)) : QVariant();
}

Qt::ItemFlags DeskList::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
    return index.column() == 0 && m_canBeTicked ? flags | Qt::ItemIsUserCheckable : flags;
}
