#include "platform/gui/BoundGrid.h"

#include "platform/text/Csv.h"
#include "platform/text/Format.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSet>

#include <algorithm>

namespace {

// As spreadsheets read it back: exactly the text, in one cell.
QString asCell(const QString &text)
{
    const auto parts = [](QChar c) { return c == '\t' || c == '\n' || c == '\r'; };
    if (!text.startsWith('"') && std::none_of(text.begin(), text.end(), parts))
        return text;
    return '"' + QString(text).replace('"', QLatin1String("\"\"")) + '"';
}

}

class BoundGrid::Rows : public QAbstractTableModel
{
public:
    Rows(std::shared_ptr<const Recordset> rows, const QList<Column> &columns)
        : m_rows(std::move(rows)), m_columns(columns)
    {
        for (const Column &column : columns)
            m_fields.append(m_rows->fieldIndex(column.field));
    }
    const Recordset &recordset() const { return *m_rows; }

    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : m_rows->recordCount(); }
    int columnCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : int(m_columns.size()); }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid())
            return {};
        if (role == Qt::DisplayRole)
            return text(index.row(), index.column());
        if (role == Qt::TextAlignmentRole)
            return QVariant::fromValue<Qt::Alignment>(
                Qt::AlignVCenter | (isNumber(index.row(), index.column()) ? Qt::AlignRight : Qt::AlignLeft));
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return heading(section);
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    QString heading(int column) const { return m_columns[column].heading; }
    QString text(int row, int column) const
    {
        const Column &shown = m_columns[column];
        const Value value = m_rows->at(row, m_fields[column]);
        if (value.isNull())
            return {};
        if (!shown.names.isEmpty())
            return shown.names.value(value.toInteger());
        switch (shown.form) {
        case Column::YesNo:
            return value.toBool() ? QStringLiteral("Yes") : QStringLiteral("No");
        case Column::Currency:
            return Format::currency(value.toNumber());
        case Column::AsStored:
            break;
        }
        return value.toText();
    }
    QString csvText(int row, int column) const
    {
        if (isNumber(row, column))
            return m_rows->at(row, m_fields[column]).toText();
        return csvField(csvGuarded(text(row, column)));
    }

private:
    bool isNumber(int row, int column) const
    {
        const Column &shown = m_columns[column];
        const Value value = m_rows->at(row, m_fields[column]);
        return shown.names.isEmpty() && shown.form != Column::YesNo && !value.isNull() && !value.isText();
    }

    std::shared_ptr<const Recordset> m_rows;
    QList<Column> m_columns;
    QList<int> m_fields;
};

BoundGrid::BoundGrid(QWidget *parent) : QTableView(parent)
{
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().leading() + 8);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setSectionsMovable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &BoundGrid::headingClicked);
}

BoundGrid::~BoundGrid()
{
    // The view lets go of the model before it is gone; the window that would hear of the selection may be gone already.
    blockSignals(true);
    setModel(nullptr);
}

void BoundGrid::setSource(std::shared_ptr<const Recordset> rows, const QList<Column> &columns)
{
    auto model = std::make_unique<Rows>(std::move(rows), columns);
    m_selectedRows.clear();
    QItemSelectionModel *old = selectionModel();
    setModel(model.get());
    delete old;
    m_rows = std::move(model);
}

const Recordset &BoundGrid::rows() const { return m_rows->recordset(); }

void BoundGrid::fitColumns()
{
    constexpr int rowsLookedAt = 200;
    const int widest = fontMetrics().averageCharWidth() * 60;
    horizontalHeader()->setResizeContentsPrecision(rowsLookedAt);
    resizeColumnsToContents();
    for (int column = 0; column < horizontalHeader()->count(); ++column)
        setColumnWidth(column, std::min(columnWidth(column), widest));
}

QSize BoundGrid::sizeHint() const
{
    constexpr int rowsInSight = 16;
    const int frame = 2 * frameWidth();
    return {horizontalHeader()->length() + verticalScrollBar()->sizeHint().width() + frame,
            horizontalHeader()->sizeHint().height() + rowsInSight * verticalHeader()->defaultSectionSize() + frame};
}

void BoundGrid::keyPressEvent(QKeyEvent *event)
{
    const bool movesColumn = event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    if (event->matches(QKeySequence::Copy))
        copySelectedRows();
    else if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier && currentIndex().isValid())
        emit headingClicked(currentIndex().column());
    else if (movesColumn && event->key() == Qt::Key_Left)
        moveCurrentColumn(-1);
    else if (movesColumn && event->key() == Qt::Key_Right)
        moveCurrentColumn(1);
    else
        QTableView::keyPressEvent(event);
}

void BoundGrid::moveCurrentColumn(int by)
{
    const int place = horizontalHeader()->visualIndex(currentIndex().column());
    if (currentIndex().isValid() && place + by >= 0 && place + by < horizontalHeader()->count())
        horizontalHeader()->moveSection(place, place + by);
}

void BoundGrid::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    QSet<int> gone;
    for (const QItemSelectionRange &range : deselected)
        for (int row = range.top(); row <= range.bottom(); ++row)
            gone.insert(row);
    if (!gone.isEmpty())
        m_selectedRows.removeIf([&](int row) { return gone.contains(row); });
    for (const QItemSelectionRange &range : selected)
        for (int row = range.top(); row <= range.bottom(); ++row)
            m_selectedRows.append(row);
    emit rowsSelected();
}

/// What `cellOf` gives for each column, as they stand from left to right.
template<typename CellOf>
QString BoundGrid::line(QChar separator, CellOf cellOf) const
{
    QStringList cells;
    for (int place = 0; place < horizontalHeader()->count(); ++place)
        cells.append(cellOf(horizontalHeader()->logicalIndex(place)));
    return cells.join(separator);
}

void BoundGrid::copySelectedRows() const
{
    if (m_selectedRows.isEmpty())
        return;
    QList<int> fromTop = m_selectedRows;
    std::sort(fromTop.begin(), fromTop.end());
    QString text = line('\t', [&](int column) { return m_rows->heading(column); }) + '\n';
    for (const int row : fromTop)
        text += line('\t', [&](int column) { return asCell(m_rows->text(row, column)); }) + '\n';
    QApplication::clipboard()->setText(text);
}

void BoundGrid::writeCsv(QIODevice &file) const
{
    const auto write = [&](auto cellOf) { file.write(line(',', cellOf).toUtf8() + "\r\n"); };
    file.write(byteOrderMark);
    write([&](int column) { return csvField(m_rows->heading(column)); });
    for (int row = 0; row < m_rows->recordset().recordCount(); ++row)
        write([&](int column) { return m_rows->csvText(row, column); });
}
