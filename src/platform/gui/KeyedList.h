#pragma once

#include "platform/gui/FillableModel.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QStringList>

#include <functional>
#include <vector>

/// One item of a list in report style: a key, the text of its first column, a picture number and the texts of the
/// other columns, counted from 1.
struct ListItem {
    QString key;
    QString text;
    int icon = 0;
    QStringList subItems = {};
    QString path = {}; ///< of the tree node that holds the item, in lists that lead there
    QString nodeKey = {}; ///< that node's key, where it is known

    /// Empty for a column that was given no text.
    QString subItem(int number) const { return subItems.value(number - 1); }
    void setSubItem(int number, const QString &text);
};

/// What a picture number looks like, and what it says to somebody who does not see it: "out".
struct ItemPicture {
    QIcon icon;
    QString meaning = {};
};

/// One column of such a list; its width is in twips.
struct ListColumn {
    const char *caption;
    int width;
};

/// The items of a list in report style. It is the model of its view.
class KeyedList : public FillableModel<QAbstractTableModel>
{
    Q_OBJECT
public:
    using IconSource = std::function<ItemPicture(int number)>;
    explicit KeyedList(IconSource icons, QObject *parent = nullptr);

    /// A list sorted by a column that is no longer there is sorted by the last one.
    void setColumns(std::vector<ListColumn> columns);
    const std::vector<ListColumn> &columns() const { return m_columns; }
    void clear();
    void add(ListItem item);
    /// Adds items that were gathered before, in one step.
    void addAll(std::vector<ListItem> items);
    void replace(int row, const ListItem &item);
    void remove(int row);
    int count() const { return int(m_items.size()); }
    const ListItem &item(int row) const { return m_items[size_t(row)]; }
    /// Row of the item with that key; -1 when there is none.
    int find(const QString &key) const;

    /// A click on a column's heading: the direction, one for the whole list, turns over, that column becomes the
    /// sort key, and sorting is on from then on, also for later fills.
    void clickHeading(int column);
    bool isSorted() const { return m_sortColumn >= 0; }
    int sortColumn() const { return m_sortColumn; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

protected:
    void filled() override;

private:
    static QString text(const ListItem &item, int column);
    std::vector<int> sortedRows() const;
    void takeOrder(const std::vector<int> &rows);

    IconSource m_icons;
    std::vector<ListColumn> m_columns;
    std::vector<ListItem> m_items;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::DescendingOrder; // the first click turns it
};
