#pragma once

#include "platform/engine/Recordset.h"

#include <QHash>
#include <QTableView>

/// A read-only grid over the rows of a statement. Hundreds of thousands of rows scroll at once: a row becomes text when
/// it is painted. Ctrl+C copies the selected rows with their headings, each text as it is shown. Columns are moved by
/// their headings, or the current one by Ctrl+Shift and an arrow key; what is copied or written follows their order.
class BoundGrid : public QTableView
{
    Q_OBJECT
public:
    struct Column {
        enum Form { AsStored, YesNo, Currency };
        QString heading;
        QString field;
        Form form = AsStored;
        /// What is shown for each number of the field, where its numbers stand for something; any other shows as empty.
        QHash<qint64, QString> names = {};
    };

    explicit BoundGrid(QWidget *parent = nullptr);
    ~BoundGrid() override;

    /// Shows `rows`; nothing is selected then. @throws EngineError 3265 for a field that they do not have.
    void setSource(std::shared_ptr<const Recordset> rows, const QList<Column> &columns);
    /// The rows shown, in the grid's order. Only after setSource().
    const Recordset &rows() const;
    /// Numbers of the selected rows, in the order in which they were selected.
    const QList<int> &selectedRows() const { return m_selectedRows; }

    /// Writes all rows with their headings as comma-separated values, for a spreadsheet: texts as they are shown,
    /// amounts as plain numbers. Whether that went well is told by `file`.
    void writeCsv(QIODevice &file) const;

    /// Widths that suit the first rows; the last column takes what is left.
    void fitColumns();
    /// Room for all columns.
    QSize sizeHint() const override;

signals:
    /// A heading was clicked, or F4 pressed, which stands for a click on the heading over the current cell.
    void headingClicked(int column);
    void rowsSelected();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;

private:
    class Rows;
    void copySelectedRows() const;
    void moveCurrentColumn(int by);
    template<typename CellOf>
    QString line(QChar separator, CellOf cellOf) const;

    std::unique_ptr<Rows> m_rows;
    QList<int> m_selectedRows;
};
