#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QStringList>

#include <deque>

/// The lines below the desk's field: what was done, what was found, what is missing in a count.
class DeskList : public QAbstractTableModel
{
    Q_OBJECT
public:
    struct Row {
        QIcon icon = {};
        QString meaning = {}; ///< of the icon, to somebody who does not see it
        QStringList texts = {};
        qint64 id = 0; ///< of a tool that can be ticked
    };
    using QAbstractTableModel::QAbstractTableModel;

    void setContents(const QStringList &headings, QList<Row> rows, bool canBeTicked = false);
    /// Puts a line before all others; of many the last ones go.
    void prepend(Row row);
    const Row &row(int number) const { return m_rows[size_t(number)]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

signals:
    void ticked(int row);

private:
    QStringList m_headings;
    std::deque<Row> m_rows;
    bool m_canBeTicked = false;
};
