#include "platform/gui/BoundCombo.h"

#include <QAbstractListModel>
#include <QLineEdit>
#include <QListView>
#include <QWheelEvent>

class BoundCombo::Rows : public QAbstractListModel
{
public:
    Rows(std::shared_ptr<Recordset> rows, int column) : m_rows(std::move(rows)), m_column(column) { }
    int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() || !m_rows ? 0 : m_rows->recordCount();
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return m_rows->at(index.row(), m_column).toText();
        return {};
    }
    Value value(int row, int column) const { return m_rows->at(row, column); }

private:
    std::shared_ptr<Recordset> m_rows;
    int m_column;
};

BoundCombo::BoundCombo(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    // Thousands of jobs are listed: nobody measures them all to find the widest.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
    setMaxVisibleItems(16);
    if (auto *list = qobject_cast<QListView *>(view()))
        list->setUniformItemSizes(true);
    clearSource();
    connect(this, &QComboBox::currentIndexChanged, this, &BoundCombo::commit);
    connect(lineEdit(), &QLineEdit::editingFinished, this, &BoundCombo::commit);
}

BoundCombo::~BoundCombo() = default;

void BoundCombo::setSource(std::shared_ptr<Recordset> rows, const QString &listField, const QString &boundField)
{
    m_boundColumn = rows->fieldIndex(boundField);
    const int listColumn = rows->fieldIndex(listField);
    auto model = std::make_unique<Rows>(std::move(rows), listColumn);
    {
        const QSignalBlocker quiet(this);
        setModel(model.get());
        m_rows = std::move(model);
    }
    setText({});
}

void BoundCombo::clearSource()
{
    auto none = std::make_unique<Rows>(nullptr, -1);
    {
        const QSignalBlocker quiet(this);
        setModel(none.get());
        m_rows = std::move(none);
    }
    m_boundColumn = -1;
    setText({});
}

QString BoundCombo::text() const
{
    if (m_freeText)
        return currentText();
    const int row = chosenRow();
    return row < 0 ? QString() : itemText(row);
}

void BoundCombo::setText(const QString &text)
{
    {
        const QSignalBlocker quiet(this);
        setCurrentIndex(-1);
        setEditText(text);
        setCurrentIndex(chosenRow());
        if (currentIndex() < 0)
            setEditText(text);
    }
    commit();
}

Value BoundCombo::boundValue() const
{
    const int row = chosenRow();
    return row < 0 || m_boundColumn < 0 ? Value() : m_rows->value(row, m_boundColumn);
}

void BoundCombo::wheelEvent(QWheelEvent *event)
{
    // Scrolling past a box must not lend a tool to somebody else.
    event->ignore();
}

int BoundCombo::chosenRow() const
{
    const QString shown = currentText();
    if (currentIndex() >= 0 && itemText(currentIndex()).compare(shown, Qt::CaseInsensitive) == 0)
        return currentIndex();
    return shown.isEmpty() ? -1 : findText(shown, Qt::MatchFixedString);
}

void BoundCombo::commit()
{
    const std::pair<int, QString> now{ chosenRow(), currentText() };
    if (now.first >= 0 && now.first != currentIndex()) {
        const QSignalBlocker quiet(this);
        setCurrentIndex(now.first);
    }
    if (now == m_announced)
        return;
    m_announced = now;
    emit chosen();
}
